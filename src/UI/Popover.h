// A small window with an arrow that shows one view tree beside an anchor view.
#pragma once

#include <functional>
#include <memory>

#include "UI/Toolkit.h"
#include "UI/View.h"

namespace morvel::ui {

class Popover {
public:
    /// The content outlives the popover and is resized to what is shown. `closed` is called after each closing.
    Popover(Toolkit& toolkit, View& content, std::function<void()> closed, PopoverKind kind = PopoverKind::List);

    bool isShown() const { return shown_; }
    /// Shows it beside `anchor`, on its `edge` side. Shown already, it moves there.
    void show(View& anchor, Edge edge, Size contentSize);
    void resize(Size contentSize);
    void close();

private:
    void didClose();

    View& content_;
    std::function<void()> closed_;
    bool shown_ = false;
    std::unique_ptr<PopoverPeer> peer_;  // last, so that it cannot call a half-dead object
};

}  // namespace morvel::ui
