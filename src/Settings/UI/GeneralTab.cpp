#include <memory>

#include "Platform/AtomicFile.h"
#include "Settings/SettingsFile.h"
#include "Settings/UI/Bindings.h"
#include "Settings/UI/SettingsTabs.h"

namespace morvel::tabs {

namespace {

using namespace bindings;

/// A file with every setting has a few kilobytes; a long list of hidden applications is still far below this.
constexpr size_t kLargestFile = 1 << 20;

ui::FormSection barElements(SettingsStore& settings, const Features& features) {
    ui::FormSection section{"Bar Elements", {toggle("Show Start button", settings.showStartButton)}};
    if (features.hasMenuBar)
        section.controls.push_back(
            toggle("Show Apple menu button", settings.showAppleMenuButton,
                   "Apple menu opens the macOS Apple menu of the frontmost app via Accessibility."));
    return section;
}

std::string exportTo(SettingsStore& settings, const std::string& path) {
    return replaceFile(path, SettingsFile::exported(settings)) ? "Settings exported."
                                                               : "The file could not be written.";
}

std::string importFrom(SettingsStore& settings, const std::string& path) {
    const auto text = readFile(path, kLargestFile);
    if (!text) return "The file could not be read.";
    return SettingsFile::imported(settings, *text) ? "Settings imported."
                                                   : "The file does not hold valid settings. Nothing was changed.";
}

ui::FormSection settingsFile(SettingsStore& settings, const std::function<void()>& changed) {
    const auto note = std::make_shared<std::string>();  // what the last attempt came to
    const auto tell = [note, changed](std::string result) {
        *note = std::move(result);
        changed();
    };
    const auto exported = [&settings, tell](const std::string& path) { tell(exportTo(settings, path)); };
    const auto imported = [&settings, tell](const std::string& path) { tell(importFrom(settings, path)); };
    return {
        "Settings File",
        {{{},
          "Saves all settings, without the pinned items.",
          ui::FormPathButton{"Export Settings…", ui::PathKind::NewFile, "Export Settings", "Morvel Settings.json",
                             exported}},
         {{}, {}, ui::FormPathButton{"Import Settings…", ui::PathKind::ExistingFile, "Import Settings", {}, imported}},
         visibleWhen([note] { return !note->empty(); }, {{}, {}, ui::FormText{[note] { return *note; }}})}};
}

}  // namespace

ui::FormTab general(const SettingsSources& sources, std::function<void()> changed) {
    SettingsStore& settings = sources.settings;
    return {"general",
            "General",
            {{"Bar Position", {picker("Edge", settings.barEdge, {"Bottom", "Top"})}},
             barElements(settings, sources.features),
             {"Startup", {toggle("Start at login", settings.startAtLogin)}},
             settingsFile(settings, changed)}};
}

}  // namespace morvel::tabs
