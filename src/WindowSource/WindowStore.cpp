#include "WindowSource/WindowStore.h"

#include <utility>

namespace morvel {

namespace {

bool isPlaceholderOf(const WindowSnapshot& record, ProcessID pid) {
    return record.isWindowless && record.pid == pid;
}

bool hasPlaceholder(const WindowMap& windows, ProcessID pid) {
    for (const auto& [id, record] : windows)
        if (isPlaceholderOf(record, pid)) return true;
    return false;
}

size_t erasePlaceholders(WindowMap& windows, ProcessID pid) {
    return std::erase_if(windows, [pid](const auto& entry) { return isPlaceholderOf(entry.second, pid); });
}

}  // namespace

WindowStore::WindowStore(WindowIDMint& mint, std::function<bool(ProcessID)> isProcessAlive)
    : mint_(mint), isProcessAlive_(std::move(isProcessAlive)) {}

std::vector<WindowSnapshot> WindowStore::snapshot(ProcessID pid) const {
    std::vector<WindowSnapshot> found;
    for (const auto& [id, record] : *map_)
        if (record.pid == pid) found.push_back(record);
    return found;
}

void WindowStore::apply(const WindowEvent& event) {
    events_.emit(event);
    std::visit([this](const auto& change) { handle(change); }, event);
}

void WindowStore::handle(const event::Added& change) {
    WindowMap& windows = mutableWindows();
    if (!change.snapshot.isWindowless) erasePlaceholders(windows, change.snapshot.pid);
    windows.insert_or_assign(change.snapshot.id, change.snapshot);
    publishWindows();
}

void WindowStore::handle(const event::Removed& change) {
    if (map_->contains(change.id)) {
        mutableWindows().erase(change.id);
        publishWindows();
    }
    clearFocus(change.id);
}

void WindowStore::handle(const event::TitleChanged& change) {
    setField(change.id, &WindowSnapshot::title, change.title);
}

void WindowStore::handle(const event::FrameChanged& change) {
    setField(change.id, &WindowSnapshot::frame, change.frame);
}

void WindowStore::handle(const event::FullscreenChanged& change) {
    setField(change.id, &WindowSnapshot::isFullscreen, change.isFullscreen);
}

void WindowStore::handle(const event::Focused& change) {
    if (focusedID_.value() != change.id) focusedID_.set(change.id);
}

void WindowStore::handle(const event::AppTerminated& change) {
    std::vector<WindowID> gone;
    for (const auto& [id, record] : *map_)
        if (record.pid == change.pid) gone.push_back(id);
    if (gone.empty()) return;
    WindowMap& windows = mutableWindows();
    for (const WindowID& id : gone) windows.erase(id);
    publishWindows();
    for (const WindowID& id : gone) clearFocus(id);
}

void WindowStore::handle(const event::AppBecameWindowless& change) {
    if (hasPlaceholder(*map_, change.pid)) return;
    insertPlaceholder(mutableWindows(), change.pid, change.bundleID, change.appName);
    publishWindows();
}

void WindowStore::handle(const event::AppLostLastWindow& change) {
    const bool needsPlaceholder = !hasPlaceholder(*map_, change.pid);
    if (needsPlaceholder || map_->contains(change.removedID)) {
        WindowMap& windows = mutableWindows();
        windows.erase(change.removedID);
        // The removed record may have been that placeholder itself.
        if (!hasPlaceholder(windows, change.pid))
            insertPlaceholder(windows, change.pid, change.bundleID, change.appName);
        publishWindows();
    }
    clearFocus(change.removedID);
}

void WindowStore::handle(const event::AppGotFirstWindow& change) {
    if (!hasPlaceholder(*map_, change.pid)) return;
    erasePlaceholders(mutableWindows(), change.pid);
    publishWindows();
}

template <class T>
void WindowStore::setField(WindowID id, T WindowSnapshot::*field, const T& value) {
    // Late notices for windows that are gone are normal.
    const auto found = map_->find(id);
    if (found == map_->end() || found->second.*field == value) return;
    mutableWindows().at(id).*field = value;
    publishWindows();
}

void WindowStore::insertPlaceholder(WindowMap& windows, ProcessID pid, const std::optional<std::string>& bundleID,
                                    const std::string& appName) {
    WindowSnapshot placeholder;
    placeholder.id = mint_.next();
    placeholder.pid = pid;
    placeholder.bundleID = bundleID;
    placeholder.appName = appName;
    placeholder.isWindowless = true;
    windows.emplace(placeholder.id, std::move(placeholder));
}

void WindowStore::clearFocus(WindowID id) {
    if (focusedID_.value() == id) focusedID_.set(std::nullopt);
}

WindowMap& WindowStore::mutableWindows() {
    constexpr long kOwnReferences = 2;  // ours and the published value's
    if (map_.use_count() > kOwnReferences) map_ = std::make_shared<WindowMap>(*map_);
    return *map_;
}

void WindowStore::publishWindows() {
    windows_.set(map_);
}

}  // namespace morvel
