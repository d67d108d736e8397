#include "Platform/Linux/UI/Drag/ForeignDrag.h"

#include <utility>

#include "Platform/Linux/System/Property.h"
#include "Platform/Linux/UI/ViewWindow.h"

namespace morvel::x11 {

namespace {

// A person has let go and sees the bar wait for a program: longer than that, and the drop seems lost anyway.
constexpr Duration kFetchTime = std::chrono::seconds(2);
// How often it is looked whether a drag that is elsewhere, or silent, goes on. No notice says so: the buttons' events
// are the source's alone.
constexpr Duration kLookPeriod = std::chrono::milliseconds(250);
constexpr int kSilentLooksAway = 1;
constexpr int kSilentLooksInside = 8;
// What the list of windows also asks for, since the server keeps one choice of ours per window and a source may be in
// that list.
constexpr uint32_t kSourceEvents = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
constexpr uint16_t kButtons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;

}  // namespace

ForeignDrag::ForeignDrag(ToolkitContext& context, AtomNames& names, xcb_window_t source, std::function<void()> over)
    : context_(context), names_(names), source_(source), over_(std::move(over)), tracker_(context) {
    XConnection& connection = context_.connection();
    sourceEvents_ = connection.observeWindow(source_, [this](const xcb_generic_event_t& event) {
        if (typeOf(event) == XCB_DESTROY_NOTIFY) giveUp();
    });
    xcb_change_window_attributes(connection.get(), source_, XCB_CW_EVENT_MASK, &kSourceEvents);
    batchEnd_ = connection.observeBatchEnd([this] { answerPosition(); });
    watch_ = context_.mainLoop().every(kLookPeriod, kLookPeriod, [this] { lookAtButtons(); });
}

void ForeignDrag::entered(xcb_window_t target, const XdndEnter& message) {
    if (isDropping() || isOver()) return;
    silentLooks_ = 0;
    tracker_.exited();  // it may come from another window of ours without having left that one
    state_ = State::Inside;
    target_ = target;
    operation_ = ui::DragOperation::None;
    unanswered_.reset();
    // A window that goes away never hears that the drag has left it.
    targetEvents_ = context_.connection().observeWindow(target, [this](const xcb_generic_event_t& event) {
        if (typeOf(event) == XCB_DESTROY_NOTIFY && state_ == State::Inside) goAway();
    });
    askForTypes(message);
}

// The list is asked for even when the message has all types: the answer also tells whether the source exists.
void ForeignDrag::askForTypes(const XdndEnter& message) {
    XConnection& connection = context_.connection();
    contents_.reset();
    entering_.emplace();
    const auto cookie = xcb_get_property(connection.get(), 0, source_, connection.atoms().xdndTypeList, XCB_ATOM_ATOM,
                                         0, kMaxOfferedTypes);
    connection.whenReplied<xcb_get_property_reply_t>(
        cookie.sequence,
        entering_->whileAlive([this, message](const xcb_get_property_reply_t* list) { typesAnswered(message, list); }));
}

void ForeignDrag::typesAnswered(const XdndEnter& message, const xcb_get_property_reply_t* list) {
    if (!list) return giveUp();
    std::vector<xcb_atom_t> atoms = message.hasTypeList ? cardinals(list) : std::vector<xcb_atom_t>();
    if (!message.hasTypeList) atoms.assign(message.types.begin(), message.types.end());
    std::erase(atoms, XCB_ATOM_NONE);
    names_.resolve(std::move(atoms), entering_->whileAlive([this](AtomNames::Names types) {
        if (!isOver()) namesResolved(std::move(types));
    }));
}

void ForeignDrag::namesResolved(AtomNames::Names types) {
    std::vector<std::string> offered;
    for (const auto& [name, atom] : types) offered.push_back(name);
    types_ = std::move(types);
    contents_ = DragContents::offered(offered);
}

void ForeignDrag::positioned(xcb_window_t target, const XdndPosition& message) {
    if (state_ != State::Inside || target != target_) return;
    silentLooks_ = 0;
    unanswered_ = message;
}

void ForeignDrag::answerPosition() {
    if (state_ != State::Inside || !unanswered_ || !contents_) return;
    const XdndPosition position = *std::exchange(unanswered_, std::nullopt);
    ViewWindow* window = context_.windowWithID(target_);
    operation_ = window && window->takesDrags() ? tracker_.moved(*window, position.location, *contents_)
                                                : ui::DragOperation::None;
    wished_ = position.action;
    if (state_ == State::Inside) sendStatus(operation_, wished_);
}

void ForeignDrag::sendStatus(ui::DragOperation operation, xcb_atom_t wished) {
    const XdndStatus status{target_, operation != ui::DragOperation::None, actionFor(operation, wished)};
    XConnection& connection = context_.connection();
    connection.sendMessage(source_, source_, connection.atoms().xdndStatus, status.packed());
}

// A source may take away what it is told was moved. Files only ever get referred to here, and stay where they are.
xcb_atom_t ForeignDrag::actionFor(ui::DragOperation operation, xcb_atom_t wished) const {
    const Atoms& atoms = context_.connection().atoms();
    const bool mayMove = wished == atoms.xdndActionMove && contents_ && !contents_->hasFileURLs();
    return operation == ui::DragOperation::Move && mayMove ? atoms.xdndActionMove : atoms.xdndActionCopy;
}

void ForeignDrag::left(xcb_window_t target) {
    if (state_ == State::Inside && target == target_) goAway();
}

// The drag may come back, or enter another window of ours: to the views it is not over yet.
void ForeignDrag::goAway() {
    state_ = State::Away;
    silentLooks_ = 0;
    unanswered_.reset();
    operation_ = ui::DragOperation::None;
    targetEvents_.reset();
    tracker_.exited();
}

void ForeignDrag::dropped(xcb_window_t target, const XdndDrop& message) {
    if (state_ != State::Inside || target != target_) return;
    answerPosition();
    if (state_ != State::Inside) return;
    if (operation_ == ui::DragOperation::None || !contents_) return finish(ui::DragOperation::None);
    state_ = State::Dropping;
    watch_.reset();
    drop_ = message;
    toFetch_ = contents_->namesToFetch();
    deadline_ = context_.mainLoop().after(kFetchTime, [this] { finish(ui::DragOperation::None); });
    fetchNext();
}

void ForeignDrag::fetchNext() {
    if (toFetch_.empty()) return perform();
    const std::string name = toFetch_.front();
    toFetch_.erase(toFetch_.begin());
    XConnection& connection = context_.connection();
    fetch_ = std::make_unique<SelectionFetch>(connection, connection.atoms().xdndSelection, types_[name], drop_.time,
                                              [this, name](std::optional<std::string> bytes) {
                                                  if (bytes) contents_->fetched(name, *bytes);
                                                  fetchNext();
                                              });
}

void ForeignDrag::perform() {
    deadline_.reset();
    finish(tracker_.dropped(*contents_));
}

void ForeignDrag::finish(ui::DragOperation done) {
    if (isOver()) return;
    const XdndFinished finished{target_, done != ui::DragOperation::None, actionFor(done, wished_)};
    XConnection& connection = context_.connection();
    connection.sendMessage(source_, source_, connection.atoms().xdndFinished, finished.packed());
    end();
}

void ForeignDrag::giveUp() {
    if (isDropping()) return finish(ui::DragOperation::None);
    end();
}

void ForeignDrag::end() {
    if (std::exchange(state_, State::Over) == State::Over) return;
    watch_.reset();
    deadline_.reset();
    tracker_.ended();
    over_();
}

void ForeignDrag::lookAtButtons() {
    XConnection& connection = context_.connection();
    const auto cookie = xcb_query_pointer(connection.get(), connection.root());
    connection.whenReplied<xcb_query_pointer_reply_t>(
        cookie.sequence,
        lifetime_.whileAlive([this](const xcb_query_pointer_reply_t* pointer) { buttonsAnswered(pointer); }));
}

void ForeignDrag::buttonsAnswered(const xcb_query_pointer_reply_t* pointer) {
    if (!pointer || (pointer->mask & kButtons) != 0) return;
    const int limit = state_ == State::Away ? kSilentLooksAway : kSilentLooksInside;
    if (!isDropping() && ++silentLooks_ >= limit) giveUp();
}

}  // namespace morvel::x11
