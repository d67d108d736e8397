#include "Platform/Linux/Screens/Monitor.h"

#include <algorithm>

#include "Util/Identity.h"

namespace morvel::x11 {

namespace {

bool overlap(double aStart, double aEnd, double bStart, double bEnd) {
    return aStart < bEnd && bStart < aEnd;
}

uint64_t fnv(const std::string& text, uint64_t seed) {
    uint64_t hash = 0xCBF29CE484222325ull ^ seed;
    for (const char c : text) hash = (hash ^ static_cast<uint8_t>(c)) * 0x100000001B3ull;
    return hash;
}

}  // namespace

std::vector<Monitor> mainFirst(std::vector<Monitor> monitors) {
    std::vector<Monitor> out;
    std::stable_partition(monitors.begin(), monitors.end(), [](const Monitor& m) { return m.isPrimary; });
    for (Monitor& monitor : monitors) {
        const bool mirrors = std::any_of(out.begin(), out.end(), [&](const Monitor& m) {
            return m.frame == monitor.frame || m.name == monitor.name;
        });
        if (!monitor.frame.isEmpty() && !mirrors) out.push_back(std::move(monitor));
    }
    return out;
}

Rect<RootSpace> withoutStruts(const Rect<RootSpace>& monitor, const Rect<RootSpace>& root,
                              const std::vector<Strut>& struts) {
    double left = monitor.minX(), right = monitor.maxX(), top = monitor.minY(), bottom = monitor.maxY();
    for (const Strut& s : struts) {
        // The ends of a strut's stretch are the last pixels it covers.
        const bool onColumns = overlap(s.topStart, s.topEnd + 1, monitor.minX(), monitor.maxX());
        const bool onColumnsBelow = overlap(s.bottomStart, s.bottomEnd + 1, monitor.minX(), monitor.maxX());
        const bool onRows = overlap(s.leftStart, s.leftEnd + 1, monitor.minY(), monitor.maxY());
        const bool onRowsRight = overlap(s.rightStart, s.rightEnd + 1, monitor.minY(), monitor.maxY());
        if (s.top > 0 && onColumns) top = std::max(top, root.minY() + s.top);
        if (s.bottom > 0 && onColumnsBelow) bottom = std::min(bottom, root.maxY() - s.bottom);
        if (s.left > 0 && onRows) left = std::max(left, root.minX() + s.left);
        if (s.right > 0 && onRowsRight) right = std::min(right, root.maxX() - s.right);
    }
    // Struts that leave nothing are a lie.
    if (left >= right || top >= bottom) return monitor;
    return {left, top, right - left, bottom - top};
}

std::string nameUuid(const std::string& name) {
    return WindowID{fnv(name, 0), fnv(name, 0x9E3779B97F4A7C15ull)}.text();
}

}  // namespace morvel::x11
