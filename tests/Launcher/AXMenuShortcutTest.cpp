// Finding and pressing another application's menu item.
#include "Launcher/AXMenuShortcut.h"

#include "Platform/AXNames.h"
#include "Vectors.h"
#include "sim/Desktop.h"

namespace morvel {

using vectors::Json;

namespace {

constexpr ProcessID kPid{7};

class MenuBar {
public:
    explicit MenuBar(const Json& tree) {
        if (!tree.is_null()) setAttribute(application(), ax::kMenuBar, handle(element(tree, Json::array())));
    }

    sim::SimAccessibility& accessibility() { return desktop_.accessibility(); }
    bool pressNewWindow() { return AXMenuShortcut::press(accessibility(), kPid, "n", "window"); }
    /// The way from the menu bar to what was pressed, as child indices; null when nothing was.
    Json pressed() {
        for (const sim::Deed& deed : desktop_.journal().deeds())
            if (deed.what == "AXPress") return ways_.at(*deed.element);
        return nullptr;
    }

    sim::ElementID application() { return accessibility().applicationID(kPid); }
    AXElement handle(sim::ElementID id) { return accessibility().handle(id); }
    void setAttribute(sim::ElementID id, std::string_view name, AXValue value) {
        accessibility().at(id).attributes.insert_or_assign(std::string(name), std::move(value));
    }

private:
    sim::ElementID element(const Json& node, const Json& way) {
        const sim::ElementID id = accessibility().add({.pid = kPid});
        ways_[id] = way;
        if (node[0].is_string()) setAttribute(id, ax::kMenuItemCmdChar, node[0].get<std::string>());
        if (node[1].is_number()) setAttribute(id, ax::kMenuItemCmdModifiers, node[1].get<double>());
        if (node[1].is_string()) setAttribute(id, ax::kMenuItemCmdModifiers, node[1].get<std::string>());
        if (node[2].is_string()) setAttribute(id, ax::kTitle, node[2].get<std::string>());
        if (node[3].is_null()) return id;
        std::vector<AXElement> children;
        for (size_t i = 0; i < node[3].size(); ++i) {
            Json childWay = way;
            childWay.push_back(i);
            children.push_back(handle(element(node[3][i], childWay)));
        }
        setAttribute(id, ax::kChildren, std::move(children));
        return id;
    }

    sim::Desktop desktop_;
    std::map<sim::ElementID, Json> ways_;
};

}  // namespace

TEST(AXMenuShortcut, RecordedMenus) {
    vectors::walk("menu_shortcut", [](const Json& input) {
        MenuBar menus(input["tree"]);
        menus.accessibility().onAction = [](auto, auto) { return AXError::Success; };
        const bool hasPressed = AXMenuShortcut::press(
            menus.accessibility(), kPid, input["character"].get<std::string>(), input["needle"].get<std::string>());
        EXPECT_EQ(hasPressed, !menus.pressed().is_null());
        return menus.pressed();
    });
}

TEST(AXMenuShortcut, RefusedHungAndEndlessMenusAreGivenUp) {
    MenuBar menus({nullptr, nullptr, nullptr, {{nullptr, nullptr, "File", {{"N", 0, "New Window", nullptr}}}}});
    menus.accessibility().onAction = [](auto, auto) { return AXError::CannotComplete; };
    EXPECT_FALSE(menus.pressNewWindow());
    EXPECT_FALSE(menus.pressed().is_null());
    menus.accessibility().process(kPid).isHung = true;
    const int calls = menus.accessibility().calls(kPid);
    EXPECT_FALSE(menus.pressNewWindow());
    EXPECT_EQ(menus.accessibility().calls(kPid), calls + 1) << "a hung application is asked once";
    menus.accessibility().process(kPid).isHung = false;
    // Every element has a thousand children, among them itself.
    const sim::ElementID bar = menus.accessibility().add({.pid = kPid});
    menus.setAttribute(bar, ax::kChildren, std::vector<AXElement>(1000, menus.handle(bar)));
    menus.setAttribute(menus.application(), ax::kMenuBar, menus.handle(bar));
    EXPECT_FALSE(menus.pressNewWindow());
    EXPECT_LT(menus.accessibility().calls(kPid), 20'000);
}

}  // namespace morvel
