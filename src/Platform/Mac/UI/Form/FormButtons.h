// Buttons, links, lines of text and fields of a form.
#pragma once

#include "Platform/Mac/UI/Form/FormControlView.h"

namespace morvel::mac {

/// A push button as wide as its title wants.
struct TitledButton {
    NSButton button;
    CGSize size;

    TitledButton(const std::string& title, std::function<void()> press);
};

class ButtonView : public FormControlView {
public:
    ButtonView(const std::string& title, std::function<void()> press) : parts_(title, std::move(press)) {}

    void refresh() override {}
    std::vector<NSView> views() const override { return {parts_.button}; }
    double place(CGPoint topLeft, double width) override;
    void setEnabled(bool enabled) override { NSControl(parts_.button).setEnabled(enabled); }

private:
    TitledButton parts_;
};

class TextView : public FormControlView {
public:
    /// The text outlives the view.
    explicit TextView(const ui::FormText& text) : text_(text), label_(NSTextField::wrappingLabel(NSString::from({}))) {}

    void refresh() override;
    std::vector<NSView> views() const override { return {label_}; }
    double place(CGPoint topLeft, double width) override;
    void setEnabled(bool) override {}

private:
    const ui::FormText& text_;
    NSTextField label_;
};

class EntryView : public FormControlView {
public:
    /// The entry outlives the view.
    EntryView(const ui::FormEntry& entry, const Lifetime& lifetime);

    void refresh() override {}
    std::vector<NSView> views() const override { return {field_, add_.button}; }
    double place(CGPoint topLeft, double width) override;
    void setEnabled(bool enabled) override;

private:
    NSTextField field_;
    TitledButton add_;
};

/// Asks for the path in a sheet of the window. The button outlives the lifetime.
void askForPath(const ui::FormPathButton& button, const FormContext& context);

}  // namespace morvel::mac
