#include "Platform/Linux/Windows/XAccessibility.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_set>
#include <utility>

#include "Platform/AXNames.h"
#include "Platform/ProcessProbe.h"

namespace morvel::x11 {

namespace {

// The role of docks, desktops and whatever else is no window to the person.
constexpr std::string_view kFurnitureRole = "AXUnknown";

constexpr std::array kNotifications{ax::kWindowCreated,     ax::kUIElementDestroyed,  ax::kTitleChanged,
                                    ax::kWindowMoved,       ax::kWindowResized,       ax::kFocusedWindowChanged,
                                    ax::kMainWindowChanged, ax::kApplicationActivated};

AXAnswer textAnswer(std::string_view text) {
    return AXValue(std::string(text));
}

std::string_view subroleOf(const ClientWindow& client) {
    if (!client.isAdmissible()) return ax::kUnknownSubrole;
    switch (client.type()) {
        case ClientType::Dialog:
            return ax::kDialogSubrole;
        case ClientType::Utility:
            return ax::kFloatingWindowSubrole;
        default:
            return ax::kStandardWindowSubrole;
    }
}

const XElement& implOf(const AXElement& element) {
    return static_cast<const XElement&>(element.impl());
}

}  // namespace

class XAccessibility::Observer : public AXObserver {
public:
    Observer(Emitted& emitted, ProcessID pid, Notice notice)
        : subscription_(emitted.subscribe(
              [this, pid, notice = std::move(notice)](ProcessID of, const AXElement& about, std::string_view name) {
                  if (of == pid && isWanted(implOf(about), name)) notice(about, name);
              })) {}

    AXError addNotification(const AXElement& element, std::string_view name) override {
        const auto known = std::find(kNotifications.begin(), kNotifications.end(), name);
        if (known == kNotifications.end()) return AXError::Unsupported;
        const XElement& subject = implOf(element);
        Wanted& wanted = wanted_[static_cast<size_t>(known - kNotifications.begin())];
        const bool isNew = subject.kind == XElement::Kind::Application ? !std::exchange(wanted.ofAll, true)
                                                                       : wanted.ofWindows.insert(subject.serial).second;
        return isNew ? AXError::Success : AXError::AlreadyRegistered;
    }

private:
    struct Wanted {
        bool ofAll = false;                      // subscribed on the application, which counts for all its windows
        std::unordered_set<uint64_t> ofWindows;  // their serials
    };

    bool isWanted(const XElement& about, std::string_view name) {
        const auto known = std::find(kNotifications.begin(), kNotifications.end(), name);
        Wanted& wanted = wanted_[static_cast<size_t>(known - kNotifications.begin())];
        const bool isForWindow = wanted.ofWindows.contains(about.serial);
        if (name == ax::kUIElementDestroyed) forget(about.serial);
        return wanted.ofAll || isForWindow;
    }

    void forget(uint64_t serial) {
        for (Wanted& wanted : wanted_) wanted.ofWindows.erase(serial);
    }

    std::array<Wanted, kNotifications.size()> wanted_;  // in the names' order
    Subscription subscription_;
};

XAccessibility::XAccessibility(ClientWindows& clients, WindowRequests& requests, XScreens& screens,
                               XWorkspace& workspace)
    : clients_(clients), requests_(requests), screens_(screens), newWindowMenu_(workspace) {
    subscriptions_.push_back(
        clients_.observe([this](const ClientWindow& client, ClientChange change) { clientChanged(client, change); }));
    subscriptions_.push_back(clients_.observeActive([this] { activeChanged(); }));
}

AXElement XAccessibility::applicationElement(ProcessID pid) {
    return AXElement(std::make_shared<XElement>(XElement::Kind::Application, pid, XCB_WINDOW_NONE, 0));
}

AXElement XAccessibility::windowElement(const ClientWindow& client) const {
    return AXElement(std::make_shared<XElement>(XElement::Kind::Window, client.pid, client.window, client.serial));
}

const ClientWindow* XAccessibility::find(const XElement& element) const {
    const ClientWindow* client = clients_.find(element.window);
    return client && client->serial == element.serial ? client : nullptr;
}

AXAnswer XAccessibility::attribute(const AXElement& element, std::string_view name) {
    const XElement& impl = implOf(element);
    if (impl.kind == XElement::Kind::Application) return applicationAttribute(impl.pid, name);
    if (NewWindowMenu::isPart(impl)) return newWindowMenu_.attribute(impl, name);
    const ClientWindow* client = find(impl);
    if (!client) return AXError::InvalidElement;
    if (impl.kind == XElement::Kind::Window) return windowAttribute(*client, name);
    return name == ax::kRole ? textAnswer(ax::kButtonRole) : AXAnswer(AXError::Unsupported);
}

AXAnswer XAccessibility::applicationAttribute(ProcessID pid, std::string_view name) {
    if (name == ax::kRole) return textAnswer(ax::kApplicationRole);
    if (name == ax::kWindows) {
        std::vector<AXElement> windows;
        for (const ClientWindow* client : clients_.all())
            if (client->pid == pid && client->isAdmissible()) windows.push_back(windowElement(*client));
        return AXValue(std::move(windows));
    }
    if (name == ax::kFocusedWindow) {
        const ClientWindow* focused = focusedWindow(pid);
        return focused ? AXAnswer(AXValue(windowElement(*focused))) : AXAnswer(AXError::NoValue);
    }
    if (name == ax::kMenuBar) return newWindowMenu_.menuBar(pid);
    return AXError::Unsupported;
}

AXAnswer XAccessibility::windowAttribute(const ClientWindow& client, std::string_view name) {
    const Rect<AXSpace> frame = frameOf(client);
    const auto isActive = [&] { return clients_.active() == &client; };
    if (name == ax::kRole) return textAnswer(client.isAdmissible() ? ax::kWindowRole : kFurnitureRole);
    if (name == ax::kSubrole) return textAnswer(subroleOf(client));
    if (name == ax::kTitle) return textAnswer(client.title());
    if (name == ax::kPosition) return AXValue(frame.origin());
    if (name == ax::kSize) return AXValue(frame.size());
    if (name == ax::kMinimized) return AXValue(clients_.isMinimized(client));
    if (name == ax::kFullScreen) return AXValue(client.isFullscreen);
    if (name == ax::kMain || name == ax::kFocused) return AXValue(isActive());
    if (name == ax::kCloseButton && client.isAdmissible())
        return AXValue(AXElement(
            std::make_shared<XElement>(XElement::Kind::CloseButton, client.pid, client.window, client.serial)));
    return AXError::Unsupported;
}

const ClientWindow* XAccessibility::focusedWindow(ProcessID pid) const {
    const ClientWindow* active = clients_.active();
    if (active && active->pid == pid) return active;
    const auto last = lastFocused_.find(pid);
    const ClientWindow* client = last == lastFocused_.end() ? nullptr : clients_.find(last->second);
    return client && client->pid == pid ? client : nullptr;
}

AXError XAccessibility::setAttribute(const AXElement& element, std::string_view name, const AXValue& value) {
    const XElement& impl = implOf(element);
    if (impl.kind != XElement::Kind::Window) return AXError::Unsupported;
    const ClientWindow* client = find(impl);
    if (!client) return AXError::InvalidElement;
    const auto* flag = std::get_if<bool>(&value);
    const auto* position = std::get_if<Point<AXSpace>>(&value);
    const auto* size = std::get_if<Size>(&value);
    if (name == ax::kMinimized && flag) return setMinimized(*client, *flag);
    // Becoming the main window comes with being raised, which is asked for on its own.
    if ((name == ax::kMain || name == ax::kFocused) && flag) return AXError::Success;
    if (name == ax::kPosition && position) return setPosition(*client, *position);
    if (name == ax::kSize && size) return setSize(*client, *size);
    return AXError::Unsupported;
}

AXError XAccessibility::setMinimized(const ClientWindow& client, bool isMinimized) {
    if (isMinimized)
        requests_.minimize(client);
    else if (clients_.isMinimized(client))
        requests_.activate(client);
    return AXError::Success;
}

AXError XAccessibility::setPosition(const ClientWindow& client, Point<AXSpace> position) {
    if (!std::isfinite(position.x) || !std::isfinite(position.y)) return AXError::Failure;
    requests_.setPosition(client, screens_.mainFrame().toRoot(position));
    return AXError::Success;
}

AXError XAccessibility::setSize(const ClientWindow& client, Size size) {
    if (!std::isfinite(size.width) || !std::isfinite(size.height)) return AXError::Failure;
    requests_.setSize(client, size);
    return AXError::Success;
}

Rect<AXSpace> XAccessibility::frameOf(const ClientWindow& client) const {
    return screens_.mainFrame().toAX(client.frame());
}

AXError XAccessibility::performAction(const AXElement& element, std::string_view name) {
    const XElement& impl = implOf(element);
    if (NewWindowMenu::isPart(impl)) return newWindowMenu_.performAction(impl, name);
    const ClientWindow* client = impl.kind == XElement::Kind::Application ? nullptr : find(impl);
    if (!client) return impl.kind == XElement::Kind::Application ? AXError::Unsupported : AXError::InvalidElement;
    if (impl.kind == XElement::Kind::Window && name == ax::kRaise) {
        requests_.activate(*client);
        return AXError::Success;
    }
    if (impl.kind == XElement::Kind::CloseButton && name == ax::kPress) {
        requests_.close(*client);
        return AXError::Success;
    }
    return AXError::Unsupported;
}

std::optional<WindowNumber> XAccessibility::windowNumber(const AXElement& element) {
    const XElement& impl = implOf(element);
    if (impl.kind != XElement::Kind::Window) return std::nullopt;
    return WindowNumber(impl.window);
}

std::unique_ptr<AXObserver> XAccessibility::makeObserver(ProcessID pid, Notice notice) {
    const auto all = clients_.all();
    const bool hasWindows = std::any_of(all.begin(), all.end(), [pid](const auto* c) { return c->pid == pid; });
    if (!hasWindows && !killProbe(pid)) return nullptr;
    return std::make_unique<Observer>(emitted_, pid, std::move(notice));
}

void XAccessibility::clientChanged(const ClientWindow& client, ClientChange change) {
    const AXElement element = windowElement(client);
    switch (change) {
        case ClientChange::Added:
            if (client.isAdmissible()) emit(client.pid, element, ax::kWindowCreated);
            break;
        case ClientChange::Admission:
            emit(client.pid, element, client.isAdmissible() ? ax::kWindowCreated : ax::kUIElementDestroyed);
            break;
        case ClientChange::Removed:
            if (const auto last = lastFocused_.find(client.pid);
                last != lastFocused_.end() && last->second == client.window)
                lastFocused_.erase(last);
            emit(client.pid, element, ax::kUIElementDestroyed);
            break;
        case ClientChange::Title:
            emit(client.pid, element, ax::kTitleChanged);
            break;
        case ClientChange::Moved:
            emit(client.pid, element, ax::kWindowMoved);
            break;
        // Full screen has no notice of its own; who is told of a new size reads it along.
        case ClientChange::Resized:
        case ClientChange::Fullscreen:
            emit(client.pid, element, ax::kWindowResized);
            break;
        case ClientChange::Desktop:
        case ClientChange::Strut:
            break;
    }
}

void XAccessibility::activeChanged() {
    const ClientWindow* found = clients_.active();
    const auto active = found ? std::optional(*found) : std::nullopt;
    const auto before = std::exchange(activeProcess_, active ? std::optional(active->pid) : std::nullopt);
    if (active && active->isAdmissible()) {
        lastFocused_[active->pid] = active->window;
        if (before != active->pid) emit(active->pid, applicationElement(active->pid), ax::kApplicationActivated);
        emit(active->pid, windowElement(*active), ax::kFocusedWindowChanged);
    } else if (before) {
        // To whoever had the focus: it is now on something that is not a window, so that no window keeps its mark.
        emit(*before, applicationElement(*before), ax::kFocusedWindowChanged);
    }
}

void XAccessibility::emit(ProcessID pid, const AXElement& element, std::string_view name) {
    emitted_.emit(pid, element, name);
}

}  // namespace morvel::x11
