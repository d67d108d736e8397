#include "Bar/Layout/RunningStripArranger.h"

#include <algorithm>

#include "Vectors.h"

namespace morvel {
namespace {

using vectors::Json;

Json ids(const std::vector<WindowSnapshot>& windows) {
    Json list = Json::array();
    for (const auto& w : windows) list.push_back(vectors::number(w.id));
    return list;
}

TEST(RunningStripArranger, RecordedRebuilds) {
    vectors::walk("bar_rebuild", [](const Json& steps) {
        RunningStripArranger arranger;
        Json results = Json::array();
        for (const Json& step : steps) {
            std::vector<WindowSnapshot> windowed, windowless;
            for (const Json& w : step[1]) {
                WindowSnapshot s;
                s.id = vectors::windowID(w[0]);
                s.pid = ProcessID(w[1]);
                s.appName = w[2];
                s.title = w[3];
                s.isWindowless = w[4];
                s.bundleID = vectors::optional<std::string>(w[5]);
                (s.isWindowless ? windowless : windowed).push_back(s);
            }
            const auto decision = RunningZoneLayout::decide(RunningZoneLayout::stableSorted(windowed), 1000, 150,
                                                            vectors::choice<GroupingMode>(step[0]));
            const auto content = arranger.arrange(decision, windowless);
            if (!content.isGrouped) {
                results.push_back({{"flat", ids(content.buttons)}});
                continue;
            }
            Json groups = Json::object();
            for (const auto& group : content.groups) {
                auto members = ids(group.windows);
                std::sort(members.begin(), members.end());
                groups[group.bundleID] = members;
            }
            results.push_back({{"groups", groups}, {"tiles", ids(content.buttons)}});
        }
        return results;
    });
}

}  // namespace
}  // namespace morvel
