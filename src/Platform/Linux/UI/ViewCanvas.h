// The pixels of one window that shows a tree of views: knows what changed, paints that, and when.
#pragma once

#include <cairo.h>

#include <functional>
#include <vector>

#include "Platform/Linux/Icons/XImage.h"
#include "Platform/Linux/UI/Palette.h"
#include "Platform/Linux/UI/RoundedShapes.h"
#include "Platform/Linux/UI/TextLayouts.h"
#include "Platform/Linux/UI/ViewDamage.h"
#include "Platform/MainLoop.h"
#include "UI/ViewHost.h"

namespace morvel::x11 {

/// A part of a window's picture.
struct PaintedPart {
    PixelRect at;
    SurfacePtr pixels;
};

/// Main thread only. No picture is kept: the server has it, and any part of it can be painted anew. Changes of one turn
/// of the loop are one frame. One frame may be painted ahead of the display, so that what follows the first change at
/// once, like a window's icon, is seen with it; more wait for the display. No timer runs while nothing changes.
class ViewCanvas : public ui::ViewHost {
public:
    struct Delegate {
        std::function<void(cairo_t*)> paintBackdrop;  ///< below the views, in the window's pixels; may be empty
        std::function<void(const std::vector<PaintedPart>&)> present;  ///< a frame: what is new
        std::function<void()> laidOut;                                 ///< views may have moved; before painting
        std::function<void()> changedTexts;  ///< something that is told about the views changed
        std::function<void(ui::View&)> willDetach;
    };

    /// All outlive the canvas. The tree is shown from now on until the canvas dies.
    ViewCanvas(MainLoop& mainLoop, const Palette& palette, TextLayouts& layouts, ui::View& root, Delegate delegate);
    ~ViewCanvas() override;
    ViewCanvas(const ViewCanvas&) = delete;
    ViewCanvas& operator=(const ViewCanvas&) = delete;

    /// The window's size and where in it the root view's corner lies, in pixels.
    void setGeometry(int width, int height, Point<ViewSpace> origin);
    /// Whether what is painted is blended over what is behind the window.
    void setComposited(bool isComposited);
    /// Everything looks different now: the colours, or the backdrop.
    void damageAll();
    /// The server has lost this part.
    void damage(const PixelRect& part);

    /// Lets go of the tree; nothing is painted any more.
    void release();

    /// Lays out, paints and presents what changed, now.
    void paintNow();
    /// Lays out and paints the whole window for whoever shows it; null when nothing can be shown.
    SurfacePtr picture();
    /// How the views look now in this part; null when there is not enough memory for it.
    SurfacePtr painted(const PixelRect& part);

    ui::View& root() const { return root_; }
    Point<ViewSpace> origin() const { return origin_; }
    PixelRect bounds() const { return {0, 0, width_, height_}; }

    void viewAttached(ui::View& view) override;
    void viewWillDetach(ui::View& view) override;
    void viewChanged(ui::View& view, ui::ViewChange change) override;
    void layoutNeeded() override { schedule(); }

private:
    void schedule();
    /// False when there is nothing to show afterwards.
    bool layOut();
    void countFrame();
    void tellTexts();

    MainLoop& mainLoop_;
    const Palette& palette_;
    TextLayouts& layouts_;
    ui::View& root_;
    Delegate delegate_;
    ViewDamage damage_;
    RoundedShapes shapes_;
    int width_ = 0;
    int height_ = 0;
    Point<ViewSpace> origin_;
    bool isComposited_ = false;
    bool isReleased_ = false;
    bool textsChanged_ = true;
    Instant filledUntil_{};  // the display's time for which there are frames
    Timer frame_;            // armed while something waits to be painted
};

}  // namespace morvel::x11
