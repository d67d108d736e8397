// A drag of another program over our windows, from its first entering to its end.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "Platform/Linux/UI/Drag/AtomNames.h"
#include "Platform/Linux/UI/Drag/DragContents.h"
#include "Platform/Linux/UI/Drag/DragTracker.h"
#include "Platform/Linux/UI/Drag/SelectionFetch.h"
#include "Platform/Linux/UI/Drag/XdndMessages.h"

namespace morvel::x11 {

/// Main thread only. It ends when it is dropped, or when its source dies; after it has left our windows, when all
/// buttons are released; and when a source says nothing more although they are. It never waits for the source.
class ForeignDrag {
public:
    /// All outlive it. `over` is called once, when it has ended.
    ForeignDrag(ToolkitContext& context, AtomNames& names, xcb_window_t source, std::function<void()> over);
    ForeignDrag(const ForeignDrag&) = delete;
    ForeignDrag& operator=(const ForeignDrag&) = delete;

    xcb_window_t source() const { return source_; }
    bool isDropping() const { return state_ == State::Dropping; }
    bool isOver() const { return state_ == State::Over; }

    // --- What the source says; `target` is the window of ours that it says it to. ---
    void entered(xcb_window_t target, const XdndEnter& message);
    /// Answered when all that has arrived is handled: of several positions, only the last one matters.
    void positioned(xcb_window_t target, const XdndPosition& message);
    void left(xcb_window_t target);
    void dropped(xcb_window_t target, const XdndDrop& message);

    /// Ends it, wherever it is.
    void giveUp();

private:
    enum class State { Inside, Away, Dropping, Over };

    void askForTypes(const XdndEnter& message);
    void typesAnswered(const XdndEnter& message, const xcb_get_property_reply_t* list);
    void namesResolved(AtomNames::Names types);
    void answerPosition();
    void sendStatus(ui::DragOperation operation, xcb_atom_t wished);
    xcb_atom_t actionFor(ui::DragOperation operation, xcb_atom_t wished) const;
    void goAway();
    void fetchNext();
    void perform();
    void finish(ui::DragOperation done);
    void end();
    void lookAtButtons();
    void buttonsAnswered(const xcb_query_pointer_reply_t* pointer);

    ToolkitContext& context_;
    AtomNames& names_;
    const xcb_window_t source_;
    const std::function<void()> over_;
    State state_ = State::Inside;
    xcb_window_t target_ = 0;
    std::optional<DragContents> contents_;  // no value: not even the types are known yet
    AtomNames::Names types_;
    std::optional<XdndPosition> unanswered_;
    ui::DragOperation operation_ = ui::DragOperation::None;  // what was answered last
    xcb_atom_t wished_ = 0;                                  // the action of that position
    int silentLooks_ = 0;

    XdndDrop drop_;
    std::vector<std::string> toFetch_;
    std::unique_ptr<SelectionFetch> fetch_;

    Timer watch_, deadline_;
    Subscription sourceEvents_, targetEvents_, batchEnd_;
    DragTracker tracker_;
    std::optional<Lifetime> entering_;  // of the newest one: answers about an earlier one count no more
    Lifetime lifetime_;
};

}  // namespace morvel::x11
