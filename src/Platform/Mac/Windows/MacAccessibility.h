// Other programs' windows through the system's accessibility interface.
#pragma once

#include "Platform/Mac/System/DispatchQueue.h"
#include "Platform/Mac/Windows/AXMessenger.h"
#include "Platform/Mac/apple/SystemFunction.h"

namespace morvel::mac {

/// A process that does not answer within the messaging time-out is asked nothing more until it answers a probe; until
/// then every call about it is `CannotComplete` at once.
class MacAccessibility : public Accessibility {
public:
    /// The main loop outlives this, and this outlives the observers it makes.
    explicit MacAccessibility(MainLoop& mainLoop) : messenger_(mainLoop) {}

    bool isTrusted() const override;
    bool isTrustedAfterPrompt() override;
    void openPermissionSettings() override;

    AXElement applicationElement(ProcessID pid) override;
    /// A value of a type that the core does not know is `NoValue`.
    AXAnswer attribute(const AXElement& element, std::string_view name) override;
    /// A position or size is written with the application's enhanced interface switched off.
    morvel::AXError setAttribute(const AXElement& element, std::string_view name, const AXValue& value) override;
    morvel::AXError performAction(const AXElement& element, std::string_view name) override;
    /// On a queue, which waits in its stead; a silence is not held against the process.
    void startAction(const AXElement& element, std::string_view name) override;
    std::optional<WindowNumber> windowNumber(const AXElement& element) override;
    std::unique_ptr<morvel::AXObserver> makeObserver(ProcessID pid, Notice notice) override;

private:
    AXMessenger messenger_;
    DispatchQueue actions_{"app.morvel.Morvel.actions", DispatchQueue::Quality::UserInitiated};
    LateFunction<AXError(AXUIElementRef, std::uint32_t*)> getWindow_{"_AXUIElementGetWindow"};
};

}  // namespace morvel::mac
