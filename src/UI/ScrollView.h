// Shows as much of a high view as there is room for, and the rest when it is scrolled.
#pragma once

#include <functional>
#include <optional>

#include "UI/View.h"

namespace morvel::ui {

/// The document is as wide as the scroll view and as high as its intrinsic size says. Its frame is where it is shown:
/// the higher it has been scrolled, the more of it lies above the bounds.
class ScrollView : public View {
public:
    /// The document outlives the view.
    explicit ScrollView(View& document);

    Kind kind() const override { return Kind::Scroll; }
    View& document() const { return document_; }

    /// How much of the document lies above the bounds, in points.
    double offset() const { return offset_; }
    /// Bounded to what there is.
    void scrollTo(double offset);
    /// Scrolls as little as it takes to show the rows of the document from `top` to `bottom`.
    void scrollToVisible(double top, double bottom);
    /// The part of the document that is to be seen, in the document's space.
    Rect<ViewSpace> visibleRect() const { return {0, offset_, frame().width, frame().height}; }
    /// The visible part is another one, or the document's height is.
    std::function<void()> onScroll;

    bool scrollWheel(const WheelEvent& event) override;

    // --- For hosts that have scroll views of their own ---
    /// From now on the host handles the wheel and shows where one is; it tells `scrolled`.
    void leaveScrollingToHost();
    void scrolled(double offset) { scrollTo(offset); }

protected:
    void layout() override;

private:
    /// The bar at the trailing edge that shows where one is, and by which the document can be dragged.
    class Scroller : public View {
    public:
        explicit Scroller(ScrollView& view) : view_(view) {}
        bool acceptsMouse() const override { return true; }
        bool tracksHover() const override { return true; }
        void mouseDown(const MouseEvent& event) override;
        void mouseDragged(const MouseEvent& event) override;
        void mouseUp(const MouseEvent&) override;
        void mouseEntered(const MouseEvent&) override;
        void mouseExited() override;
        void show();

    private:
        ScrollView& view_;  // owns us
        bool isHovered_ = false;
        struct Hold {
            double pointer, offset;  // when it was pressed
        };
        std::optional<Hold> held_;
    };

    double documentHeight() const { return document_.intrinsicSize().height; }
    double maxOffset() const;
    void apply();

    View& document_;
    Scroller scroller_{*this};
    double offset_ = 0;
    bool isHostScrolling_ = false;
};

}  // namespace morvel::ui
