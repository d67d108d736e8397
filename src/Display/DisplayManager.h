// Keeps one bar on every connected display, matched to its geometry, its Space and the geometry settings.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Bar/BarServices.h"
#include "Bar/MenuBar/MenuBar.h"
#include "Bar/MorvelController.h"
#include "Display/SpaceEvents.h"
#include "Platform/WindowServer.h"
#include "Platform/Workspace.h"
#include "Util/Lifetime.h"

namespace morvel {

/// Main thread only. Created and started once.
class DisplayManager {
public:
    /// All outlive the manager.
    DisplayManager(const BarServices& services, WindowServer& windowServer, Workspace& workspace,
                   Accessibility& accessibility);

    void start();

    /// The screens that have a display identifier, in the system's order.
    std::vector<Screen> connectedScreens() const;
    std::vector<OtherScreen> otherScreensExcluding(DisplayID id) const;

    /// Brings the bars in line with the screens and Spaces as they are now.
    void rebuild();
    /// Makes every bar anew.
    void rebuildAll();
    /// Computes the gaps of the compact top bars anew and moves the bars, without making anything anew.
    void refreshCompactTop();

    const std::map<DisplayID, std::unique_ptr<MorvelController>>& controllers() const { return controllers_; }

private:
    enum class Missing { Keep, TearDown };

    void reconcile(Missing missing);
    std::unique_ptr<MorvelController> takeControllerOf(const std::string& uuid, const std::vector<Screen>& connected);
    void screensChanged();
    void spaceChanged();
    void menuBarChanged();
    void installWorkspaceObservers();
    void observeSettings();
    void rebuildAllNextTurn();

    BarServices services_;
    Workspace& workspace_;
    SpaceEvents spaceEvents_;
    MenuBar menuBar_;  // before the controllers
    std::map<DisplayID, std::unique_ptr<MorvelController>> controllers_;
    std::map<DisplayID, std::string> uuids_;  // of the displays that have a controller
    bool isRebuildPosted_ = false;
    Timer screensSettled_;
    Timer spaceSettled_;
    Timer menuBarSettled_;
    Subscriptions subscriptions_;
    Lifetime lifetime_;
};

}  // namespace morvel
