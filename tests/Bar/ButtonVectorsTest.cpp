// The recorded answers for the buttons' pure decisions.
#include "Bar/Buttons/ButtonGeometry.h"
#include "Bar/Buttons/ButtonTexts.h"
#include "Bar/Buttons/PressTracker.h"
#include "Bar/Buttons/WindowMenus.h"
#include "Bar/Pinned/PinnedItemContextMenu.h"
#include "Theme/AppIconView.h"
#include "Theme/ButtonAppearance.h"
#include "Vectors.h"
#include "sim/FakeMainLoop.h"
#include "sim/SimIcons.h"

namespace morvel {
namespace {

using vectors::Json;

// A colour of its own, so that it cannot pass for the system's accent.
const ui::Color kAccent = ui::customColor({0.1, 0.2, 0.3, 1});

Json toJson(const ui::Color& color) {
    if (color.isClear()) return {"clear", 0};
    const std::map<ui::ColorRole, std::string> names = {{ui::ColorRole::Label, "label"},
                                                        {ui::ColorRole::ControlAccent, "controlAccent"}};
    if (color.withAlpha(1) == kAccent) return {"accent", color.alpha};
    return {names.at(color.role), color.alpha};
}

Json bordered(const ButtonAppearance& look) {
    return {
        {"background", toJson(look.background)}, {"borderWidth", look.borderWidth}, {"border", toJson(look.border)}};
}

Json windowLook(const Json& input) {
    const WindowButtonState state{.isActive = input["active"],
                                  .isHovered = input["hovered"],
                                  .hasBorders = input["borders"],
                                  .style = vectors::choice<ActiveButtonStyle>(input["style"]),
                                  .accent = kAccent,
                                  .barEdge = vectors::choice<MorvelEdge>(input["edge"])};
    Json look = bordered(windowButtonAppearance(state));
    look["underline"] = nullptr;
    if (const auto side = activeUnderline(state))
        look["underline"] = {{"side", *side == ui::Edge::Top ? "top" : "bottom"},
                             {"height", ButtonGeometry::kUnderlineHeight}};
    return look;
}

TEST(ButtonVectors, Appearance) {
    vectors::walk("button_appearance", [](const Json& input) -> Json {
        const std::string button = input["button"];
        if (button == "window") return windowLook(input);
        if (button == "start") return {{"background", toJson(startButtonAppearance(input["hovered"]).background)}};
        if (button == "row") return {{"background", toJson(rowAppearance(input["hovered"]).background)}};
        Json look = bordered(appButtonAppearance(input["hovered"], input["borders"]));
        if (button == "pinned") look["dot"] = showsRunningDot(input["kind"] == "app", input["running"]);
        return look;
    });
}

TEST(ButtonVectors, Geometry) {
    vectors::walk("button_geometry", [](const Json& input) -> Json {
        const auto required =
            ButtonGeometry::requiredWidth(input["iconOnly"], vectors::optional<double>(input["provided"]));
        return {{"intrinsic", required ? *required : ButtonGeometry::titleDrivenWidth(input["labelWidth"])},
                {"constraint", required ? Json(*required) : Json()}};
    });
}

Json titles(const ui::Menu& menu) {
    Json list = Json::array();
    for (const ui::MenuItem& item : menu) {
        if (item.submenu.empty()) {
            list.push_back(item.isSeparator ? "-" : item.title);
            continue;
        }
        Json submenu = titles(item.submenu);
        submenu.insert(submenu.begin(), item.title);
        list.push_back(submenu);
    }
    return list;
}

ui::Menu menuOf(const std::string& kind, const std::string& app, const std::vector<OtherScreen>& screens) {
    if (kind == "window" || kind == "row") return WindowMenus::forWindow(app, screens, {});
    if (kind == "windowless" || kind == "grouped") return WindowMenus::forApplication(app, {});
    const PinnedItem item = kind == "pinnedApp" ? PinnedItem::app("a", app) : PinnedItem::folder("/a", app);
    return PinnedItemContextMenu::make(item, {}, {}, {});
}

TEST(ButtonVectors, Texts) {
    vectors::walk("button_texts", [](const Json& input) -> Json {
        const std::string app = input["app"];
        if (input["fn"] == "menu") {
            std::vector<OtherScreen> screens;
            for (const Json& name : input["otherScreens"]) screens.push_back({name, DisplayID{7}});
            return titles(menuOf(input["kind"], app, screens));
        }
        WindowSnapshot window;
        window.appName = app;
        window.title = input["title"];
        window.isWindowless = input["windowless"];
        const ButtonTexts texts = buttonTexts(window);
        return {{"label", texts.label}, {"tooltip", texts.tooltip}, {"alpha", texts.alpha}};
    });
}

TEST(ButtonVectors, ClickOrDrag) {
    vectors::walk("mouse_traces", [](const Json& input) -> Json {
        const std::map<PressOutcome, std::string> names = {
            {PressOutcome::Nothing, ""}, {PressOutcome::DragStart, "dragStart"}, {PressOutcome::Click, "click"}};
        PressTracker press;
        Json outcomes = Json::array();
        for (const Json& event : input) {
            PressOutcome outcome = PressOutcome::Nothing;
            if (event[0] == "down") press.down({event[1], event[2]});
            if (event[0] == "drag") outcome = press.drag({event[1], event[2]});
            if (event[0] == "up") outcome = press.up();
            outcomes.push_back(names.at(outcome));
        }
        return outcomes;
    });
}

TEST(ButtonVectors, IconReload) {
    vectors::walk("icon_reload", [](const Json& input) -> Json {
        sim::FakeMainLoop loop;
        sim::SimIcons icons;
        IconCache cache(icons, loop);
        AppIconView icon(cache);
        Json loads = Json::array();
        for (const Json& update : input)
            loads.push_back(icon.show(vectors::optional<std::string>(update[0]), ProcessID{update[1]}));
        return loads;
    });
}

}  // namespace
}  // namespace morvel
