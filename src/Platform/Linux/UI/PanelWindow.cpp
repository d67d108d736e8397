#include "Platform/Linux/UI/PanelWindow.h"

#include <cmath>
#include <string_view>
#include <utility>

#include "Platform/Linux/UI/PanelStrut.h"

namespace morvel::x11 {

namespace {

constexpr std::string_view kName = "Morvel";
constexpr uint32_t kAllDesktops = 0xFFFFFFFF;
// WM_HINTS with nothing but the input hint: false.
const std::vector<uint32_t> kNeverFocused{1, 0, 0, 0, 0, 0, 0, 0, 0};

// WM_NORMAL_HINTS: the position and size are meant, and the window's own corner is what they are about.
std::vector<uint32_t> normalHints() {
    constexpr uint32_t kUserPosition = 1, kUserSize = 2, kWindowGravity = 512, kStaticGravity = 10;
    std::vector<uint32_t> hints(18, 0);
    hints.front() = kUserPosition | kUserSize | kWindowGravity;
    hints.back() = kStaticGravity;
    return hints;
}

}  // namespace

PanelWindow::PanelWindow(ToolkitContext& context, const ui::PanelOptions& options, ui::View& content)
    : context_(context),
      edge_(options.edge),
      frame_(options.frame),
      window_(
          std::make_unique<ViewWindow>(context, content,
                                       ViewWindowOptions{.management = Management::Managed,
                                                         .keepClearOf = KeepClearOf::Window,
                                                         .prepare = [this](XWindow& window) { describe(window); }})),
      slide_(context.mainLoop()) {
    place();
    // Where the main display's height or place changes, so does what the frame means on the root window.
    geometry_ = context_.observeGeometry([this] { place(); });
}

PanelWindow::~PanelWindow() {
    context_.retire(std::move(window_));
}

// Window managers take the state away from a window that is withdrawn, so this is told before each showing.
void PanelWindow::describe(XWindow& window) const {
    const Atoms& atoms = context_.connection().atoms();
    window.setCardinals(atoms.netWmWindowType, XCB_ATOM_ATOM, {atoms.typeDock});
    window.setCardinals(atoms.netWmState, XCB_ATOM_ATOM,
                        {atoms.stateAbove, atoms.stateSticky, atoms.stateSkipTaskbar, atoms.stateSkipPager});
    window.setCardinals(atoms.netWmDesktop, XCB_ATOM_CARDINAL, {kAllDesktops});
    window.setCardinals(XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, kNeverFocused);
    window.setCardinals(XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, normalHints());
    window.setText(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, kName);
    window.setText(atoms.netWmName, atoms.utf8String, kName);
}

void PanelWindow::setFrame(const Rect<ScreenSpace>& frame) {
    if (std::exchange(frame_, frame) == frame) return;
    place();
}

void PanelWindow::animateFrame(const Rect<ScreenSpace>& frame, Duration duration) {
    frame_ = frame;
    updateStrut();
    const PixelRect from = window_->frame();
    const PixelRect to = pixelsTouched(context_.toRoot(frame_));
    slide_.start(duration, [this, from, to](double progress) {
        const auto between = [progress](int a, int b) { return a + static_cast<int>(std::lround((b - a) * progress)); };
        window_->setFrame({between(from.x, to.x), between(from.y, to.y), to.width, to.height});
    });
}

void PanelWindow::place() {
    slide_.cancel();
    window_->setFrame(pixelsTouched(context_.toRoot(frame_)));
    updateStrut();
}

void PanelWindow::orderFront() {
    if (!window_->window().isMapped()) describe(window_->window());
    updateStrut();
    window_->show();
}

void PanelWindow::orderOut() {
    window_->hide();
}

void PanelWindow::setReservesSpace(bool reserves) {
    if (std::exchange(reservesSpace_, reserves) != reserves) updateStrut();
}

void PanelWindow::updateStrut() {
    const Atoms& atoms = context_.connection().atoms();
    XWindow& window = window_->window();
    const auto strut = reservesSpace_ ? panelStrut(context_.toRoot(frame_), edge_, context_.root(), context_.monitors())
                                      : std::nullopt;
    if (!strut) {
        window.removeProperty(atoms.netWmStrutPartial);
        return window.removeProperty(atoms.netWmStrut);
    }
    std::vector<uint32_t> values;
    for (const double v :
         {strut->left, strut->right, strut->top, strut->bottom, strut->leftStart, strut->leftEnd, strut->rightStart,
          strut->rightEnd, strut->topStart, strut->topEnd, strut->bottomStart, strut->bottomEnd})
        values.push_back(static_cast<uint32_t>(v));
    window.setCardinals(atoms.netWmStrutPartial, XCB_ATOM_CARDINAL, values);
    values.resize(4);
    window.setCardinals(atoms.netWmStrut, XCB_ATOM_CARDINAL, values);
}

}  // namespace morvel::x11
