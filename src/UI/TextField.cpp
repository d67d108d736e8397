#include "UI/TextField.h"

#include <utility>

namespace morvel::ui {

void TextField::setText(std::string text) {
    if (text_ == text) return;
    text_ = std::move(text);
    changed(ViewChange::Content);
}

void TextField::edited(std::string text) {
    if (text_ == text) return;
    setText(std::move(text));
    if (const auto call = onChange) call();
}

bool TextField::commanded(TextCommand command) {
    const auto call = onCommand;
    return call && call(command);
}

TextField* firstTextField(View& root) {
    if (root.isHidden()) return nullptr;
    if (root.kind() == View::Kind::TextField) return static_cast<TextField*>(&root);
    for (View* child : root.subviews())
        if (TextField* found = firstTextField(*child)) return found;
    return nullptr;
}

}  // namespace morvel::ui
