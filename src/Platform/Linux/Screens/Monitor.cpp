#include "Platform/Linux/Screens/Monitor.h"

#include <algorithm>

namespace morvel::x11 {

namespace {

bool overlap(double aStart, double aEnd, double bStart, double bEnd) {
    return aStart < bEnd && bStart < aEnd;
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

}  // namespace morvel::x11
