#include "Launcher/LauncherPopover.h"

#include <utility>

#include "Settings/BarEdge.h"

namespace morvel {

namespace {

constexpr Size kSize{320, 400};

}  // namespace

LauncherPopover::LauncherPopover(ui::Toolkit& toolkit, IconCache& icons, LauncherBindings bindings)
    : toolkit_(toolkit),
      icons_(icons),
      bindings_(std::move(bindings)),
      popover_(
          toolkit, content_, [this] { didClose(); }, ui::PopoverKind::Search) {}

void LauncherPopover::show(ui::View& anchor, MorvelEdge barEdge) {
    const bool wasShown = popover_.isShown();
    view_ = std::make_unique<LauncherView>(toolkit_, icons_);
    view_->onLaunch = lifetime_.whileAlive([this](const InstalledApp& app) { launch(app); });
    view_->onCancel = lifetime_.whileAlive([this] { close(); });
    content_.addSubview(*view_);
    // Before anything is painted, so that a list that is known already is there from the first frame on.
    if (bindings_.apps)
        bindings_.apps(
            view_->whileAlive([view = view_.get()](const std::vector<InstalledApp>& apps) { view->setApps(apps); }));
    if (!wasShown && bindings_.onWillShow) bindings_.onWillShow();
    popover_.show(anchor, popoverEdge(barEdge), kSize);
    outsidePresses_ = toolkit_.observeOutsidePresses([this] { close(); });
}

void LauncherPopover::launch(const InstalledApp& app) {
    const Lifetime::Watch watch = lifetime_.watch();
    if (bindings_.open) bindings_.open(app);
    if (watch.isAlive()) close();
}

void LauncherPopover::didClose() {
    outsidePresses_.reset();
    view_.reset();
    if (bindings_.onDidClose) bindings_.onDidClose();
}

}  // namespace morvel
