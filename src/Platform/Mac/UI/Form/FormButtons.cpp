#include "Platform/Mac/UI/Form/FormButtons.h"

#include <cmath>

#include "Platform/Mac/UI/ControlAction.h"
#include "Platform/Mac/UI/DisplayText.h"
#include "Platform/Mac/UI/Resolving.h"

namespace morvel::mac {

namespace {

constexpr double kButtonHeight = 28;
constexpr double kFieldHeight = 24;
constexpr double kTitleMargins = 36;  // a push button's own, left and right together
constexpr double kGap = 8;

void handOver(const ui::FormEntry& entry, const NSTextField& field) {
    if (entry.take(field.stringValue().text())) field.setStringValue(NSString::from({}));
}

NSSavePanel panelFor(const ui::FormPathButton& button) {
    if (button.kind == ui::PathKind::NewFile) {
        const NSSavePanel panel = NSSavePanel::make();
        panel.setSuggestedName(NSString::from(button.suggestedName));
        return panel;
    }
    const NSOpenPanel panel = NSOpenPanel::make();
    panel.setCanChooseFiles(button.kind == ui::PathKind::ExistingFile);
    panel.setCanChooseDirectories(button.kind == ui::PathKind::Folder);
    return panel;
}

}  // namespace

TitledButton::TitledButton(const std::string& title, std::function<void()> press)
    : button(NSButton::push(NSString::from(title), nullptr, Selector())),
      size{std::ceil(sizeOf(NSString::from(title), nsFont({})).width) + kTitleMargins, kButtonHeight} {
    button.setBezelStyle(NSBezelStylePush);
    setAction(NSControl(button), std::move(press));
}

double ButtonView::place(CGPoint topLeft, double) {
    parts_.button.setFrame({topLeft, parts_.size});
    return parts_.size.height;
}

void TextView::refresh() {
    label_.setStringValue(NSString::from(displayText(text_.text())));
}

double TextView::place(CGPoint topLeft, double width) {
    const double height = heightOf(label_, width);
    label_.setFrame({topLeft, {width, height}});
    return height;
}

EntryView::EntryView(const ui::FormEntry& entry, const Lifetime& lifetime)
    : field_(NSTextField::make({})),
      add_(entry.buttonTitle,
           lifetime.whileAlive([&entry, raw = field_.raw()] { handOver(entry, NSTextField(raw)); })) {
    field_.setPlaceholderString(NSString::from(entry.placeholder));
    // Half an identifier must not be taken because the person looks something up elsewhere.
    NSControl(field_).cell().setSendsActionOnEndEditing(false);
    setAction(NSControl(field_),
              lifetime.whileAlive([&entry, raw = field_.raw()] { handOver(entry, NSTextField(raw)); }));
}

double EntryView::place(CGPoint topLeft, double width) {
    const double fieldWidth = width - add_.size.width - kGap;
    field_.setFrame({{topLeft.x, topLeft.y + (kButtonHeight - kFieldHeight) / 2}, {fieldWidth, kFieldHeight}});
    add_.button.setFrame({{topLeft.x + fieldWidth + kGap, topLeft.y}, add_.size});
    return kButtonHeight;
}

void EntryView::setEnabled(bool enabled) {
    NSControl(field_).setEnabled(enabled);
    NSControl(add_.button).setEnabled(enabled);
}

void askForPath(const ui::FormPathButton& button, const FormContext& context) {
    const NSSavePanel panel = panelFor(button);
    if (!panel) return;
    panel.setTitle(NSString::from(button.dialogTitle));
    panel.setMessage(NSString::from(button.dialogTitle));  // a sheet has no title bar
    const auto answered = [&button, panel](NSInteger response) {
        const std::string path = response == NSModalResponseOK ? panel.url().path().text() : std::string();
        if (!path.empty()) button.chosen(path);
    };
    panel.begin(context.window, context.lifetime.whileAlive(answered));
}

}  // namespace morvel::mac
