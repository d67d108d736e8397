// Receives what other programs drag over our windows.
#pragma once

#include <memory>

#include "Platform/Linux/UI/Drag/ForeignDrag.h"

namespace morvel::x11 {

/// Main thread only. There is one pointer, so one drag at a time: who enters ends what was before, also an own drop
/// whose contents have not come yet. Messages that do not belong to it, or come from nobody, are ignored.
class XdndTarget {
public:
    /// The context outlives it.
    explicit XdndTarget(ToolkitContext& context);

private:
    void handle(const xcb_client_message_event_t& message);
    void entered(xcb_window_t target, const XdndEnter& message);

    ToolkitContext& context_;
    AtomNames names_;
    std::unique_ptr<ForeignDrag> drag_;
    Timer burial_;
    Subscription messages_;
};

}  // namespace morvel::x11
