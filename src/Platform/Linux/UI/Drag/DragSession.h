// A drag of ours, from the moment a view is dragged away to its end: the grabs, the picture, and where it goes.
#pragma once

#include <functional>
#include <optional>

#include "Platform/Linux/UI/Drag/DragContents.h"
#include "Platform/Linux/UI/Drag/DragImageWindow.h"
#include "Platform/Linux/UI/Drag/DragTracker.h"
#include "Platform/Linux/UI/Drag/XdndSource.h"
#include "Platform/Linux/UI/MenuKeys.h"
#include "Util/Lifetime.h"

namespace morvel::x11 {

/// Main thread only. Has the pointer for itself from the start, and the keyboard where nobody else has it. Windows of
/// ours are told about it directly, those of others by the protocol.
class DragSession {
public:
    /// Called once, when the grabs are released, with what the destination did. The session must not be destroyed
    /// inside the call.
    using Ended = std::function<void(ui::DragOperation)>;

    /// The context outlives the session; window and view need not.
    DragSession(ToolkitContext& context, ViewWindow& window, const ui::View& view, ui::DragItem item, Ended ended);
    ~DragSession();
    DragSession(const DragSession&) = delete;
    DragSession& operator=(const DragSession&) = delete;

    void cancel();

private:
    enum class State { Dragging, Dropped, Over };

    /// An unseen window that holds the grabs and owns what is dragged, whatever happens to the bars meanwhile.
    class Holder {
    public:
        explicit Holder(XConnection& connection);
        ~Holder();
        xcb_window_t id() const { return id_; }

    private:
        XConnection& connection_;
        const xcb_window_t id_;
        Subscription ownership_;
    };

    void grab();
    void observe();
    void follow();
    void drop();
    void end(ui::DragOperation operation);
    void release();
    ViewWindow* windowAt(Point<RootSpace> location) const;

    ToolkitContext& context_;
    const DragContents contents_;
    const Point<RootSpace> start_;
    Ended ended_;
    State state_ = State::Dragging;
    std::optional<Point<RootSpace>> moved_;  // where nobody has been told yet that it is
    MenuKeys keys_;
    Holder holder_;
    DragImageWindow image_;
    XdndSource others_;
    DragTracker tracker_;
    Subscriptions events_;
    Lifetime lifetime_;
};

}  // namespace morvel::x11
