#include "Theme/IconCache.h"

#include <utility>

namespace morvel {

namespace {

constexpr Size kBakedSize{64, 64};
constexpr Size kEmptySize{16, 16};
constexpr const char* kUnknownApplicationSymbol = "app.dashed";

}  // namespace

IconCache::IconCache(Icons& icons, MainLoop& mainLoop) : icons_(icons), mainLoop_(mainLoop) {}

std::string IconCache::key(const std::optional<std::string>& bundleID, ProcessID fallbackPID) {
    return bundleID ? *bundleID : "pid:" + std::to_string(fallbackPID.value);
}

Subscription IconCache::icon(const std::optional<std::string>& bundleID, ProcessID fallbackPID, Delivery deliver) {
    return request(
        key(bundleID, fallbackPID), [this, bundleID, fallbackPID] { return applicationIcon(bundleID, fallbackPID); },
        std::move(deliver));
}

Subscription IconCache::fileIcon(const std::string& path, Delivery deliver) {
    // No bundle identifier has a colon or a slash.
    return request(
        "file:" + path, [this, path] { return icons_.fileIcon(path); }, std::move(deliver));
}

void IconCache::forget(ProcessID pid) {
    const auto cached = byKey_.find(key(std::nullopt, pid));
    if (cached == byKey_.end()) return;
    entries_.erase(cached->second);
    byKey_.erase(cached);
}

Subscription IconCache::request(const std::string& wanted, Load load, Delivery deliver) {
    if (const auto cached = byKey_.find(wanted); cached != byKey_.end()) {
        entries_.splice(entries_.end(), entries_, cached->second);
        deliver(ui::ImageRef(cached->second->image));
        return {};
    }
    const auto [request, isNew] = requestByKey_.try_emplace(wanted);
    if (isNew) {
        const bool isIdle = requests_.empty();
        request->second = requests_.emplace(requests_.end(), wanted, std::move(load));
        if (isIdle) postNextLoad();
    }
    return request->second->loaded.subscribe(std::move(deliver));
}

void IconCache::postNextLoad() {
    mainLoop_.post(lifetime_.whileAlive([this] { loadNext(); }));
}

void IconCache::loadNext() {
    // One icon per turn: reading and drawing one takes milliseconds, and the bar must stay awake meanwhile.
    Requests current;
    current.splice(current.end(), requests_, requests_.begin());
    requestByKey_.erase(current.front().key);
    if (!requests_.empty()) postNextLoad();
    if (!current.front().loaded.hasListeners()) return;

    const ui::ImageRef image = baked(current.front().load());
    store(current.front().key, image);
    current.front().loaded.emit(image);
}

ui::ImageRef IconCache::applicationIcon(const std::optional<std::string>& bundleID, ProcessID pid) {
    const ui::ImageRef image = bundleID ? icons_.applicationIcon(*bundleID) : nullptr;
    return image ? image : icons_.processIcon(pid);
}

ui::ImageRef IconCache::baked(ui::ImageRef image) {
    if (!image) image = icons_.symbol(kUnknownApplicationSymbol, kBakedSize.height);
    if (!image) image = icons_.empty(kEmptySize);
    ui::ImageRef baked = icons_.baked(image, kBakedSize);
    return baked ? baked : image;
}

void IconCache::store(const std::string& key, ui::ImageRef image) {
    byKey_[key] = entries_.insert(entries_.end(), Entry{key, std::move(image)});
    if (entries_.size() <= kCapacity) return;
    byKey_.erase(entries_.front().key);
    entries_.pop_front();
}

}  // namespace morvel
