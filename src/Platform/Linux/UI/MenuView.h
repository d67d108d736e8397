// One level of a menu as a tree of views, with one of its items highlighted.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "UI/Label.h"
#include "UI/Menu.h"
#include "UI/Toolkit.h"
#include "UI/View.h"

namespace morvel::x11 {

enum class Direction { Up, Down };

/// Whether an item can be chosen or opened; separators and items without action cannot.
bool isSelectable(const ui::MenuItem& item);

/// The next selectable item from `from` in the direction, around the ends; without `from`, the first or last one.
/// Nothing when no item is selectable.
std::optional<size_t> nextSelectable(const ui::Menu& menu, std::optional<size_t> from, Direction direction);

class MenuView : public ui::View {
public:
    /// The menu's items and the toolkit outlive the view.
    MenuView(ui::Toolkit& toolkit, const ui::Menu& menu);
    ~MenuView() override;

    const ui::Menu& menu() const { return menu_; }
    Size intrinsicSize() const override { return size_; }

    /// The item at the height, selectable or not.
    std::optional<size_t> itemAt(double y) const;
    /// In the view's space, as wide as the view.
    Rect<ViewSpace> itemFrame(size_t index) const;
    /// How far the first item lies below the view's top.
    static double topPadding();

    std::optional<size_t> selected() const { return selected_; }
    /// Items that are not selectable clear the selection.
    void select(std::optional<size_t> index);

protected:
    void layout() override;

private:
    class Row;

    const ui::Menu& menu_;
    std::vector<std::unique_ptr<Row>> rows_;
    Size size_;
    std::optional<size_t> selected_;
};

}  // namespace morvel::x11
