// A rectangle of the user interface: a place in a tree, a look, a layout, and handlers for the pointer.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "UI/Color.h"
#include "UI/Drag.h"
#include "UI/Event.h"
#include "UI/ViewHost.h"
#include "Util/Geometry.h"

namespace morvel::ui {

/// What a view is to a person who does not see it. None: a mere part of what contains it.
enum class AccessibilityRole { None, Button, List, ListItem };

/// Views link to each other but do not own each other: whoever made a view owns it, and a view that is destroyed
/// leaves the tree by itself. Main thread only.
class View {
public:
    /// What a host needs to know to show a view; each kind but Plain is the class of that name.
    enum class Kind { Plain, Label, Image, VisualEffect, TextField, Scroll };

    View() = default;
    virtual ~View();
    View(const View&) = delete;
    View& operator=(const View&) = delete;

    virtual Kind kind() const { return Kind::Plain; }

    // --- The tree. Subviews are in drawing order, the last one in front. ---
    View* parent() const { return parent_; }
    const std::vector<View*>& subviews() const { return subviews_; }
    void addSubview(View& view) { insertSubview(view, subviews_.size()); }
    /// Takes the view from where it is; `index` is bounded by the number of the other subviews.
    void insertSubview(View& view, size_t index);
    void removeFromParent();
    bool isDescendantOf(const View& ancestor) const;

    // --- Geometry, in the parent's space. ---
    const Rect<ViewSpace>& frame() const { return frame_; }
    void setFrame(const Rect<ViewSpace>& frame);
    Rect<ViewSpace> bounds() const { return {0, 0, frame_.width, frame_.height}; }
    /// The root's own origin is not part of it: a root's bounds start at its window's corner.
    Rect<ViewSpace> boundsInRoot() const;
    Point<ViewSpace> fromRoot(Point<ViewSpace> inRoot) const;

    // --- Look. Each setter does nothing when the value is the same. ---
    bool isHidden() const { return hidden_; }
    void setHidden(bool hidden);
    double alpha() const { return alpha_; }
    void setAlpha(double alpha);
    const Color& background() const { return background_; }
    void setBackground(const Color& color);
    double cornerRadius() const { return cornerRadius_; }
    void setCornerRadius(double radius);
    double borderWidth() const { return borderWidth_; }
    const Color& borderColor() const { return borderColor_; }
    void setBorder(double width, const Color& color);
    /// Subviews show only inside the bounds.
    bool clipsToBounds() const { return clips_; }
    void setClipsToBounds(bool clips);

    // --- Texts for people. ---
    const std::string& tooltip() const { return tooltip_; }
    void setTooltip(std::string text);
    const std::string& accessibilityLabel() const { return accessibilityLabel_; }
    void setAccessibilityLabel(std::string text);
    virtual AccessibilityRole accessibilityRole() const { return AccessibilityRole::None; }
    /// Does what a click does, without a pointer. Whether there was something to do. May destroy the view.
    virtual bool accessibilityPress() { return false; }

    // --- Layout ---
    /// The size the view wants, in points.
    virtual Size intrinsicSize() const { return {}; }
    /// Asks for layout of this view (and so of what it contains) before it is shown next.
    void setNeedsLayout();
    /// The view wants another size than before: its parent must lay out again.
    void intrinsicSizeChanged();
    /// Lays out what asked for it in this view and below, now.
    void layoutIfNeeded();

    // --- The pointer. Handlers may destroy the view. ---
    /// Whether presses that no subview takes are this view's.
    virtual bool acceptsMouse() const { return false; }
    virtual void mouseDown(const MouseEvent&) {}
    virtual void mouseDragged(const MouseEvent&) {}
    virtual void mouseUp(const MouseEvent&) {}
    virtual void rightMouseDown(const MouseEvent&) {}
    /// Whether the view used it; one that does not leaves it to the view around it.
    virtual bool scrollWheel(const WheelEvent&) { return false; }
    /// Whether the view wants to be told when the pointer enters and leaves its bounds.
    virtual bool tracksHover() const { return false; }
    virtual void mouseEntered(const MouseEvent&) {}
    virtual void mouseExited() {}
    /// Whether a view that tracks hover wants to be told of each move of the pointer inside its bounds as well.
    virtual bool tracksMoves() const { return false; }
    virtual void mouseMoved(const MouseEvent&) {}
    /// The deepest visible view under the point (in this view's space) that accepts the mouse.
    View* hitTest(Point<ViewSpace> point);

    // --- Drags over it. The deepest visible view that accepts what is dragged is told. Handlers may destroy it. ---
    /// Whether the view is a destination for what is dragged, wherever on it.
    virtual bool acceptsDrag(const DragPasteboard&) const { return false; }
    virtual DragOperation draggingEntered(const DragInfo&) { return DragOperation::None; }
    virtual DragOperation draggingUpdated(const DragInfo& info) { return draggingEntered(info); }
    virtual void draggingExited() {}
    /// The drag is over, wherever it was dropped; told to the view it was over last.
    virtual void draggingEnded() {}
    /// Dropped here. Whether the drop was taken.
    virtual bool performDragOperation(const DragInfo&) { return false; }
    /// Told to a window's root alone, whatever views the drag was or was not over: it came into the window, left it,
    /// and is over wherever it was dropped. The end may be told without a drag having been here.
    virtual void windowDragEntered(const DragInfo&) {}
    virtual void windowDragExited() {}
    virtual void windowDragEnded() {}
    /// The deepest visible view under the point (in this view's space) that accepts what is dragged.
    View* dragTarget(Point<ViewSpace> point, const DragPasteboard& pasteboard);

    // --- For hosts ---
    ViewHost* host() const { return host_; }
    /// Shows the tree of this view, which must have no parent, in `host`; null takes it away.
    void setHost(ViewHost* host);
    ViewPeer* peer() const { return peer_.get(); }
    void setPeer(std::unique_ptr<ViewPeer> peer) { peer_ = std::move(peer); }

protected:
    /// Places the subviews inside the bounds. Called by `layoutIfNeeded`.
    virtual void layout() {}
    void changed(ViewChange change);

private:
    void attach(ViewHost* host);
    void detach();

    View* parent_ = nullptr;
    std::vector<View*> subviews_;
    ViewHost* host_ = nullptr;  // the same for a whole tree; outlives our being in it
    std::unique_ptr<ViewPeer> peer_;
    Rect<ViewSpace> frame_;
    bool hidden_ = false;
    bool clips_ = false;
    double alpha_ = 1;
    Color background_;
    double cornerRadius_ = 0;
    double borderWidth_ = 0;
    Color borderColor_;
    std::string tooltip_;
    std::string accessibilityLabel_;
    bool needsLayout_ = true;
    bool descendantNeedsLayout_ = true;
};

}  // namespace morvel::ui
