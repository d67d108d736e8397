#include "Platform/Linux/Windows/ClientWindow.h"

#include <algorithm>

namespace morvel::x11 {

namespace {

// X coordinates have 16 bits; what lies beyond comes from sums with absurd decorations.
constexpr double kFarthest = 32767;

double bounded(double value) {
    return std::clamp(value, -kFarthest, kFarthest);
}

}  // namespace

ClientType ClientWindow::type() const {
    if (declaredType) return *declaredType;
    return transientFor ? ClientType::Dialog : ClientType::Normal;
}

Rect<RootSpace> ClientWindow::frame() const {
    const double left = decorations.left - shadow.left, top = decorations.top - shadow.top;
    const double width = content.width + left + decorations.right - shadow.right;
    const double height = content.height + top + decorations.bottom - shadow.bottom;
    return {bounded(content.x - left), bounded(content.y - top), std::clamp(width, 0.0, kFarthest),
            std::clamp(height, 0.0, kFarthest)};
}

Point<RootSpace> ClientWindow::cornerFor(const Rect<RootSpace>& frame) const {
    return {bounded(frame.x - shadow.left), bounded(frame.y - shadow.top)};
}

Size ClientWindow::contentSizeFor(const Rect<RootSpace>& frame) const {
    const double around = decorations.left + decorations.right - shadow.left - shadow.right;
    const double above = decorations.top + decorations.bottom - shadow.top - shadow.bottom;
    return {std::clamp(frame.width - around, 1.0, kFarthest), std::clamp(frame.height - above, 1.0, kFarthest)};
}

bool ClientWindow::isAdmissible() const {
    if (skipsTaskbar) return false;
    const ClientType t = type();
    return t == ClientType::Normal || t == ClientType::Dialog || t == ClientType::Utility;
}

ProcessID resolvePid(std::optional<int32_t> server, std::optional<int32_t> told, bool isLocal, uint32_t clientIndex,
                     bool (*isAlive)(ProcessID)) {
    if (server && *server > 0 && isAlive(ProcessID(*server))) return ProcessID(*server);
    if (told && *told > 0 && isLocal && isAlive(ProcessID(*told))) return ProcessID(*told);
    return ProcessID(-1 - static_cast<int32_t>(clientIndex & 0x7FFFFFF));
}

}  // namespace morvel::x11
