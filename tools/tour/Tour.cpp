#include "Tour.h"

#include <iostream>

#include "Wallpaper.h"

namespace morvel::tour {

using namespace std::chrono_literals;
using e2e::Box;

namespace {

constexpr Box kScreen{0, 0, 1280, 800};
constexpr Box kLeft{0, 0, 640, 800};
constexpr Box kRight{640, 0, 640, 800};
constexpr const char* kEditorTitle = "Untitled 1 - Mousepad";
constexpr const char* kCalculatorTitle = "galculator";
constexpr const char* kSettingsTitle = "Morvel Settings";
/// A tint this much bluer than red is the accent colour and not the bar's own grey.
constexpr int kTint = 12;

/// Titles of terminals, without which no crowd.
std::string terminal(int number) {
    return "Terminal " + std::to_string(number);
}

}  // namespace

Tour::Tour(std::filesystem::path program, const std::filesystem::path& folder)
    : world_(kScreen.width, kScreen.height), program_(std::move(program)), album_(world_, folder) {}

bool Tour::play() {
    paintWallpaper(desktop_.connection());
    for (const auto step : {&Tour::dock, &Tour::openPrograms, &Tour::focus, &Tour::minimize, &Tour::restore,
                            &Tour::typeATitle, &Tour::menu, &Tour::pin, &Tour::secondWorkspace, &Tour::secondDisplay,
                            &Tour::crowd, &Tour::groupPopover, &Tour::closeTerminals, &Tour::launcher, &Tour::settings})
        (this->*step)();
    if (!bar_->program().isRunning()) std::cout << "the bar ended by itself:\n" << bar_->log();
    return album_.finish() && bar_->program().isRunning();
}

e2e::Program& Tour::launch(const std::vector<std::string>& arguments) {
    return programs_.emplace_back(world_.run(arguments));
}

e2e::Program& Tour::launchTerminal(const std::string& title) {
    return launch({"xterm", "-geometry", "56x12", "-fa", "Monospace", "-fs", "10", "-bg", "#1b2330", "-fg", "#d7dee9",
                   "-T", title, "-e", "sh", "-c", "echo \"$ ls /usr\"; ls /usr; exec sleep 1000"});
}

void Tour::expectButton(const std::string& title, std::optional<size_t> panel) {
    album_.expect("a button for " + title, [=, this] { return bar_->button(title, panel).has_value(); });
}

void Tour::click(const std::string& title) {
    if (const auto button = bar_->button(title)) world_.pointer.click(button->frame.center());
}

void Tour::clickPopupItem(const std::string& label) {
    album_.expect("an entry " + label, [&] { return bar_->popupItem(label).has_value(); });
    if (const auto item = bar_->popupItem(label)) world_.pointer.click(item->frame.center());
}

bool Tour::isTinted(const std::string& title) {
    const auto button = bar_->button(title);
    if (!button) return false;
    const Box& frame = button->frame;
    const auto color = world_.shoot().average({frame.x + 10, frame.bottom() - 4, frame.width - 20, 2});
    const auto plain = world_.shoot().average({frame.x + 10, frame.bottom() + 1, frame.width - 20, 2});  // bar beneath
    return color.blue - color.red > plain.blue - plain.red + kTint;
}

bool Tour::hasIcon(const std::string& title) {
    const auto button = bar_->button(title);
    return button && world_.shoot().colorsIn({button->frame.x + 6, button->frame.y + 7, 18, 18}) > 4;
}

void Tour::dock() {
    const auto bare = world_.shoot();
    bar_.emplace(world_.server, desktop_, program_, e2e::Bar::Options{});
    album_.expect("one panel along the lower edge", [&] {
        const auto panels = bar_->panels();
        return panels.size() == 1 && panels[0].box == Box{0, kScreen.height - 44, kScreen.width, 44};
    });
    album_.expect("the panel drawn all along", [&] {
        const Box changed = world_.shoot().differenceTo(bare, kScreen);
        return changed.y >= kScreen.height - 44 && changed.width > kScreen.width * 9 / 10;
    });
    album_.close("dock", "The bar docks to the lower edge of an empty desktop");
}

void Tour::openPrograms() {
    launchTerminal(terminal(1));
    launch({"galculator"});
    launch({"xclock", "-title", "Clock", "-geometry", "200x200"});
    launch({"mousepad", "--disable-server"});
    for (const std::string& title :
         {terminal(1), std::string(kCalculatorTitle), std::string("Clock"), std::string(kEditorTitle)}) {
        expectButton(title);
        album_.expect("an icon on it", [&] { return hasIcon(title); });
    }
    desktop_.place(window(terminal(1)), {60, 80, 480, 240});
    desktop_.place(window(kCalculatorTitle), {880, 90, 330, 400});
    desktop_.place(window("Clock"), {60, 440, 200, 200});
    desktop_.place(window(kEditorTitle), {240, 240, 560, 340});
    album_.expect("four buttons", [&] { return bar_->buttonTitles().size() == 4; });
    album_.close("open", "Four programs are opened: each window has a button with its icon and title");
}

void Tour::focus() {
    click(terminal(1));
    album_.expect("the terminal in front", [&] {
        const auto front = window(terminal(1));
        return desktop_.activeWindow() == front && desktop_.isAbove(front, window(kEditorTitle));
    });
    album_.expect("its button tinted, the editor's not",
                  [&] { return isTinted(terminal(1)) && !isTinted(kEditorTitle); });
    album_.close("focus", "A click on the terminal's button brings it to front; the button is tinted");
}

void Tour::minimize() {
    const auto before = world_.shoot();
    const Box place = desktop_.windowBox(window(terminal(1)));
    click(terminal(1));
    album_.expect("the terminal minimized", [&] { return desktop_.isMinimized(window(terminal(1))); });
    album_.expect("its pixels gone", [&] { return !world_.shoot().differenceTo(before, place.inset(20)).isEmpty(); });
    expectButton(terminal(1));
    album_.close("minimize", "A second click minimizes it; the button stays");
}

void Tour::restore() {
    click(terminal(1));
    album_.expect("the terminal back and focused", [&] {
        const auto back = window(terminal(1));
        return !desktop_.isMinimized(back) && desktop_.activeWindow() == back && desktop_.connection().isViewable(back);
    });
    album_.expect("its button tinted", [&] { return isTinted(terminal(1)); });
    album_.close("restore", "A third click restores it");
}

void Tour::typeATitle() {
    click(kEditorTitle);
    album_.expect("the editor focused", [&] { return desktop_.activeWindow() == window(kEditorTitle); });
    const auto button = bar_->button(kEditorTitle);
    const auto before = world_.shoot();
    world_.pointer.type("hello");
    const std::string modified = std::string("*") + kEditorTitle;
    expectButton(modified);
    album_.expect("the new title drawn",
                  [&] { return button && !world_.shoot().differenceTo(before, button->frame).isEmpty(); });
    album_.close("title", "Typing in the editor changes its title, and its button follows");
}

void Tour::menu() {
    expectButton("Clock");
    if (const auto button = bar_->button("Clock")) world_.pointer.rightClick(button->frame.center());
    for (const char* entry : {"Close Window", "Pin App to Morvel"})
        album_.expect(std::string("an entry ") + entry, [&] { return bar_->popupItem(entry).has_value(); });
    album_.close("menu", "A right click opens the window's menu");
    world_.pointer.key(e2e::kKeyEscape);
    desktop_.waitUntil([&] { return bar_->popups().empty(); });
}

void Tour::pin() {
    if (const auto button = bar_->button(kCalculatorTitle)) world_.pointer.rightClick(button->frame.center());
    clickPopupItem("Pin App to Morvel");
    album_.expect("a pinned button", [&] { return bar_->group("Galculator").has_value(); });
    album_.expect("the calculator's window button after it", [&] {
        const auto pinned = bar_->group("Galculator");
        const auto window = bar_->button(kCalculatorTitle);
        return pinned && window && pinned->frame.right() < window->frame.x;
    });
    world_.pointer.moveTo({640, 30});  // away from tooltips
    album_.close("pin", "The calculator is pinned: it stays at the bar's start, with a dot while it runs");
}

void Tour::secondWorkspace() {
    desktop_.showWorkspace(1);
    launchTerminal(terminal(2));
    expectButton(terminal(2));
    album_.expect("no buttons of the first workspace",
                  [&] { return bar_->buttonTitles() == std::vector{terminal(2)}; });
    album_.expect("the first workspace's windows out of sight",
                  [&] { return !desktop_.connection().isViewable(window("Clock")); });
    album_.close("workspace", "On the second workspace the bar shows only that workspace's window");
    desktop_.showWorkspace(0);
    expectButton("Clock");
    album_.expect("no button of the second workspace", [&] { return !bar_->button(terminal(2)); });
}

void Tour::secondDisplay() {
    desktop_.setMonitors({{"left", kLeft, true}, {"right", kRight}});
    album_.expect("a panel on each display", [&] {
        const auto panels = bar_->panels();
        return panels.size() == 2 && kLeft.contains(panels[0].box) && kRight.contains(panels[1].box);
    });
    expectButton(terminal(1), 0);
    expectButton(kCalculatorTitle, 1);
    album_.expect("the right bar drawn", [&] {
        const auto panels = bar_->panels();
        return panels.size() == 2 && world_.shoot().colorsIn(panels[1].box) > 4;
    });
    desktop_.place(window(terminal(1)), {700, 520, 480, 200});
    expectButton(terminal(1), 1);
    album_.close("display", "A second display gets its own bar; the terminal was moved there, and its button with it");
    desktop_.setMonitors({});
    album_.expect("one panel again", [&] { return bar_->panels().size() == 1; });
}

void Tour::crowd() {
    for (int i = 3; i <= 9; ++i) launchTerminal(terminal(i));
    album_.expect("the terminals grouped under a badge",
                  [&] { return bar_->panelItem("8").has_value() && bar_->group("XTerm").has_value(); });
    album_.expect("no window buttons any more", [&] { return bar_->buttonTitles().empty(); });
    for (int i = 3; i <= 9; ++i) desktop_.place(window(terminal(i)), {40 + 36 * i, 40 + 26 * i, 480, 200});
    album_.close("crowd", "Eleven windows are too many for the strip: one counted button per application");
}

void Tour::groupPopover() {
    const auto group = bar_->group("XTerm");
    if (group) world_.pointer.click(group->frame.center());
    for (int i = 3; i <= 9; ++i)
        album_.expect("a row for " + terminal(i), [&] { return bar_->popupItem(terminal(i)).has_value(); });
    album_.expect("the list above the bar", [&] {
        const auto popups = bar_->popups();
        const auto lowest = bar_->popupItem(terminal(9));  // the arrow below it reaches for its button
        return !popups.empty() && world_.shoot().colorsIn(popups[0].box) > 4 && lowest &&
               lowest->frame.bottom() <= bar_->panels().at(0).box.y + 1;
    });
    album_.close("popover", "A click on the group lists its windows");
    clickPopupItem(terminal(4));
    album_.expect("the picked terminal in front", [&] { return desktop_.activeWindow() == window(terminal(4)); });
    album_.close("pick", "A click on a row brings that window to front");
}

void Tour::closeTerminals() {
    world_.pointer.click({20, 20});  // the bare desktop: closes what is open
    desktop_.waitUntil([&] { return bar_->popups().empty(); });
    for (auto& program : programs_)
        if (const auto windows = desktop_.windowsOf(program.pid());
            windows.size() == 1 && desktop_.title(windows[0]).starts_with("Terminal")) {
            desktop_.close(windows[0]);
        }
    expectButton("Clock");
    album_.expect("no terminal left on the bar", [&] { return bar_->buttonTitles().size() == 3; });
    album_.close("close", "The terminals are closed: there is room again for a button per window");
}

void Tour::launcher() {
    if (const auto button = bar_->panelItem("Apps")) world_.pointer.click(button->frame.center());
    album_.expect("a search field", [&] { return bar_->popupItem("Search apps…").has_value(); });
    album_.expect("the calculator among the applications", [&] { return bar_->popupItem("Galculator").has_value(); });
    desktop_.runFor(500ms);  // the keyboard is taken a little after the list is seen
    world_.pointer.type("mouse");
    album_.expect("the calculator gone from the list", [&] { return !bar_->popupItem("Galculator"); });
    album_.expect("the editor found",
                  [&] { return bar_->popupItem("mouse").has_value() && bar_->popupItem("Mousepad").has_value(); });
    album_.close("launcher", "The Start button lists the installed applications; typing narrows the list");
    world_.pointer.key(e2e::kKeyEscape);
    desktop_.waitUntil([&] { return bar_->popups().empty(); });
}

void Tour::settings() {
    const auto height = [&] {
        const auto panels = bar_->panels();
        return panels.empty() ? 0 : panels[0].box.height;
    };
    const int before = height();
    world_.pointer.rightClick({kScreen.width - 40, kScreen.height - 20});
    clickPopupItem("Morvel Settings…");
    album_.expect("the settings in front", [&] { return desktop_.activeWindow() == window(kSettingsTitle); });
    const int pages = 5;
    for (int i = 0; i < pages; ++i) world_.pointer.key(e2e::kKeyTab);  // past each page's button to the search
    world_.pointer.type("bar height");
    desktop_.runFor(500ms);  // the search begins a little after the last letter
    world_.pointer.key(e2e::kKeyTab);
    for (int i = 0; i < 8; ++i) world_.pointer.key(e2e::kKeyRight);
    album_.expect("a higher bar", [&] { return height() == before + 8; });
    album_.close("settings", "The settings, searched by typing; the bar follows at once, here with its height");
}

}  // namespace morvel::tour
