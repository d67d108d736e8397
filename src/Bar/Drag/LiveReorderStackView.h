// A row or column of buttons that make room while one of them, or something from elsewhere, is dragged over it.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "UI/LayoutAnimator.h"
#include "UI/StackView.h"

namespace morvel {

/// Main thread only. What the strip shows may change in mid-drag; whoever changes it calls `contentsChanged`.
class LiveReorderStackView : public ui::StackView {
public:
    LiveReorderStackView(MainLoop& mainLoop, Axis axis, double spacing);

    ui::View* draggingSource() const { return draggingSource_; }
    bool isForeignSource() const { return foreignSource_ != nullptr; }

    ui::DragOperation draggingEntered(const ui::DragInfo& info) override;
    ui::DragOperation draggingUpdated(const ui::DragInfo& info) override;
    /// Puts an own source back, and takes a foreign one's placeholder away.
    void draggingExited() override;
    void draggingEnded() override { draggingExited(); }

    /// The arranged views are those of a new state: the source stays where it was dragged to, if it is still there.
    void contentsChanged();

protected:
    /// The arranged views that take part; by default all. An insertion index counts all arranged ones.
    virtual std::vector<ui::View*> reorderableSubviews() const { return arrangedSubviews(); }
    /// Where the first of them stands, or would stand; nothing is dropped before it.
    virtual size_t firstReorderableIndex() const { return 0; }
    /// The own button that is dragged; null when it is something else.
    virtual ui::View* resolveSource(const ui::DragPasteboard& pasteboard) = 0;
    /// A placeholder for something from outside that can be dropped here, or null.
    virtual std::unique_ptr<ui::View> resolveForeignSource(const ui::DragPasteboard& pasteboard) = 0;
    /// After a change of the contents: the own button that is dragged, as it is now; null when it is gone.
    virtual ui::View* currentSource() = 0;
    /// Nothing is dragged here any more.
    virtual void sourceCleared() {}

    /// Chooses what is dragged, once.
    void beginIfNeeded(const ui::DragInfo& info);
    /// Where the source was dragged to, among the arranged views without it; nothing when there is none. Nothing is
    /// dragged here afterwards.
    std::optional<size_t> finishDrag();
    /// Where the source would stand if it were dropped at the point, among the arranged views without it.
    size_t insertionIndex(Point<ViewSpace> inRoot) const;

    void layout() override;

private:
    std::optional<size_t> indexOfSource() const;
    void moveSource(size_t index);
    void clear();

    ui::LayoutAnimator animator_;
    Duration nextLayout_{};  // how long the next layout's moves take
    ui::View* draggingSource_ = nullptr;
    std::optional<size_t> originalIndex_;
    size_t draggedTo_ = 0;
    std::unique_ptr<ui::View> foreignSource_;  // the source, when it is a placeholder
};

}  // namespace morvel
