#include "Platform/Linux/UI/Text/FieldEditor.h"

#include <algorithm>
#include <utility>

namespace morvel::x11 {

namespace {

constexpr uint32_t kDoubleClickTime = 400;  // milliseconds

std::optional<ui::TextCommand> commandOf(uint32_t symbol) {
    switch (symbol) {
        case XKB_KEY_Up:
        case XKB_KEY_KP_Up:
            return ui::TextCommand::MoveUp;
        case XKB_KEY_Down:
        case XKB_KEY_KP_Down:
            return ui::TextCommand::MoveDown;
        case XKB_KEY_Prior:
        case XKB_KEY_KP_Prior:
            return ui::TextCommand::PageUp;
        case XKB_KEY_Next:
        case XKB_KEY_KP_Next:
            return ui::TextCommand::PageDown;
        case XKB_KEY_Return:
        case XKB_KEY_KP_Enter:
            return ui::TextCommand::Confirm;
        case XKB_KEY_Escape:
            return ui::TextCommand::Cancel;
        default:
            return std::nullopt;
    }
}

std::optional<Movement> movementOf(const KeyStroke& stroke) {
    switch (stroke.symbol) {
        case XKB_KEY_Left:
        case XKB_KEY_KP_Left:
        case XKB_KEY_BackSpace:
            return stroke.isControl ? Movement::WordBack : Movement::CharacterBack;
        case XKB_KEY_Right:
        case XKB_KEY_KP_Right:
        case XKB_KEY_Delete:
        case XKB_KEY_KP_Delete:
            return stroke.isControl ? Movement::WordForward : Movement::CharacterForward;
        case XKB_KEY_Home:
        case XKB_KEY_KP_Home:
            return Movement::Start;
        case XKB_KEY_End:
        case XKB_KEY_KP_End:
            return Movement::End;
        default:
            return std::nullopt;
    }
}

bool erases(uint32_t symbol) {
    return symbol == XKB_KEY_BackSpace || symbol == XKB_KEY_Delete || symbol == XKB_KEY_KP_Delete;
}

bool pastes(const KeyStroke& stroke) {
    return stroke.isControl ? stroke.symbol == XKB_KEY_v || stroke.symbol == XKB_KEY_V
                            : stroke.isShift && stroke.symbol == XKB_KEY_Insert;
}

}  // namespace

FieldEditor::FieldEditor(ToolkitContext& context, ViewWindow& window)
    : context_(context), window_(window), keys_(makeKeyReader(context.connection())), grab_(context) {
    if (ui::TextField* const shown = field()) showIn(*shown);
}

void FieldEditor::mapped() {
    grab_.take(window_.window().id());
}

ui::TextField* FieldEditor::field() {
    ui::TextField* const found = ui::firstTextField(window_.rootView());
    if (!found) return nullptr;
    if (std::exchange(edited_, found) == found && found->text() == editing_.text()) return found;
    editing_.setText(found->text());
    scrolled_ = 0;
    pasting_.reset();
    return found;
}

void FieldEditor::keyPressed(const xcb_key_press_event_t& event) {
    ui::TextField* const typed = field();
    if (!keys_) return;
    const KeyStroke stroke = keys_->stroke(event);
    if (!typed) return;
    if (const auto command = commandOf(stroke.symbol)) {
        typed->commanded(*command);
        return;
    }
    if (movedOrErased(stroke)) return changed();
    if (pastes(stroke)) return paste();
    if (stroke.isControl && stroke.symbol == XKB_KEY_a) {
        editing_.selectAll();
        return changed();
    }
    if (stroke.text.empty() || static_cast<unsigned char>(stroke.text.front()) < ' ') return;
    editing_.insert(stroke.text);
    changed();
}

bool FieldEditor::movedOrErased(const KeyStroke& stroke) {
    const auto movement = movementOf(stroke);
    if (!movement) return false;
    if (erases(stroke.symbol))
        editing_.erase(*movement);
    else
        editing_.move(*movement, stroke.isShift ? Selection::Extend : Selection::Drop);
    return true;
}

void FieldEditor::paste() {
    XConnection& connection = context_.connection();
    const Atoms& atoms = connection.atoms();
    pasting_ = std::make_unique<SelectionFetch>(connection, atoms.clipboard, atoms.utf8String,
                                                connection.lastTimestamp(), [this](std::optional<std::string> text) {
                                                    if (!text || !field()) return;
                                                    editing_.insert(*text);
                                                    changed();
                                                });
}

void FieldEditor::pointerPressed(const xcb_button_press_event_t& event, Point<ViewSpace> inRootView) {
    ui::TextField* const pressed = field();
    if (!pressed || event.detail != XCB_BUTTON_INDEX_1 || !pressed->boundsInRoot().contains(inRootView)) return;
    const bool isRepeated = lastPress_ && event.time - lastPress_->time < kDoubleClickTime;
    lastPress_ = Press{event.time, isRepeated ? lastPress_->clicks + 1 : 1};
    const size_t position = positionAt(*pressed, inRootView);
    if (lastPress_->clicks == 1) {
        editing_.moveTo(position, event.state & XCB_MOD_MASK_SHIFT ? Selection::Extend : Selection::Drop);
        isSelecting_ = true;
    } else if (lastPress_->clicks == 2) {
        editing_.selectWordAt(position);
    } else {
        editing_.selectAll();
    }
    changed();
}

void FieldEditor::pointerMoved(Point<ViewSpace> inRootView) {
    ui::TextField* const pressed = isSelecting_ ? field() : nullptr;
    if (!pressed) return;
    editing_.moveTo(positionAt(*pressed, inRootView), Selection::Extend);
    changed();
}

size_t FieldEditor::positionAt(ui::TextField& field, Point<ViewSpace> inRootView) const {
    ViewNode* const node = nodeOf(field);
    if (!node) return 0;
    const double x = field.fromRoot(inRootView).x - ui::TextField::kPadding + scrolled_;
    int index = 0, trailing = 0;
    PangoLayout* layout = node->layout(context_.layouts(), editing_.text(), field.font());
    pango_layout_xy_to_index(layout, static_cast<int>(std::clamp(x, -1e6, 1e6) * PANGO_SCALE), 0, &index, &trailing);
    const char* at = editing_.text().data() + index;
    for (; trailing > 0; --trailing) at = g_utf8_next_char(at);
    return static_cast<size_t>(at - editing_.text().data());
}

void FieldEditor::changed() {
    ui::TextField* const shown = ui::firstTextField(window_.rootView());
    if (!shown) return;
    showIn(*shown);
    shown->edited(editing_.text());
}

void FieldEditor::showIn(ui::TextField& field) {
    ViewNode* const node = nodeOf(field);
    if (!node) return;
    PangoRectangle caret{};
    pango_layout_get_cursor_pos(node->layout(context_.layouts(), editing_.text(), field.font()),
                                static_cast<int>(editing_.caret()), &caret, nullptr);
    const double x = static_cast<double>(caret.x) / PANGO_SCALE;
    const double room = std::max(1.0, field.frame().width - 2 * ui::TextField::kPadding);
    scrolled_ = std::clamp(scrolled_, std::max(0.0, x - room), x);
    node->caret = TextCaret{editing_.caret(), editing_.selectionStart(), editing_.selectionEnd(), scrolled_};
    window_.canvas().viewChanged(field, ui::ViewChange::Content);
}

}  // namespace morvel::x11
