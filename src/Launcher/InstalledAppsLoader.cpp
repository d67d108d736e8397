#include "Launcher/InstalledAppsLoader.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>
#include <utility>

namespace morvel {

namespace {

std::string fileNameWithoutSuffix(const std::string& name, std::string_view suffix) {
    const size_t start = name.rfind('/') + 1;  // 0 when there is none
    return name.substr(start, name.size() - suffix.size() - start);
}

}  // namespace

InstalledAppsLoader::InstalledAppsLoader(std::shared_ptr<InstalledApplications> installed, MainLoop& mainLoop,
                                         std::unique_ptr<WorkQueue> queue)
    : installed_(std::move(installed)),
      mainLoop_(mainLoop),
      queue_(std::move(queue)),
      changes_(installed_->observeChanges([this] { invalidate(); })) {}

void InstalledAppsLoader::apps(Use use) {
    if (cache_) return use(Apps(*cache_));  // a copy: using it may end in a new scan
    if (!isScanning_) startScan();
    waiting_.emplace_back(lastScan_, std::move(use));
}

void InstalledAppsLoader::invalidate() {
    cache_.reset();
    isScanning_ = false;
}

void InstalledAppsLoader::startScan() {
    isScanning_ = true;
    const auto found = std::make_shared<Apps>();
    const std::function<void()> done =
        lifetime_.whileAlive([this, found, scan = ++lastScan_] { scanned(scan, std::move(*found)); });
    queue_->run([installed = installed_, found, done, &mainLoop = mainLoop_] {
        *found = scan(*installed);
        mainLoop.post(done);
    });
}

void InstalledAppsLoader::scanned(uint64_t scan, Apps apps) {
    if (scan == lastScan_ && std::exchange(isScanning_, false)) cache_ = apps;
    const auto waitsForLater = [scan](const auto& waiting) { return waiting.first > scan; };
    const auto later = std::ranges::find_if(waiting_, waitsForLater);
    const std::vector served(std::make_move_iterator(waiting_.begin()), std::make_move_iterator(later));
    waiting_.erase(waiting_.begin(), later);
    const auto watch = lifetime_.watch();
    for (const auto& [waitedFor, use] : served)
        if (watch.isAlive()) use(apps);
}

InstalledAppsLoader::Apps InstalledAppsLoader::scan(InstalledApplications& installed) {
    Apps apps;
    std::unordered_set<std::string> known;
    const std::string_view suffix = installed.suffix();
    for (const std::string& folder : installed.folders()) {
        for (const std::string& name : installed.list(folder).value_or(std::vector<std::string>{})) {
            if (!name.ends_with(suffix)) continue;
            const std::string path = folder + "/" + name;
            auto bundle = installed.bundle(path);
            if (!bundle || bundle->identifier.value_or("").empty()) continue;
            if (!known.insert(*bundle->identifier).second || bundle->isHidden) continue;
            auto& displayName = bundle->displayName ? bundle->displayName : bundle->name;
            apps.push_back({*bundle->identifier, displayName.value_or(fileNameWithoutSuffix(name, suffix)), path});
        }
    }
    std::ranges::stable_sort(apps, [&installed](const InstalledApp& a, const InstalledApp& b) {
        return installed.compareNames(a.displayName, b.displayName) < 0;
    });
    return apps;
}

}  // namespace morvel
