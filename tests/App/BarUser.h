// A person who does anything at all to the bars, in any order. Only what can be reached is pressed.
#pragma once

#include "App/DesktopLife.h"
#include "Bar/Pinned/PinnedOverflowRow.h"
#include "Launcher/LauncherRow.h"
#include "Launcher/StartButton.h"
#include "Settings/SettingsFile.h"
#include "UI/FormSearch.h"

namespace morvel {

class BarUser {
public:
    /// All three outlive it. `life` goes on while something is dragged.
    BarUser(BarDesktop& desktop, DesktopLife& life, Chance& chance) : desktop_(desktop), life_(life), chance_(chance) {}

    // --- Settings ---
    void changeSetting() {
        int count = 0;
        desktop_.settings().forEachChoice([&](auto&) { ++count; });
        int left = chance_.below(count);
        desktop_.settings().forEachChoice([&](auto& setting) {
            if (left-- == 0) setAny(setting);
        });
    }
    /// Brings settings from another machine, which may be anything.
    void importSettings() {
        std::string text = SettingsFile::exported(desktop_.settings());
        if (chance_.oneIn(2)) text.resize(static_cast<size_t>(chance_.below(static_cast<int>(text.size()))));
        SettingsFile::imported(desktop_.settings(), text);
    }
    /// Whatever can be operated in the settings window, which opens for it and stays open.
    void useSettingsWindow() {
        desktop_.delegate().openSettings();
        std::vector<const ui::FormControl*> usable;
        const ui::Form& form = desktop_.toolkit().formWindows().back()->form;
        for (const ui::FormTab& tab : form.tabs)
            for (const ui::FormSection& section : tab.sections)
                for (const ui::FormControl& control : section.controls)
                    if (ui::isEnabled(control) && (!control.isVisible || control.isVisible()))
                        usable.push_back(&control);
        if (const ui::FormControl* control = chance_.any(usable))
            std::visit([this](const auto& kind) { operate(kind); }, control->kind);
    }

    // --- The pointer ---
    template <class Button>
    Button* reachable(std::vector<ui::View*> roots) {
        std::vector<Button*> found;
        for (ui::View* root : roots) {
            root->layoutIfNeeded();
            for (Button* button : desktop_.all<Button>(*root))
                if (root->hitTest(button->boundsInRoot().center()) == button) found.push_back(button);
        }
        return chance_.any(found);
    }
    std::vector<ui::View*> bars() {
        std::vector<ui::View*> roots;
        for (sim::SimPanel* panel : desktop_.toolkit().panels())
            if (desktop_.isSeen(*panel)) roots.push_back(&panel->surface.root());
        return roots;
    }
    std::vector<ui::View*> barsAndList() {
        std::vector<ui::View*> roots = bars();
        if (sim::SimPopover* popover = desktop_.toolkit().shownPopover()) roots.push_back(&popover->surface.root());
        return roots;
    }
    /// A strip that waits for the pointer, or a bar, or nothing at all.
    void point() {
        settle();
        ui::View* root = chance_.any(bars());
        if (!root || chance_.oneIn(4)) return desktop_.toolkit().leave();
        desktop_.toolkit().moveTo(*root);
    }
    void clickButton() {
        settle();
        if (auto* button = reachable<WindowButton>(bars()); button && chance_.oneIn(2))
            return desktop_.toolkit().click(*button);
        if (auto* more = reachable<PinnedOverflowButton>(bars()); more && chance_.oneIn(2))
            return desktop_.toolkit().click(*more);
        if (auto* group = reachable<GroupedAppButton>(bars())) desktop_.toolkit().click(*group);
    }
    void rightClick() {
        settle();
        if (auto* pin = reachable<PinnedAppButton>(bars()); pin && chance_.oneIn(4))
            return desktop_.toolkit().rightClick(*pin);
        if (auto* bar = reachable<MorvelView>(bars()); bar && chance_.oneIn(4))
            return desktop_.toolkit().rightClick(*bar);
        if (auto* button = reachable<WindowButton>(bars()); button && chance_.oneIn(2))
            return desktop_.toolkit().rightClick(*button);
        if (auto* group = reachable<GroupedAppButton>(bars())) desktop_.toolkit().rightClick(*group);
    }
    void usePopover() {
        settle();
        sim::SimPopover* popover = desktop_.toolkit().shownPopover();
        if (!popover) return;
        if (auto* cross = reachable<ui::ImageButton>({&popover->surface.root()}); cross && chance_.oneIn(3))
            return desktop_.toolkit().click(*cross);
        if (auto* pin = reachable<PinnedOverflowRow>({&popover->surface.root()}))
            return chance_.oneIn(2) ? desktop_.toolkit().click(*pin) : desktop_.toolkit().rightClick(*pin);
        auto* row = reachable<GroupRowButton>({&popover->surface.root()});
        if (row) chance_.oneIn(2) ? desktop_.toolkit().click(*row) : desktop_.toolkit().rightClick(*row);
    }
    void chooseFromMenu() {
        std::vector<std::vector<std::string>> paths;
        for (const std::string& title : desktop_.toolkit().menuTitles().value_or(std::vector<std::string>{})) {
            if (title == "Move to Display") {
                const auto displays = desktop_.toolkit().menuTitles({title});
                for (const std::string& display : *displays) paths.push_back({title, display});
            } else if (desktop_.toolkit().canChoose(title)) {
                paths.push_back({title});
            }
        }
        if (paths.empty()) return;
        chance_.oneIn(4) ? desktop_.toolkit().dismissMenu() : desktop_.toolkit().choose(*chance_.any(paths));
    }
    /// Rests on a button, which opens the controls of a player that plays.
    void hover() {
        settle();
        auto* button = reachable<WindowButton>(bars());
        if (!button) return;
        desktop_.toolkit().moveTo(*button);
        run(500ms);
    }
    void useLauncher() {
        settle();
        if (auto* start = reachable<StartButton>(bars())) desktop_.toolkit().click(*start);
        run(std::chrono::milliseconds(chance_.below(100)));
        sim::SimPopover* popover = desktop_.toolkit().shownPopover();
        if (!popover || popover->kind != ui::PopoverKind::Search) return;
        desktop_.toolkit().type(chance_.oneIn(2) ? "app" : std::to_string(chance_.below(6)));
        desktop_.toolkit().give(ui::TextCommand::MoveDown);
        if (auto* row = reachable<LauncherRow>({&popover->surface.root()}); row && chance_.oneIn(2))
            return desktop_.toolkit().click(*row);
        if (!chance_.oneIn(3))
            desktop_.toolkit().give(chance_.oneIn(2) ? ui::TextCommand::Confirm : ui::TextCommand::Cancel);
    }
    void pressOutside() { desktop_.toolkit().pressOutside(); }

    // --- Pinned items ---
    void changePins() {
        PinnedAppsStore& store = *desktop_.delegate().pinnedStore();
        const std::string path = anyPath();
        const int what = chance_.below(4);
        if (what == 0) store.pinFolder(path, path);
        if (what == 1) store.pinApp(anyApp(), path);
        if (what == 2) store.move("folder:" + path, chance_.below(12) - 2);
        if (what == 3) store.unpin("folder:" + path);
    }
    /// Of anything that can be dragged to anything else, while anything may happen.
    void dragPin() {
        settle();
        desktop_.toolkit().dismissMenu();
        sim::SimDrags& drags = desktop_.toolkit().drags();
        ui::View* dragged = reachable<PinnedAppButton>(barsAndList());
        if (chance_.oneIn(3)) dragged = reachable<PinnedOverflowRow>(barsAndList());
        if (chance_.oneIn(4)) dragged = reachable<WindowButton>(barsAndList());
        if (dragged) {
            drags.pull(*dragged);
        } else {
            drags.bring(sim::SimPasteboard::ofFile(anyPath()));
        }
        for (int i = chance_.below(4); i >= 0; --i) {
            const std::vector<ui::View*> roots = barsAndList();
            ui::View* over = reachable<PinnedAppButton>(roots);
            if (chance_.oneIn(3)) over = reachable<PinnedOverflowRow>(roots);
            if (chance_.oneIn(3)) over = reachable<PinnedOverflowButton>(roots);
            if (over) drags.over(*over, chance_.below(30) - 15);
            if (chance_.oneIn(4)) changePins();
            if (chance_.oneIn(8)) life_.changeDisplays();
            run(std::chrono::milliseconds(chance_.below(700)));
        }
        chance_.oneIn(3) ? drags.cancel() : static_cast<void>(drags.drop());
    }

    // --- Time ---
    void letTimePass() {
        if (chance_.oneIn(2)) return settle();
        run(std::chrono::milliseconds(chance_.below(chance_.oneIn(8) ? 20000 : 600)));
    }

private:
    void settle() { run({}); }
    void run(Duration time) { life_.run(time); }
    std::string anyPath() { return "/" + std::to_string(chance_.below(12)); }
    std::string anyApp() { return "com.example.app " + std::to_string(chance_.below(6)); }

    template <class E>
    void setAny(Setting<E>& setting) {
        setting.set(static_cast<E>(chance_.below(static_cast<int>(kRawStrings<E>.size()))));
    }
    void setAny(Setting<bool>& setting) { setting.set(chance_.oneIn(2)); }
    void setAny(Setting<int>& setting) { setting.set(chance_.below(20)); }
    void setAny(Setting<double>& setting) { setting.set(chance_.below(chance_.oneIn(2) ? 100 : 500)); }
    void setAny(Setting<std::string>& setting) { setting.set(chance_.oneIn(2) ? "11223344" : "no colour"); }
    void setAny(Setting<std::set<std::string>>& setting) {
        setting.set(chance_.oneIn(2) ? std::set<std::string>{} : std::set{anyApp()});
    }

    // --- The kinds of controls ---
    void operate(const ui::FormToggle& toggle) { toggle.set(!toggle.isOn()); }
    void operate(const ui::FormPicker& picker) {
        picker.select(static_cast<size_t>(chance_.below(static_cast<int>(picker.titles.size()))));
    }
    void operate(const ui::FormSlider& slider) {
        slider.set(slider.least + (slider.greatest - slider.least) * chance_.below(101) / 100);
    }
    void operate(const ui::FormStepper& stepper) {
        stepper.set(stepper.least + chance_.below(stepper.greatest - stepper.least + 1));
    }
    void operate(const ui::FormColorWell& well) { well.set({chance_.below(2) * 1.0, 0.5, 0.25, 1}); }
    void operate(const ui::FormList& list) {
        if (const auto row = chance_.any(list.rows())) list.press(row->id);
    }
    void operate(const ui::FormEntry& entry) { entry.take(chance_.oneIn(3) ? " " : anyApp()); }
    void operate(const ui::FormText& text) { text.text(); }
    void operate(const ui::FormLink& link) { link.open(); }
    void operate(const ui::FormButton& button) { button.press(); }
    void operate(const ui::FormPathButton& button) {
        if (button.kind != ui::PathKind::NewFile) button.chosen(anyPath());
    }

    BarDesktop& desktop_;
    DesktopLife& life_;
    Chance& chance_;
};

}  // namespace morvel
