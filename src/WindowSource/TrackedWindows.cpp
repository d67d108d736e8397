#include "WindowSource/TrackedWindows.h"

#include <utility>

namespace morvel {

void TrackedWindows::add(TrackedWindow window) {
    windowToUUID_[window.pid].insert_or_assign(window.element, window.id);
    const WindowID id = window.id;
    uuidToWindow_.insert_or_assign(id, std::move(window));
}

std::optional<TrackedWindow> TrackedWindows::remove(WindowID id) {
    auto node = uuidToWindow_.extract(id);
    if (node.empty()) return std::nullopt;
    TrackedWindow window = std::move(node.mapped());
    const auto table = windowToUUID_.find(window.pid);
    table->second.erase(window.element);
    if (table->second.empty()) windowToUUID_.erase(table);
    return window;
}

TrackedWindow* TrackedWindows::find(WindowID id) {
    const auto found = uuidToWindow_.find(id);
    return found == uuidToWindow_.end() ? nullptr : &found->second;
}

const TrackedWindow* TrackedWindows::find(WindowID id) const {
    const auto found = uuidToWindow_.find(id);
    return found == uuidToWindow_.end() ? nullptr : &found->second;
}

std::optional<WindowID> TrackedWindows::find(ProcessID pid, const AXElement& element) const {
    const auto table = windowToUUID_.find(pid);
    if (table == windowToUUID_.end()) return std::nullopt;
    const auto found = table->second.find(element);
    return found == table->second.end() ? std::nullopt : std::optional(found->second);
}

std::optional<WindowID> TrackedWindows::findDestroyed(ProcessID pid, const AXElement& element) const {
    if (const auto found = find(pid, element)) return found;
    const auto table = windowToUUID_.find(pid);
    if (table == windowToUUID_.end()) return std::nullopt;
    for (const auto& [known, id] : table->second)
        if (known == element) return id;
    return std::nullopt;
}

std::vector<WindowID> TrackedWindows::windowsOf(ProcessID pid) const {
    std::vector<WindowID> ids;
    if (const auto table = windowToUUID_.find(pid); table != windowToUUID_.end())
        for (const auto& [element, id] : table->second) ids.push_back(id);
    return ids;
}

std::vector<WindowID> TrackedWindows::all() const {
    std::vector<WindowID> ids;
    ids.reserve(uuidToWindow_.size());
    for (const auto& [id, window] : uuidToWindow_) ids.push_back(id);
    return ids;
}

}  // namespace morvel
