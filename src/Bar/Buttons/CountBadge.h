// The small pill that says how many windows a grouped button stands for.
#pragma once

#include "UI/Label.h"

namespace morvel {

class CountBadge : public ui::View {
public:
    /// The toolkit outlives the badge.
    explicit CountBadge(ui::Toolkit& toolkit);

    /// Hidden below two.
    void setCount(size_t count);
    void setColor(const ui::Color& color) { setBackground(color); }
    const std::string& text() const { return countLabel_.text(); }

    /// A circle for one digit, a pill for more.
    Size intrinsicSize() const override;

protected:
    void layout() override;

private:
    ui::Label countLabel_;
};

}  // namespace morvel
