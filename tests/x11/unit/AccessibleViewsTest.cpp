// What assistive programs are told of a tree of views, and when they are told anything at all.
#include <gtest/gtest.h>

#include <map>

#include "Platform/Linux/Accessibility/AccessibilityRequest.h"
#include "Platform/Linux/Accessibility/AccessibleViews.h"
#include "UI/ImageButton.h"
#include "UI/Label.h"
#include "sim/FakeMainLoop.h"
#include "sim/SimToolkit.h"

namespace morvel::x11 {
namespace {

using Views = std::vector<ui::View*>;

struct AccessibleViews : testing::Test {
    sim::FakeMainLoop loop;
    sim::SimToolkit toolkit{loop};
};

TEST_F(AccessibleViews, AreWhatMeansSomethingThroughWhatOnlyArranges) {
    ui::View root, stack, decoration;
    ui::ImageButton first, hidden;
    ui::Label heading(toolkit), empty(toolkit);
    heading.setText("Heading");
    hidden.setHidden(true);
    root.addSubview(decoration);
    root.addSubview(stack);
    for (ui::View* view : Views{&heading, &empty, &first, &hidden}) stack.addSubview(*view);
    EXPECT_EQ(accessibleSubviews(root), (Views{&heading, &first}));
    stack.setHidden(true);
    EXPECT_EQ(accessibleSubviews(root), Views{}) << "what is in a hidden view is hidden";
}

TEST_F(AccessibleViews, AButtonsTextsAreItsNameButItsButtonsAreButtons) {
    ui::ImageButton row, close;
    ui::Label title(toolkit);
    ui::View badge;
    title.setText("Title");
    badge.setAccessibilityLabel("Now Playing");
    for (ui::View* view : Views{&title, &badge, &close}) row.addSubview(*view);
    EXPECT_EQ(accessibleSubviews(row), (Views{&badge, &close}));
}

TEST_F(AccessibleViews, TextsAreFitForTheBus) {
    ui::Label label(toolkit);
    label.setText("Text");
    EXPECT_EQ(accessibleName(label), "Text");
    label.setAccessibilityLabel("Spoken");
    EXPECT_EQ(accessibleName(label), "Spoken") << "what is meant to be spoken goes first";
    label.setTooltip("Spoken");
    EXPECT_EQ(accessibleDescription(label), "") << "nothing is said twice";
    label.setTooltip("More");
    EXPECT_EQ(accessibleDescription(label), "More");
    label.setAccessibilityLabel("a\xff" + std::string(1, '\0') + "b");
    EXPECT_EQ(accessibleName(label),
              "a\xEF\xBF\xBD\xEF\xBF\xBD"
              "b");
    std::string huge;
    while (huge.size() < (1U << 20)) huge += "\xE2\x82\xAC";
    label.setAccessibilityLabel(huge);
    EXPECT_LT(accessibleName(label).size(), 4096U);
}

TEST(AccessibilityWish, IsReadOffTheEnvironment) {
    struct Row {
        const char* why;
        std::map<std::string, const char*> variables;
        AccessibilityWish wish;
    };
    for (const Row& row : {
             Row{"nothing said", {}, AccessibilityWish::Ask},
             Row{"set in every session of some distributions", {{"QT_ACCESSIBILITY", "1"}}, AccessibilityWish::Ask},
             Row{"asked for", {{"GNOME_ACCESSIBILITY", "1"}}, AccessibilityWish::Always},
             Row{"asked for", {{"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}}, AccessibilityWish::Always},
             Row{"asked not to", {{"GNOME_ACCESSIBILITY", "0"}}, AccessibilityWish::Ask},
             Row{"refused", {{"NO_AT_BRIDGE", "1"}, {"GNOME_ACCESSIBILITY", "1"}}, AccessibilityWish::Never},
             Row{"not refused", {{"NO_AT_BRIDGE", "0"}}, AccessibilityWish::Ask},
         })
        EXPECT_EQ(accessibilityWish([&](const char* variable) {
                      const auto found = row.variables.find(variable);
                      return found == row.variables.end() ? nullptr : found->second;
                  }),
                  row.wish)
            << row.why;
}

}  // namespace
}  // namespace morvel::x11
