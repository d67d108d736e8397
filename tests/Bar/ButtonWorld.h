// Just enough of a desktop to press a bar's buttons in: surfaces that show view trees and pass the pointer on, a
// toolkit that holds menus and popovers open until a test acts, icons, and running applications.
#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Bar/Buttons/AppCommands.h"
#include "Theme/ButtonServices.h"
#include "UI/EventRouter.h"
#include "UI/Popover.h"
#include "Util/Signal.h"
#include "sim/FakeMainLoop.h"

namespace morvel::sim {

/// A window: shows one view tree, records what changes in it, and passes the pointer's doings on.
class Surface : public ui::ViewHost {
public:
    explicit Surface(ui::View& root) : root_(root), router_(root) { root_.setHost(this); }
    ~Surface() override { root_.setHost(nullptr); }

    void viewAttached(ui::View&) override {}
    void viewWillDetach(ui::View& view) override { router_.viewWillDetach(view); }
    void viewChanged(ui::View& view, ui::ViewChange change) override { changes.emplace_back(&view, change); }
    void layoutNeeded() override { ++layoutRequests; }

    void layout() { root_.layoutIfNeeded(); }
    void move(const ui::View& view, double dx = 0) { router_.pointerMoved(middle(view, dx)); }
    void press(const ui::View& view, ui::MouseButton button = ui::MouseButton::Left) {
        router_.buttonPressed({button, middle(view)});
    }
    void release(const ui::View& view, double dx = 0, ui::MouseButton button = ui::MouseButton::Left) {
        router_.buttonReleased({button, middle(view, dx)});
    }
    void click(const ui::View& view) {
        layout();
        const Point<ViewSpace> at = middle(view);
        router_.pointerMoved(at);
        router_.buttonPressed({ui::MouseButton::Left, at});
        router_.buttonReleased({ui::MouseButton::Left, at});
    }
    void rightClick(const ui::View& view) {
        layout();
        press(view, ui::MouseButton::Right);
    }

    std::vector<std::pair<ui::View*, ui::ViewChange>> changes;
    int layoutRequests = 0;

private:
    static Point<ViewSpace> middle(const ui::View& view, double dx = 0) {
        const Point<ViewSpace> center = view.boundsInRoot().center();
        return {center.x + dx, center.y};
    }

    ui::View& root_;
    ui::EventRouter router_;
};

class HeldToolkit : public ui::Toolkit {
public:
    struct OpenMenu {
        ui::Menu menu;
        std::function<void()> closed;
    };
    /// The one popover of a test while it is shown.
    struct OpenPopover {
        ui::View& content;
        Surface surface;
        ui::Edge edge;
        Size size;
    };

    void setAppearance(ui::Appearance) override {}
    std::unique_ptr<ui::PanelPeer> makePanel(const ui::PanelOptions&, ui::View&) override { return nullptr; }
    std::unique_ptr<ui::PopoverPeer> makePopover(ui::View& content, std::function<void()> closed,
                                                 ui::PopoverKind) override {
        return std::make_unique<Peer>(*this, content, std::move(closed));
    }
    void popUpMenu(ui::Menu menu, ui::View&, Point<ViewSpace>, std::function<void()> closed) override {
        openMenu = OpenMenu{std::move(menu), std::move(closed)};
    }
    void beginDrag(ui::View&, ui::DragItem, std::function<void(ui::DragOperation)> ended) override {
        ended(ui::DragOperation::None);
    }
    std::unique_ptr<ui::FormWindowPeer> makeFormWindow(ui::Form) override { return nullptr; }
    Size textSize(std::string_view text, const ui::Font& font) override {
        ++measurements;
        return {static_cast<double>(text.size()) * font.size / 2, font.size + 3};
    }
    std::optional<Point<ScreenSpace>> pointerLocation() override { return std::nullopt; }
    bool isMouseButtonDown() override { return false; }
    bool reducesMotion() override { return false; }
    Subscription observeOutsidePresses(std::function<void()> pressed) override {
        return outsidePresses.subscribe(std::move(pressed));
    }

    /// Chooses by title, in the submenus too; false when there is no such item that can be chosen.
    bool choose(const std::string& title) {
        if (!openMenu) return false;
        const OpenMenu menu = *std::exchange(openMenu, std::nullopt);
        const ui::MenuItem* item = find(menu.menu, title);
        if (item && item->action) item->action();
        menu.closed();
        return item && item->action;
    }

    std::optional<OpenMenu> openMenu;
    std::unique_ptr<OpenPopover> openPopover;
    Signal<> outsidePresses;
    int measurements = 0;

private:
    class Peer : public ui::PopoverPeer {
    public:
        Peer(HeldToolkit& toolkit, ui::View& content, std::function<void()> closed)
            : toolkit_(toolkit), content_(content), closed_(std::move(closed)) {}
        ~Peer() override { toolkit_.openPopover.reset(); }
        void show(ui::View&, ui::Edge edge, Size size) override {
            toolkit_.openPopover.reset();
            toolkit_.openPopover.reset(new OpenPopover{content_, Surface(content_), edge, size});
            toolkit_.openPopover->surface.layout();
        }
        void resize(Size size) override { toolkit_.openPopover->size = size; }
        void close() override {
            toolkit_.openPopover.reset();
            closed_();
        }

    private:
        HeldToolkit& toolkit_;
        ui::View& content_;
        std::function<void()> closed_;
    };

    static const ui::MenuItem* find(const ui::Menu& menu, const std::string& title) {
        for (const ui::MenuItem& item : menu) {
            if (item.title == title) return &item;
            if (const ui::MenuItem* inner = find(item.submenu, title)) return inner;
        }
        return nullptr;
    }
};

class PlainIcons : public Icons {
public:
    struct Picture : ui::Image {
        explicit Picture(Size s) : size_(s) {}
        Size size() const override { return size_; }
        Size size_;
    };
    ui::ImageRef applicationIcon(const std::string&) override { return empty({64, 64}); }
    ui::ImageRef processIcon(ProcessID) override { return empty({64, 64}); }
    ui::ImageRef fileIcon(const std::string&) override { return empty({64, 64}); }
    ui::ImageRef symbol(const std::string& name, double pointSize) override {
        symbols.emplace(name, pointSize);
        return empty({pointSize, pointSize});
    }
    ui::ImageRef empty(Size size) override { return std::make_shared<Picture>(size); }
    ui::ImageRef baked(const ui::ImageRef&, Size size) override { return empty(size); }

    std::set<std::pair<std::string, double>> symbols;  // that were asked for
};

/// Running applications by process; what is asked of them is only recorded.
class RecordingWorkspace : public Workspace {
public:
    std::vector<RunningApplication> runningApplications() override { return {}; }
    std::optional<RunningApplication> runningApplication(ProcessID pid) override {
        const auto at = running.find(pid);
        if (at == running.end()) return std::nullopt;
        return RunningApplication{.pid = pid, .instance = at->second, .bundleID = {}, .localizedName = {}};
    }
    std::optional<ProcessID> frontmostApplication() override { return std::nullopt; }
    std::optional<ProcessID> menuBarOwner() override { return std::nullopt; }
    ProcessID ownProcess() override { return ProcessID{2}; }
    void activate(ProcessID) override {}
    void terminate(ProcessID pid) override { calls.push_back("terminate " + std::to_string(pid.value)); }
    void forceTerminate(ProcessID pid) override { calls.push_back("force " + std::to_string(pid.value)); }
    bool isProcessAlive(ProcessID pid) override { return running.contains(pid); }
    std::optional<std::string> locate(const std::string& bundleID) override {
        if (bundleID == "gone") return std::nullopt;
        return "/Applications/" + bundleID;
    }
    std::string fileManager() override { return "files"; }
    std::string homeFolder() override { return "/home"; }
    void openApplication(const std::string&, const OpenApplication&) override {}
    void openFile(const std::string&) override {}
    void openPage(const std::string&) override {}
    void revealInFileManager(const std::string& path) override { calls.push_back("reveal " + path); }
    Subscription observeLaunched(ApplicationNotice) override { return {}; }
    Subscription observeTerminated(ApplicationNotice) override { return {}; }
    Subscription observeActivated(ApplicationNotice) override { return {}; }
    Subscription observeActiveSpaceChanged(std::function<void()>) override { return {}; }

    std::map<ProcessID, uint64_t> running;  // with the instance
    std::vector<std::string> calls;
};

struct ButtonWorld {
    FakeMainLoop loop;
    HeldToolkit toolkit;
    PlainIcons icons;
    IconCache iconCache{icons, loop};
    RecordingWorkspace workspace;
    AppCommands commands{workspace, loop};
    int pins = 0;  ///< how often the bar is kept shown

    ButtonServices services() { return {toolkit, icons, iconCache}; }
};

}  // namespace morvel::sim
