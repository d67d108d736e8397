// What the core costs: one change of a window, from the store's event to the strip's new content, and the launcher.
#include <benchmark/benchmark.h>

#include <string>

#include "Bar/Layout/RunningStripArranger.h"
#include "Bar/Layout/RunningZoneWidths.h"
#include "Bar/Layout/WindowProjection.h"
#include "Launcher/InstalledAppsLoader.h"
#include "Launcher/LauncherFilter.h"
#include "Util/LowerCase.h"
#include "WindowSource/WindowStore.h"

namespace morvel {
namespace {

constexpr DisplayID kDisplay{1};
constexpr SpaceID kSpace{1};

struct World {
    explicit World(int count) {
        context.screens = {{kDisplay, "Display", {0, 0, 1920, 1080}, {0, 0, 1920, 1080}}};
        context.mainDisplay = context.screenID = kDisplay;
        context.spaceID = kSpace;
        for (int i = 0; i < count; ++i) {
            const int app = i % 40;
            WindowSnapshot w{mint.next(),
                             ProcessID(100 + app),
                             WindowNumber(static_cast<uint32_t>(i)),
                             "com.example.application" + std::to_string(app),
                             "Application " + std::to_string(app),
                             "A document with a usual title " + std::to_string(i),
                             {double(i % 900), double(i % 500), 600, 400},
                             false,
                             false};
            ids.push_back(w.id);
            store.apply(event::Added{w});
        }
    }

    /// What a bar does once per turn; whether the strip had to be rebuilt.
    bool project() {
        SpaceQueryCache spaces([](WindowNumber) { return std::set<SpaceID>{kSpace}; },
                               [](DisplayID) { return std::optional(kSpace); });
        auto filtered = windowsOnThisScreen(*store.windows().value(), context, spaces);
        if (!last.update(filtered, context, mode)) return false;
        auto plan = RunningZoneLayout::planRunningZone(std::move(filtered), rule, 1900, mode,
                                                       WindowlessDisplayMode::FollowGrouping);
        content = arranger.arrange(std::move(plan.decision), std::move(plan.windowless));
        return true;
    }

    void changeTitle(size_t n) { store.apply(event::TitleChanged{ids[0], "Changed " + std::to_string(n)}); }

    WindowIDMint mint{1};
    WindowStore store{mint, [](ProcessID) { return true; }};
    std::vector<WindowID> ids;
    ProjectionContext context;
    GroupingMode mode = GroupingMode::Never;
    RunningZoneLayout::FlatWidthRule rule{WindowButtonWidthMode::Fixed, 150, 4, nullptr};
    RunningProjection last;
    RunningStripArranger arranger;
    RunningStripContent content;
};

/// One changed title: projection, order, layout and the comparison with what was shown.
void titleChange(benchmark::State& state) {
    World world(static_cast<int>(state.range(0)));
    world.mode = state.range(1) ? GroupingMode::Always : GroupingMode::Never;
    world.project();
    size_t n = 0;
    for (auto _ : state) {
        world.changeTitle(++n);
        if (!world.project()) state.SkipWithError("a changed title must change the projection");
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(titleChange)->ArgsProduct({{10, 100, 300, 1000}, {0, 1}})->Unit(benchmark::kMicrosecond);

/// A publication that changes nothing this bar shows.
void unchangedProjection(benchmark::State& state) {
    World world(static_cast<int>(state.range(0)));
    world.project();
    for (auto _ : state)
        if (world.project()) state.SkipWithError("nothing has changed");
}
BENCHMARK(unchangedProjection)->Arg(300)->Unit(benchmark::kMicrosecond);

/// An event when nobody holds the old map: no copy.
void storeEvent(benchmark::State& state) {
    World world(static_cast<int>(state.range(0)));
    size_t n = 0;
    for (auto _ : state) world.changeTitle(++n);
}
BENCHMARK(storeEvent)->Arg(10)->Arg(300)->Arg(1000);

/// One key typed into the launcher: what is listed and what is selected.
void launcherKey(benchmark::State& state) {
    std::vector<std::string> names;
    for (int i = 0; i < state.range(0); ++i)
        names.push_back(lowerCased("An Application of Usual Name " + std::to_string(i)));
    size_t listed = 0;
    for (auto _ : state) {
        const std::string query = lowerCased("USUAL");
        const auto kept = LauncherFilter::filtered(query, names);
        listed += kept.size() + LauncherFilter::bestMatch(query, names, kept).value_or(0);
    }
    benchmark::DoNotOptimize(listed);
}
BENCHMARK(launcherKey)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

/// Folders that answer at once, so that what is measured is ours.
class Shelf : public InstalledApplications {
public:
    explicit Shelf(int64_t count) {
        // Neither in order nor in the opposite one; 7919 is a prime.
        for (int64_t i = 0; i < count; ++i)
            names_.push_back("Application " + std::to_string(i * 7919 % count) + ".app");
    }
    std::vector<std::string> folders() override { return {"/Applications", "/Users/me/Applications"}; }
    std::string_view suffix() override { return ".app"; }
    std::optional<std::vector<std::string>> list(const std::string&) override { return names_; }
    std::optional<ApplicationBundle> bundle(const std::string& path) override {
        const std::string name = path.substr(path.rfind('/') + 1);
        return ApplicationBundle{.identifier = "com.example." + name, .displayName = std::nullopt, .name = name};
    }
    int compareNames(const std::string& a, const std::string& b) override {
        return lowerCased(a).compare(lowerCased(b));
    }
    Subscription observeChanges(std::function<void()>) override { return {}; }

private:
    std::vector<std::string> names_;
};

/// One scan of two folders with the same applications. It runs on a thread of its own; no frame waits for it.
void installedScan(benchmark::State& state) {
    Shelf shelf(state.range(0));
    for (auto _ : state) {
        const auto apps = InstalledAppsLoader::scan(shelf);
        if (apps.size() != static_cast<size_t>(state.range(0))) state.SkipWithError("each application is listed once");
    }
}
BENCHMARK(installedScan)->Arg(500)->Arg(5000)->Unit(benchmark::kMicrosecond);

/// What the main thread does with the answer, which a frame does wait for: the list is kept, handed over and made
/// ready for searching.
void installedAnswer(benchmark::State& state) {
    Shelf shelf(state.range(0));
    const auto apps = InstalledAppsLoader::scan(shelf);
    for (auto _ : state) {
        const InstalledAppsLoader::Apps kept = apps, handedOver = kept;
        std::vector<std::string> names;
        for (const InstalledApp& app : handedOver) names.push_back(lowerCased(app.displayName));
        benchmark::DoNotOptimize(LauncherFilter::filtered("", names));
    }
}
BENCHMARK(installedAnswer)->Arg(500)->Arg(5000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace morvel
