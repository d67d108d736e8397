// A list of a form: a row per item with its picture, its title and a button, or a text when there are none.
#pragma once

#include <optional>

#include "Platform/Mac/UI/Form/FormButtons.h"

namespace morvel::mac {

class ListView : public FormControlView {
public:
    /// The list outlives the view.
    ListView(const ui::FormList& list, const FormContext& context);

    /// Makes the rows anew if they are others than before.
    void refresh() override;
    std::vector<NSView> views() const override;
    double place(CGPoint topLeft, double width) override;
    void setEnabled(bool enabled) override;

private:
    struct Row {
        NSImageView image;
        NSTextField title;
        TitledButton button;
    };

    Row makeRow(const ui::FormListRow& row) const;

    const ui::FormList& list_;
    const FormContext context_;
    NSBox box_;
    NSTextField emptyText_;
    std::optional<std::vector<ui::FormListRow>> shown_;
    std::vector<Row> rows_;
};

}  // namespace morvel::mac
