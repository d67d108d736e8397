#include "App/SystemChanges.h"

#include <utility>
#include <vector>

namespace morvel {

namespace {

/// Set while a change is in force, taken away when the program undoes it at its end. Found at a launch, the program
/// did not get that far.
const std::string kInForceKey = "systemChangesInForce";

using Commands = std::vector<std::string>;

std::string shellLine(const Commands& commands) {
    std::string line;
    for (const std::string& command : commands) line += (line.empty() ? "" : "; ") + command;
    return line;
}

const Commands kDockApply = {
    "defaults write com.apple.dock autohide -bool true",
    "defaults write com.apple.dock autohide-delay -float 1000",
    "defaults write com.apple.dock autohide-time-modifier -float 0",
    "defaults write com.apple.dock tilesize -int 1",
    "defaults write com.apple.dock largesize -int 1",
    "defaults write com.apple.dock magnification -bool false",
    "defaults write com.apple.dock show-recents -bool false",
    "killall Dock",
};
const Commands kDockRevert = {
    "defaults write com.apple.dock autohide -bool false",
    "defaults delete com.apple.dock autohide-delay 2>/dev/null || true",
    "defaults delete com.apple.dock autohide-time-modifier 2>/dev/null || true",
    "defaults delete com.apple.dock tilesize 2>/dev/null || true",
    "defaults delete com.apple.dock largesize 2>/dev/null || true",
    "defaults delete com.apple.dock magnification 2>/dev/null || true",
    "defaults delete com.apple.dock show-recents 2>/dev/null || true",
    "killall Dock",
};
const Commands kSpacesApply = {
    "defaults write com.apple.dock workspaces-auto-swoosh -bool NO",
    "defaults write com.apple.dock mru-spaces -bool NO",
    "killall Dock",
};
const Commands kSpacesRevert = {
    "defaults delete com.apple.dock workspaces-auto-swoosh 2>/dev/null || true",
    "defaults delete com.apple.dock mru-spaces 2>/dev/null || true",
    "killall Dock",
};

const ui::Alert kDockOffer = {
    .message = "Hide and shrink the macOS Dock?",
    .informativeText =
        "Morvel replaces the Dock as your window-management surface. We recommend auto-hiding the Dock and shrinking "
        "its tile size so it stays out of the way. You can revert this from the menu-bar status item before quitting.",
    .buttons = {"Auto-hide & shrink Dock", "Skip", "Don't ask again"},
};
const ui::Alert kSpacesOffer = {
    .message = "Disable macOS automatic Space switching?",
    .informativeText =
        "macOS has two Spaces preferences that interfere with predictable Desktop swipes:\n\n"
        "• \"Automatically rearrange Spaces based on most recent use\" — breaks left/right navigation by reordering "
        "Desktops behind your back.\n\n"
        "• \"When switching to an application, switch to a Space with open windows for the application\" — when you "
        "swipe to an empty Desktop, macOS may forward you to a different Space chasing whichever app it picked to "
        "activate.\n\n"
        "We recommend turning both off for Morvel to behave reliably with multiple Desktops. You can revert this from "
        "the menu-bar status item later.",
    .buttons = {"Disable both", "Skip", "Don't ask again"},
};
enum OfferButton : size_t { kAccept, kSkip, kNeverAskAgain };

const ui::Alert kUndoOffer = {
    .message = "Keep the changed Dock settings?",
    .informativeText =
        "Morvel did not quit properly last time, so the Dock and Spaces settings that it had changed were not "
        "restored. Morvel can keep them changed while it runs, or restore them now.",
    .buttons = {"Keep", "Restore"},
};
constexpr size_t kRestore = 1;

}  // namespace

struct SystemChanges::Change {
    Setting<bool> SettingsStore::*isWanted;
    Setting<bool> SettingsStore::*wasAsked;
    const Commands& apply;
    const Commands& undo;
    const ui::Alert& question;
};

const SystemChanges::Change& SystemChanges::dock() {
    static const Change change{&SettingsStore::dockChangedByUs, &SettingsStore::firstRunCompleted, kDockApply,
                               kDockRevert, kDockOffer};
    return change;
}

const SystemChanges::Change& SystemChanges::spaces() {
    static const Change change{&SettingsStore::spacesPrefsChangedByUs, &SettingsStore::spacesPrefsAsked, kSpacesApply,
                               kSpacesRevert, kSpacesOffer};
    return change;
}

void SystemChanges::start() {
    follow(dock());
    follow(spaces());
}

void SystemChanges::follow(const Change& change) {
    const Setting<bool>& flag = settings_.*change.isWanted;
    // Saying the same once more must not restart the Dock.
    const auto flagSet = [this, &change, wasWanted = flag.value()](bool isWanted) mutable {
        if (std::exchange(wasWanted, isWanted) == isWanted) return;
        makeFollow(change);
        if (system_.changed) system_.changed();
    };
    subscriptions_.push_back(flag.subscribe(flagSet, Current::Skip));
}

void SystemChanges::makeOffers(std::function<void()> done) {
    askWhetherToUndo([this, done = std::move(done)] { offer(dock(), [this, done] { offer(spaces(), done); }); });
}

void SystemChanges::askWhetherToUndo(std::function<void()> next) {
    const bool wasLeftBehind = system_.defaults.object(kInForceKey).has_value();
    if (!wasLeftBehind || !isAnyWanted()) return next();
    ask(kUndoOffer, [this, next = std::move(next)](std::optional<size_t> button) {
        if (button == kRestore && settings_.dockChangedByUs.value()) settings_.dockChangedByUs.set(false);
        if (button == kRestore && settings_.spacesPrefsChangedByUs.value()) settings_.spacesPrefsChangedByUs.set(false);
        next();
    });
}

void SystemChanges::offer(const Change& change, std::function<void()> next) {
    Setting<bool>& isWanted = settings_.*change.isWanted;
    Setting<bool>& wasAsked = settings_.*change.wasAsked;
    if (wasAsked.value()) {
        if (isWanted.value()) makeFollow(change);
        return next();
    }
    ask(change.question, [this, &change, &isWanted, &wasAsked, next = std::move(next)](std::optional<size_t> button) {
        if (button == kAccept || button == kNeverAskAgain) wasAsked.set(true);
        // Whoever follows the flag makes the change, unless it was set in the settings of a run in which the question
        // was passed over.
        if (button == kAccept && isWanted.value()) makeFollow(change);
        if (button == kAccept) isWanted.set(true);
        next();
    });
}

void SystemChanges::ask(ui::Alert alert, std::function<void(std::optional<size_t>)> answered) {
    system_.toolkit.showAlert(std::move(alert), lifetime_.whileAlive(std::move(answered)));
}

void SystemChanges::revert() {
    if (settings_.dockChangedByUs.value()) run(shellLine(kDockRevert));
    if (settings_.spacesPrefsChangedByUs.value()) run(shellLine(kSpacesRevert));
    system_.defaults.remove(kInForceKey);
}

void SystemChanges::makeFollow(const Change& change) {
    const Setting<bool>& flag = settings_.*change.isWanted;
    if (flag.value()) {
        // The next launch notices a crash in the middle by these two. The flag itself is stored only once those who
        // follow it have been told.
        system_.defaults.set(kInForceKey, {true});
        system_.defaults.set(flag.key(), {true});
    }
    run(shellLine(flag.value() ? change.apply : change.undo));
    if (!isAnyWanted()) system_.defaults.remove(kInForceKey);
}

bool SystemChanges::isAnyWanted() const {
    return settings_.dockChangedByUs.value() || settings_.spacesPrefsChangedByUs.value();
}

void SystemChanges::run(const std::string& line) {
    const ShellResult result = system_.shell.run(line);
    if (result.exitStatus == 0) return;
    const std::string status = result.exitStatus ? "status " + std::to_string(*result.exitStatus) : "no status";
    system_.log.error("\"" + line + "\" ended with " + status + ": " + result.standardError);
}

}  // namespace morvel
