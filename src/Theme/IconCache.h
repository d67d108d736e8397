// Icons of applications and files for every button, each loaded and drawn once.
#pragma once

#include <functional>
#include <list>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

#include "Platform/Icons.h"
#include "Platform/MainLoop.h"
#include "Util/Lifetime.h"
#include "Util/Signal.h"

namespace morvel {

/// Main thread only. Keeps the icons of the applications that were asked for last.
class IconCache {
public:
    static constexpr size_t kCapacity = 256;

    /// Both outlive the cache.
    IconCache(Icons& icons, MainLoop& mainLoop);
    IconCache(const IconCache&) = delete;
    IconCache& operator=(const IconCache&) = delete;

    using Delivery = std::function<void(const ui::ImageRef&)>;

    /// Hands over the application's icon: at once when it is in the cache, else in a later turn of the loop, never
    /// null. The delivery ends with the token. Two requests for one icon that is still loading load it once; one that
    /// nobody waits for any more is not loaded. A delivery may ask again or destroy the cache.
    [[nodiscard]] Subscription icon(const std::optional<std::string>& bundleID, ProcessID fallbackPID,
                                    Delivery deliver);
    /// The same for the icon that a file, folder or application at an absolute path has.
    [[nodiscard]] Subscription fileIcon(const std::string& path, Delivery deliver);

    /// Drops the icon of a process that has ended and had no bundle identifier: its number is no longer its own, and
    /// nobody asks for it again.
    void forget(ProcessID pid);

    /// What icons are told apart by: the bundle identifier, or the process where there is none.
    static std::string key(const std::optional<std::string>& bundleID, ProcessID fallbackPID);

private:
    using Load = std::function<ui::ImageRef()>;
    struct Entry {
        std::string key;
        ui::ImageRef image;
    };
    struct Request {
        Request(std::string k, Load l) : key(std::move(k)), load(std::move(l)) {}
        std::string key;
        Load load;
        Signal<const ui::ImageRef&> loaded;
    };
    using Entries = std::list<Entry>;
    using Requests = std::list<Request>;

    void postNextLoad();
    void loadNext();
    Subscription request(const std::string& key, Load load, Delivery deliver);
    ui::ImageRef applicationIcon(const std::optional<std::string>& bundleID, ProcessID pid);
    ui::ImageRef baked(ui::ImageRef image);
    void store(const std::string& key, ui::ImageRef image);

    Icons& icons_;
    MainLoop& mainLoop_;
    Entries entries_;  // from the least to the most recently used
    std::unordered_map<std::string, Entries::iterator> byKey_;
    Requests requests_;  // in flight, oldest first; a turn is posted exactly while there are any
    std::unordered_map<std::string, Requests::iterator> requestByKey_;
    Lifetime lifetime_;
};

}  // namespace morvel
