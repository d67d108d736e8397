// Each question becomes one call of the system, asked through the messenger.
#include "Platform/Mac/Windows/MacAccessibility.h"

#include "Platform/AXNames.h"
#include "Platform/Mac/Windows/AXConversion.h"
#include "Platform/Mac/Windows/EnhancedInterfacePause.h"
#include "Platform/Mac/Windows/MacElement.h"
#include "Platform/Mac/Windows/MacObserver.h"
#include "Platform/Mac/apple/AppKit/NSWorkspace.h"
#include "Platform/Mac/apple/CoreGraphics.h"

namespace morvel::mac {

bool MacAccessibility::isTrusted() const {
    return AXIsProcessTrusted() != 0;
}

bool MacAccessibility::isTrustedAfterPrompt() {
    const void* key = kAXTrustedCheckOptionPrompt;
    const void* value = kCFBooleanTrue;
    const auto options = CFRef<CFDictionaryRef>::adopt(
        CFDictionaryCreate(nullptr, &key, &value, 1, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    return AXIsProcessTrustedWithOptions(options.get()) != 0;
}

void MacAccessibility::openPermissionSettings() {
    const NSURL url = NSURL::parse("x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility");
    if (url) NSWorkspace::shared().openURL(url);
}

AXElement MacAccessibility::applicationElement(ProcessID pid) {
    return MacElement::wrap(messenger_.application(pid));
}

AXAnswer MacAccessibility::attribute(const AXElement& element, std::string_view name) {
    const MacElement& asked = MacElement::of(element);
    const auto attribute = cfString(name);
    if (!asked.reference() || !attribute) return morvel::AXError::InvalidElement;
    CFRef<CFTypeRef> value;
    const morvel::AXError answer = messenger_.ask(asked.pid(), [&] {
        return AXUIElementCopyAttributeValue(asked.reference(), attribute.get(), value.receive());
    });
    if (answer != morvel::AXError::Success) return answer;
    auto known = axValueFrom(value.get());
    if (!known) return morvel::AXError::NoValue;
    return std::move(*known);
}

morvel::AXError MacAccessibility::setAttribute(const AXElement& element, std::string_view name, const AXValue& value) {
    const MacElement& target = MacElement::of(element);
    const auto attribute = cfString(name);
    const auto object = cfValueFrom(value);
    if (!target.reference() || !attribute || !object) return morvel::AXError::InvalidElement;
    const auto write = [&] { return AXUIElementSetAttributeValue(target.reference(), attribute.get(), object.get()); };
    if (name != ax::kPosition && name != ax::kSize) return messenger_.ask(target.pid(), write);

    auto application = messenger_.application(target.pid());
    CFRef<CFTypeRef> enhanced;
    const morvel::AXError answer = messenger_.ask(target.pid(), [&] {
        return AXUIElementCopyAttributeValue(application.get(), EnhancedInterfacePause::attribute().get(),
                                             enhanced.receive());
    });
    if (answer == morvel::AXError::CannotComplete) return answer;
    const EnhancedInterfacePause pause(std::move(application), std::move(enhanced));
    return messenger_.ask(target.pid(), write);
}

morvel::AXError MacAccessibility::performAction(const AXElement& element, std::string_view name) {
    const MacElement& target = MacElement::of(element);
    const auto action = cfString(name);
    if (!target.reference() || !action) return morvel::AXError::InvalidElement;
    return messenger_.ask(target.pid(), [&] { return AXUIElementPerformAction(target.reference(), action.get()); });
}

void MacAccessibility::startAction(const AXElement& element, std::string_view name) {
    const MacElement& target = MacElement::of(element);
    if (!target.reference()) return;
    actions_.run([element, name = std::string(name)] {
        const auto action = cfString(name);
        if (action) AXUIElementPerformAction(MacElement::of(element).reference(), action.get());
    });
}

std::optional<WindowNumber> MacAccessibility::windowNumber(const AXElement& element) {
    const MacElement& asked = MacElement::of(element);
    auto* const getWindow = getWindow_.get();
    if (!getWindow || !asked.reference()) return std::nullopt;
    std::uint32_t number = kCGNullWindowID;
    const morvel::AXError answer = messenger_.ask(asked.pid(), [&] { return getWindow(asked.reference(), &number); });
    if (answer != morvel::AXError::Success || number == kCGNullWindowID) return std::nullopt;
    return WindowNumber(number);
}

std::unique_ptr<morvel::AXObserver> MacAccessibility::makeObserver(ProcessID pid, Notice notice) {
    return MacObserver::make(messenger_, pid, std::move(notice));
}

}  // namespace morvel::mac
