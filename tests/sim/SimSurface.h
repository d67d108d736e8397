// A window that shows a view tree to a test instead of a person: it counts what would be painted and takes the
// pointer's doings.
#pragma once

#include <map>
#include <memory>

#include "Platform/MainLoop.h"
#include "UI/EventRouter.h"
#include "UI/View.h"
#include "UI/ViewHost.h"

namespace morvel::sim {

/// How often a view would have been painted again, by reason.
struct Repaints {
    int content = 0;
    int look = 0;
    int visibility = 0;
    int frame = 0;
    int all() const { return content + look + visibility + frame; }
};

/// Lays out in the turn after it was asked, as a host does before it draws the next frame.
class SimSurface : public ui::ViewHost {
public:
    SimSurface(MainLoop& mainLoop, ui::View& root) : mainLoop_(mainLoop), root_(root), router_(root) {}

    void viewAttached(ui::View& view) override;
    void viewWillDetach(ui::View& view) override;
    void viewChanged(ui::View& view, ui::ViewChange change) override;
    void layoutNeeded() override;

    void layoutNow();
    ui::View& root() { return root_; }
    ui::EventRouter& router() { return router_; }
    Repaints repaints(const ui::View& view) const;
    void clearRepaints() { repaints_.clear(); }
    size_t attachedViews() const { return attached_; }

private:
    MainLoop& mainLoop_;
    ui::View& root_;  // outlives us
    ui::EventRouter router_;
    std::map<const ui::View*, Repaints> repaints_;
    size_t attached_ = 0;
    bool layoutPending_ = false;
    std::shared_ptr<SimSurface*> self_ = std::make_shared<SimSurface*>(this);  // what posted work checks
};

}  // namespace morvel::sim
