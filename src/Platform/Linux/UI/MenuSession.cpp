#include "Platform/Linux/UI/MenuSession.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace morvel::x11 {

namespace {

constexpr double kRadius = 8;
constexpr double kWheelStep = 48;
// Long enough to move slantwise from an item to its submenu across the items between.
constexpr Duration kSettleDelay = std::chrono::milliseconds(140);
// A press that opens a menu is released soon after: within this time and distance it is a click, not a choice.
constexpr Duration kClickTime = std::chrono::milliseconds(350);
constexpr double kClickDistance = 4;
constexpr uint16_t kPointerEvents =
    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;

}  // namespace

MenuSession::MenuSession(ToolkitContext& context, ui::Toolkit& toolkit, ui::Menu menu, Point<RootSpace> at,
                         const std::optional<Rect<RootSpace>>& bar, Ended ended)
    : context_(context),
      toolkit_(toolkit),
      menu_(std::move(menu)),
      ended_(std::move(ended)),
      keys_(context.connection()),
      opened_(context.mainLoop().now()),
      openedAt_(at) {
    context_.setMenuOpen(true);
    addLevel(menu_, [&](Size size) { return placeMenu(at, size, monitorAt(at, context_.monitors()), bar); });
    grab();
}

MenuSession::~MenuSession() {
    ended_ = nullptr;
    end(nullptr);
}

void MenuSession::addLevel(const ui::Menu& menu, const std::function<Rect<RootSpace>(Size)>& place) {
    Level level;
    level.view = std::make_unique<MenuView>(toolkit_, menu);
    level.window = std::make_unique<ViewWindow>(
        context_, *level.view,
        ViewWindowOptions{.prepare =
                              [this](XWindow& window) {
                                  const Atoms& atoms = context_.connection().atoms();
                                  window.setCardinals(atoms.netWmWindowType, XCB_ATOM_ATOM, {atoms.typePopupMenu});
                              },
                          .input = [this](const xcb_generic_event_t& event) { handle(event); }});
    const PixelRect frame = pixelsTouched(place(level.view->intrinsicSize()));
    level.view->setFrame({0, 0, static_cast<double>(frame.width), level.view->intrinsicSize().height});
    level.window->setFrame(frame, {}, Bubble{{0, 0, frame.width, frame.height}, kRadius});
    level.window->show();
    levels_.push_back(std::move(level));
}

void MenuSession::openSubmenu(size_t level, size_t item) {
    if (levels_[level].openItem == item && levels_.size() > level + 1) return;
    closeLevelsAfter(level);
    levels_[level].openItem = item;
    const Rect<RootSpace> opener = itemOnRoot(level, item);
    addLevel(levels_[level].view->menu()[item].submenu, [&](Size size) {
        return placeSubmenu(opener, size, MenuView::topPadding(), monitorAt(opener.center(), context_.monitors()));
    });
}

void MenuSession::closeLevelsAfter(size_t level) {
    while (levels_.size() > level + 1) {
        context_.retire(std::move(levels_.back().window));
        levels_.pop_back();
    }
    levels_[level].openItem.reset();
}

void MenuSession::grab() {
    XConnection& connection = context_.connection();
    const xcb_window_t window = levels_.front().window->window().id();
    const auto pointer = xcb_grab_pointer(connection.get(), 0, window, kPointerEvents, XCB_GRAB_MODE_ASYNC,
                                          XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    const auto keyboard =
        xcb_grab_keyboard(connection.get(), 0, window, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const auto answered = lifetime_.whileAlive([this](const auto* reply) {
        if (!reply || reply->status != XCB_GRAB_STATUS_SUCCESS) cancel();
    });
    connection.whenReplied<xcb_grab_pointer_reply_t>(pointer.sequence, answered);
    connection.whenReplied<xcb_grab_keyboard_reply_t>(keyboard.sequence, answered);
}

// All events come to the first level's window, wherever the pointer is.
void MenuSession::handle(const xcb_generic_event_t& event) {
    if (hasEnded_) return;
    const auto& e = reinterpret_cast<const xcb_button_press_event_t&>(event);
    const Point<RootSpace> location{static_cast<double>(e.root_x), static_cast<double>(e.root_y)};
    switch (typeOf(event)) {
        case XCB_MOTION_NOTIFY:
            return pointerMoved(location);
        case XCB_BUTTON_PRESS:
            if (e.detail <= 3) return pressed(location);
            if (e.detail <= 5) return scrollBy(location, e.detail == 4 ? -kWheelStep : kWheelStep);
            return;
        case XCB_BUTTON_RELEASE:
            if (e.detail <= 3) released(location);
            return;
        case XCB_KEY_PRESS:
            if (const auto key = keys_.meaning(reinterpret_cast<const xcb_key_press_event_t&>(event))) keyPressed(*key);
            return;
        default:
            return;
    }
}

std::optional<MenuSession::Hit> MenuSession::hit(Point<RootSpace> location) const {
    for (size_t i = levels_.size(); i-- > 0;) {
        const Rect<RootSpace> frame = levels_[i].window->frameOnRoot();
        if (!frame.contains(location)) continue;
        return Hit{i, levels_[i].view->itemAt(location.y - frame.y - levels_[i].window->canvas().origin().y)};
    }
    return std::nullopt;
}

void MenuSession::pointerMoved(Point<RootSpace> location) {
    if (std::hypot(location.x - openedAt_.x, location.y - openedAt_.y) > kClickDistance) wasUsed_ = true;
    const auto over = hit(location);
    if (!over) {
        settle_.reset();
        levels_.back().view->select(std::nullopt);
        return;
    }
    // The way to where the pointer is stays highlighted, and nothing behind it does.
    for (size_t i = 0; i < over->level; ++i) levels_[i].view->select(levels_[i].openItem);
    for (size_t i = over->level + 1; i < levels_.size(); ++i) levels_[i].view->select(std::nullopt);
    MenuView& view = *levels_[over->level].view;
    const auto before = view.selected();
    view.select(over->item);
    if (view.selected() != before || levels_.size() > over->level + 1)
        settle_ = context_.mainLoop().after(kSettleDelay, [this, level = over->level] { settle(level); });
}

// The pointer rests: what is open behind the level is what its selected item wants to be open.
void MenuSession::settle(size_t level) {
    settle_.reset();
    if (level >= levels_.size()) return;
    const MenuView& view = *levels_[level].view;
    const auto item = view.selected();
    if (item && !view.menu()[*item].submenu.empty()) return openSubmenu(level, *item);
    closeLevelsAfter(level);
}

void MenuSession::pressed(Point<RootSpace> location) {
    const auto over = hit(location);
    if (!over) return cancel();
    wasUsed_ = true;
    pointerMoved(location);
    if (const auto item = levels_[over->level].view->selected(); item == over->item) settle(over->level);
}

void MenuSession::released(Point<RootSpace> location) {
    const bool isClick = context_.mainLoop().now() - opened_ < kClickTime;
    if (isClick && !wasUsed_) return;
    const auto over = hit(location);
    if (over && over->item && levels_[over->level].view->selected() == over->item) activate(over->level, *over->item);
}

void MenuSession::activate(size_t level, size_t item) {
    const ui::MenuItem& chosen = levels_[level].view->menu()[item];
    if (!isSelectable(chosen)) return;
    if (chosen.submenu.empty()) return end(chosen.action);
    openSubmenu(level, item);
}

void MenuSession::keyPressed(MenuKey key) {
    settle_.reset();
    wasUsed_ = true;
    const size_t last = levels_.size() - 1;
    MenuView& view = *levels_[last].view;
    const auto selected = view.selected();
    const auto selectNext = [&](std::optional<size_t> from, Direction direction) {
        view.select(nextSelectable(view.menu(), from, direction));
        reveal(last);
    };
    switch (key) {
        case MenuKey::Up:
            return selectNext(selected, Direction::Up);
        case MenuKey::Down:
            return selectNext(selected, Direction::Down);
        case MenuKey::First:
            return selectNext(std::nullopt, Direction::Down);
        case MenuKey::Last:
            return selectNext(std::nullopt, Direction::Up);
        case MenuKey::Cancel:
            if (last == 0) return cancel();
            return closeLevelsAfter(last - 1);
        case MenuKey::Back:
            if (last > 0) closeLevelsAfter(last - 1);
            return;
        case MenuKey::Open:
        case MenuKey::Choose:
            break;
    }
    if (!selected || (key == MenuKey::Open && view.menu()[*selected].submenu.empty())) return;
    activate(last, *selected);
    if (!hasEnded_ && levels_.size() > last + 1) {
        MenuView& opened = *levels_.back().view;
        opened.select(nextSelectable(opened.menu(), std::nullopt, Direction::Down));
    }
}

void MenuSession::scrollBy(Point<RootSpace> location, double distance) {
    const auto over = hit(location);
    if (!over) return;
    setScroll(levels_[over->level], distance - levels_[over->level].window->canvas().origin().y);
    pointerMoved(location);
}

// Scrolls a menu that is higher than its monitor so far that the selected item can be seen.
void MenuSession::reveal(size_t level) {
    Level& shown = levels_[level];
    if (!shown.view->selected()) return;
    const Rect<ViewSpace> item = shown.view->itemFrame(*shown.view->selected());
    const double top = -shown.window->canvas().origin().y, height = shown.window->frame().height;
    if (item.minY() - MenuView::topPadding() < top) setScroll(shown, item.minY() - MenuView::topPadding());
    if (item.maxY() + MenuView::topPadding() > top + height)
        setScroll(shown, item.maxY() + MenuView::topPadding() - height);
}

void MenuSession::setScroll(Level& level, double offset) {
    const PixelRect frame = level.window->frame();
    const double bounded = std::clamp(offset, 0.0, std::max(0.0, level.view->frame().height - frame.height));
    if (-bounded != level.window->canvas().origin().y)
        level.window->setFrame(frame, {0, -bounded}, Bubble{{0, 0, frame.width, frame.height}, kRadius});
}

Rect<RootSpace> MenuSession::itemOnRoot(size_t level, size_t item) const {
    const Rect<ViewSpace> frame = levels_[level].view->itemFrame(item);
    const Point<RootSpace> corner = levels_[level].window->onRoot(frame.origin());
    return {corner.x, corner.y, frame.width, frame.height};
}

void MenuSession::end(std::function<void()> action) {
    if (std::exchange(hasEnded_, true)) return;
    settle_.reset();
    XConnection& connection = context_.connection();
    xcb_ungrab_pointer(connection.get(), XCB_CURRENT_TIME);
    xcb_ungrab_keyboard(connection.get(), XCB_CURRENT_TIME);
    for (Level& level : levels_) context_.retire(std::move(level.window));
    context_.setMenuOpen(false);
    if (ended_) ended_(std::move(action));
}

}  // namespace morvel::x11
