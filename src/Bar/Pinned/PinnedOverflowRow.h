// One pinned item's row in the list of those that have no place on the bar.
#pragma once

#include "Bar/Pinned/PinnedItemView.h"
#include "UI/Label.h"

namespace morvel {

class PinnedOverflowRow : public PinnedItemView {
public:
    static constexpr double kHeight = 32;  ///< in points

    /// `process` is one that runs the application, if any does.
    PinnedOverflowRow(ButtonServices services, const PinnedItem& item, ProcessID process, PinnedItemActions actions);

    Size intrinsicSize() const override { return {0, kHeight}; }  // as wide as the list

protected:
    void applyAppearance() override;
    void layout() override;

private:
    ui::Label titleLabel_;
};

}  // namespace morvel
