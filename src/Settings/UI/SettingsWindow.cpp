#include "Settings/UI/SettingsWindow.h"

#include "Settings/UI/SettingsTabs.h"

namespace morvel {

SettingsWindow::SettingsWindow(ui::Toolkit& toolkit, MainLoop& mainLoop, SettingsSources sources)
    : toolkit_(toolkit), mainLoop_(mainLoop), sources_(std::move(sources)) {}

void SettingsWindow::show() {
    if (!window_) {
        window_ = toolkit_.makeFormWindow(form());
        if (!window_) return;
        observeChanges();
    }
    window_->refresh();  // time has passed: what is said of it is other than before
    window_->bringToFront();
}

ui::Form SettingsWindow::form() {
    return {"Morvel Settings",
            kContentSize,
            "Search settings",
            "No settings found.",
            {tabs::general(sources_, [this] { refreshSoon(); }), tabs::appearance(sources_), tabs::behavior(sources_),
             tabs::lists(sources_), tabs::about(sources_)}};
}

void SettingsWindow::observeChanges() {
    const auto observe = [this](const auto& setting) {
        subscriptions_.push_back(setting.subscribe([this](const auto&) { refreshSoon(); }, Current::Skip));
    };
    SettingsStore& settings = sources_.settings;
    settings.forEachChoice(observe);
    observe(settings.dockChangedByUs);
    observe(settings.spacesPrefsChangedByUs);
    observe(settings.updaterLastCheckedAt);
    observe(settings.updaterSkippedVersion);
    for (const auto& observeSource :
         {sources_.pinnedItems.observe, sources_.clampingBlacklist.observe, sources_.updates.observe})
        if (observeSource) subscriptions_.push_back(observeSource([this] { refreshSoon(); }));
}

void SettingsWindow::refreshSoon() {
    refresh_ = mainLoop_.after(Duration{}, [this] { window_->refresh(); });
}

}  // namespace morvel
