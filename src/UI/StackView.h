// Lays out views in a row or a column, each at its intrinsic size, with the same space between neighbours.
#pragma once

#include <optional>
#include <vector>

#include "UI/View.h"

namespace morvel::ui {

/// Hidden views take no room. In a row, views are centred vertically and never higher than the row; in a column they
/// are as wide as the column. What does not fit lies outside the bounds.
class StackView : public View {
public:
    enum class Axis { Horizontal, Vertical };

    explicit StackView(Axis axis, double spacing = 0) : axis_(axis), spacing_(spacing) {}

    Axis axis() const { return axis_; }
    double spacing() const { return spacing_; }
    /// Room before the first and after the last view, in points along the axis.
    void setInsets(double leading, double trailing);

    /// A part of the axis in which nothing is to stand, in points of the stack's space.
    struct Gap {
        double start = 0;
        double end = 0;
        bool operator==(const Gap&) const = default;
    };
    /// What would reach into the gap stands after it, and so does all that follows: the stack is longer by that.
    void setGap(const std::optional<Gap>& gap);

    /// In order from the leading end. Exactly the subviews.
    const std::vector<View*>& arrangedSubviews() const { return subviews(); }
    void addArrangedSubview(View& view) { addSubview(view); }
    /// Moves or inserts; the index is bounded by the number of the other views.
    void insertArrangedSubview(View& view, size_t index) { insertSubview(view, index); }

    /// Where the layout puts the shown arranged views, in their order, in the stack's space. Their frames differ while
    /// layout is due or they are on their way.
    std::vector<Rect<ViewSpace>> arrangedFrames() const;

    Size intrinsicSize() const override;

protected:
    void layout() override;

private:
    /// Where a view of this length stands that would stand at the position.
    double clearOfGap(double position, double length) const;

    Axis axis_;
    double spacing_;
    double leading_ = 0;
    double trailing_ = 0;
    std::optional<Gap> gap_;
};

}  // namespace morvel::ui
