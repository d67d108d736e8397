#include "Settings/UI/Bindings.h"
#include "Settings/UI/RelativeTime.h"
#include "Settings/UI/SettingsTabs.h"
#include "Util/WebAddress.h"

namespace morvel::tabs {

namespace {

using namespace bindings;

/// The program's web site, which also announces its releases.
constexpr const char* kWebSite = MORVEL_UPDATE_HOST;

/// "2.0.0 (431)": the build tells apart what has the same version.
std::string nameOf(const UpdateState& release) {
    return release.build.empty() ? release.version : release.version + " (" + release.build + ")";
}

std::string statusText(const UpdateState& state) {
    switch (state.kind) {
        case UpdateState::Kind::Idle:
            break;
        case UpdateState::Kind::Checking:
            return "Checking for updates…";
        case UpdateState::Kind::UpToDate:
            return "You're up to date.";
        case UpdateState::Kind::Available:
            return state.isSkipped ? "Version " + nameOf(state) + " is skipped."
                                   : "Update available: version " + nameOf(state);
        case UpdateState::Kind::Failed:
            return "Couldn't reach update server.";
    }
    return {};
}

std::string lastChecked(const SettingsStore& settings, Date now) {
    const auto& at = settings.updaterLastCheckedAt.value();
    return "Last checked: " + (at ? relativeTime(*at, now) : "never");
}

ui::FormControl text(std::function<std::string()> words) {
    return {{}, {}, ui::FormText{std::move(words)}};
}

ui::FormSection updates(const SettingsSources& sources) {
    const auto state = sources.updates.state;
    const auto hasOffer = [state] { return state().kind == UpdateState::Kind::Available; };
    const auto canSkip = [state, hasOffer] { return hasOffer() && !state().isSkipped; };
    const auto canCheck = [state] { return state().kind != UpdateState::Kind::Checking; };
    // A page that would not be opened has no link.
    const auto link = [&sources, hasOffer](std::string title, std::function<std::string()> page) {
        return visibleWhen([hasOffer, page] { return hasOffer() && isSecureWebAddress(page()); },
                           {{}, {}, ui::FormLink{std::move(title), [open = sources.openPage, page] { open(page()); }}});
    };
    return {"Updates",
            {visibleWhen([state] { return state().kind != UpdateState::Kind::Idle; },
                         text([state] { return statusText(state()); })),
             link("Download…", [state] { return state().downloadPage; }),
             link("Release notes", [state] { return state().notesPage; }),
             visibleWhen(canSkip, {{}, {}, ui::FormButton{"Skip this version", sources.updates.skip}}),
             enabledWhen(canCheck, {{}, {}, ui::FormButton{"Check Now", sources.updates.checkNow}}),
             text([&settings = sources.settings, now = sources.now] { return lastChecked(settings, now()); }),
             toggle("Check for updates automatically", sources.settings.updaterAutoCheckEnabled)}};
}

}  // namespace

ui::FormTab about(const SettingsSources& sources) {
    ui::FormTab tab{"about",
                    "About",
                    {{"Morvel",
                      {text([] { return std::string("Version ") + MORVEL_VERSION; }),
                       {{}, {}, ui::FormLink{kWebSite, [open = sources.openPage] {
                                                 open(std::string("https://") + kWebSite);
                                             }}}}}}};
    if (sources.updates.state) tab.sections.push_back(updates(sources));
    return tab;
}

}  // namespace morvel::tabs
