#include "Platform/Mac/UI/FieldDelegate.h"

#include <optional>

#include "Platform/Mac/apple/AppKit/Selectors.h"
#include "Platform/Mac/objc/Subclass.h"

namespace morvel::mac {

namespace {

using Class = objc::Subclass<FieldDelegate>;

/// The key bindings' names for the keys that are the list's rather than the text's.
std::optional<ui::TextCommand> commandOf(Selector command) {
    if (command == Selector(selectors::moveUp)) return ui::TextCommand::MoveUp;
    if (command == Selector(selectors::moveDown)) return ui::TextCommand::MoveDown;
    if (command == Selector(selectors::scrollPageUp) || command == Selector(selectors::pageUp))
        return ui::TextCommand::PageUp;
    if (command == Selector(selectors::scrollPageDown) || command == Selector(selectors::pageDown))
        return ui::TextCommand::PageDown;
    if (command == Selector(selectors::insertNewline)) return ui::TextCommand::Confirm;
    if (command == Selector(selectors::cancelOperation)) return ui::TextCommand::Cancel;
    return std::nullopt;
}

}  // namespace

NSObject FieldDelegate::make(ui::TextField& field, const NSTextField& native) {
    [[maybe_unused]] static const objc::RawClass registered =
        Class("NSObject")
            .adopts("NSTextFieldDelegate")
            .overrides<&FieldDelegate::controlTextDidChange>(selectors::controlTextDidChange)
            .overrides<&FieldDelegate::doCommand>(selectors::controlDoCommand)
            .registered();
    return Class::create<NSObject>(std::make_unique<FieldDelegate>(FieldDelegate{&field, native.raw()}),
                                   selectors::init);
}

void FieldDelegate::forgetField(const NSObject& delegate) {
    if (FieldDelegate* const own = Class::of(delegate)) own->field = nullptr;
}

// The handlers may take the field away.
void FieldDelegate::controlTextDidChange(NSObject) {
    if (field) field->edited(NSTextField(native).stringValue().text());
}

bool FieldDelegate::doCommand(NSObject, NSObject, Selector command) {
    const auto known = commandOf(command);
    return field && known && field->commanded(*known);
}

}  // namespace morvel::mac
