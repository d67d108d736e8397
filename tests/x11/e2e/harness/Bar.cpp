#include "harness/Bar.h"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

namespace morvel::e2e {
namespace {

constexpr std::string_view kTooltipDash = " \u2014 ";

/// A description that is not as agreed gives no views, so that the test which looks for one says what is missing.
std::vector<BarView> viewsIn(const std::string& text) {
    std::vector<BarView> views;
    const auto list = nlohmann::json::parse(text, nullptr, false);
    if (!list.is_array()) return views;
    for (const auto& entry : list) {
        const auto frame = entry.value("frame", std::vector<double>{});
        if (frame.size() != 4) continue;
        const auto pixel = [&](size_t i) { return static_cast<int>(frame[i]); };
        views.push_back({entry.value("label", ""),
                         entry.value("tooltip", ""),
                         {pixel(0), pixel(1), pixel(2), pixel(3)},
                         entry.value("hidden", false),
                         entry.value("alpha", 1.0)});
    }
    return views;
}

Environment with(const Environment& usual, Environment more) {
    more["MORVEL_INSPECT"] = "1";
    more.insert(usual.begin(), usual.end());
    return more;
}

bool isBefore(const BarWindow& a, const BarWindow& b) {
    return std::tuple(!a.isPanel, a.box.x, a.box.y) < std::tuple(!b.isPanel, b.box.x, b.box.y);
}

}  // namespace

std::optional<std::string> BarView::windowTitle() const {
    const auto dash = tooltip.find(kTooltipDash);
    if (dash == std::string::npos) return std::nullopt;
    return tooltip.substr(dash + kTooltipDash.size());
}

Bar::Bar(XServer& server, Desktop& desktop, const std::filesystem::path& program, const Options& options)
    : server_(server),
      desktop_(desktop),
      logFile_(prepared(server, options)),
      program_({program}, with(server.environment(), options.environment), {.output = logFile_}) {}

std::filesystem::path Bar::prepared(XServer& server, const Options& options) {
    if (!options.defaults.empty()) {
        std::filesystem::create_directories(server.configFolder() / "morvel");
        std::ofstream(server.configFolder() / "morvel/defaults.json") << options.defaults;
    }
    return server.home() / "bar.log";
}

std::vector<BarWindow> Bar::windows() {
    auto& connection = desktop_.connection();
    // Panels are managed and so may sit inside a frame; all other windows of the bar are the root's own children.
    const auto managed = desktop_.clients(), top = connection.childrenOf(connection.root());
    std::set<xcb_window_t> candidates(managed.begin(), managed.end());
    candidates.insert(top.begin(), top.end());
    std::vector<BarWindow> windows;
    for (const auto window : candidates) {
        const auto views = connection.bytes(window, "_MORVEL_VIEWS");
        if (!views || !connection.isViewable(window)) continue;
        const auto types = connection.cardinals(window, "_NET_WM_WINDOW_TYPE");
        const bool isPanel = !types.empty() && types[0] == connection.atom("_NET_WM_WINDOW_TYPE_DOCK");
        windows.push_back({window, desktop_.windowBox(window), isPanel, viewsIn(*views)});
    }
    std::ranges::stable_sort(windows, isBefore);
    return windows;
}

std::vector<BarWindow> Bar::panels(std::optional<size_t> index) {
    auto all = windows();
    std::erase_if(all, [](const BarWindow& window) { return !window.isPanel; });
    if (!index) return all;
    if (*index >= all.size()) return {};
    return {all[*index]};
}

std::vector<BarWindow> Bar::popups() {
    auto all = windows();
    std::erase_if(all, [](const BarWindow& window) { return window.isPanel; });
    return all;
}

std::optional<BarView> Bar::find(const std::vector<BarWindow>& windows,
                                 const std::function<bool(const BarView&)>& isWanted) {
    for (const auto& window : windows)
        for (const auto& view : window.views)
            if (!view.hidden && isWanted(view)) return view;
    return std::nullopt;
}

std::vector<std::string> Bar::buttonTitles(std::optional<size_t> panel) {
    std::multimap<int, std::string> found;
    for (const auto& window : panels(panel))
        for (const auto& view : window.views)
            if (const auto title = view.windowTitle(); title && !view.hidden) found.emplace(view.frame.x, *title);
    std::vector<std::string> titles;
    for (auto& [x, title] : found) titles.push_back(std::move(title));
    return titles;
}

std::string Bar::log() const {
    std::ostringstream text;
    text << std::ifstream(logFile_).rdbuf();
    return text.str();
}

}  // namespace morvel::e2e
