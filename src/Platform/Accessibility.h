// Other programs' applications and windows as accessibility elements: attributes, actions and notices.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "Util/Geometry.h"
#include "Util/Identity.h"

namespace morvel {

/// What a host keeps behind an element. Immutable; shared by all copies of the handle.
class AXElementImpl {
public:
    virtual ~AXElementImpl() = default;
    /// Whether both stand for the same thing on the screen; `other` comes from the same host.
    virtual bool equals(const AXElementImpl& other) const = 0;
    virtual size_t hash() const = 0;
};

/// A handle of an element of another program. Cheap to copy. The thing it stands for may be gone at any moment;
/// it then answers with `AXError::InvalidElement`.
class AXElement {
public:
    explicit AXElement(std::shared_ptr<const AXElementImpl> impl) : impl_(std::move(impl)) {}

    const AXElementImpl& impl() const { return *impl_; }
    size_t hash() const { return impl_->hash(); }
    bool operator==(const AXElement& other) const { return impl_ == other.impl_ || impl_->equals(*other.impl_); }

private:
    std::shared_ptr<const AXElementImpl> impl_;  // never null
};

enum class AXError {
    Success,
    NoValue,            ///< asked, and it has none
    Unsupported,        ///< the element does not know this attribute, action or notification
    AlreadyRegistered,  ///< the notification was subscribed before
    CannotComplete,     ///< the application did not answer in time
    InvalidElement,     ///< the element is gone
    ApiDisabled,        ///< the permission is missing
    Failure,            ///< anything else
};

/// An attribute's value. Positions and sizes are in points, positions in AXSpace.
using AXValue = std::variant<bool, double, std::string, Point<AXSpace>, Size, AXElement, std::vector<AXElement>>;

/// The answer to reading an attribute: a value exactly when `error` is Success.
struct AXAnswer {
    AXError error = AXError::Failure;
    std::optional<AXValue> value;

    AXAnswer(AXError e) : error(e) {}                                      // NOLINT(google-explicit-constructor)
    AXAnswer(AXValue v) : error(AXError::Success), value(std::move(v)) {}  // NOLINT(google-explicit-constructor)
};

/// Listens to the notices of one process. Destroying it ends them at once.
class AXObserver {
public:
    virtual ~AXObserver() = default;
    /// Subscribes one notification. Any answer but Success means that it was not newly subscribed.
    virtual AXError addNotification(const AXElement& element, std::string_view name) = 0;
};

/// Main thread only. Every call returns within a bounded time even when the other program hangs. Nothing throws.
class Accessibility {
public:
    virtual ~Accessibility() = default;

    /// Whether this program may use the calls below.
    virtual bool isTrusted() const = 0;
    /// The same, and where it may not, the system asks the person once.
    virtual bool isTrustedAfterPrompt() = 0;
    /// Opens the system's page on which the person grants the permission.
    virtual void openPermissionSettings() = 0;

    virtual AXElement applicationElement(ProcessID pid) = 0;

    virtual AXAnswer attribute(const AXElement& element, std::string_view name) = 0;
    virtual AXError setAttribute(const AXElement& element, std::string_view name, const AXValue& value) = 0;
    virtual AXError performAction(const AXElement& element, std::string_view name) = 0;
    /// The same without waiting, for what an application answers only when a person has done with it, such as a menu or
    /// the question whether to save. What becomes of it is not told.
    virtual void startAction(const AXElement& element, std::string_view name) = 0;

    /// The window server's number of a window element; nothing when it cannot be told.
    virtual std::optional<WindowNumber> windowNumber(const AXElement& element) = 0;

    /// Called on the main thread, never inside a call of this interface, with the element and the notification.
    using Notice = std::function<void(const AXElement& element, std::string_view notification)>;

    /// Nothing when no observer can be made for the process (it is gone, or is not allowed to be observed).
    virtual std::unique_ptr<AXObserver> makeObserver(ProcessID pid, Notice notice) = 0;
};

}  // namespace morvel

template <>
struct std::hash<morvel::AXElement> {
    size_t operator()(const morvel::AXElement& e) const noexcept { return e.hash(); }
};
