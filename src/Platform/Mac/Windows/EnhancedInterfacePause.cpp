// Writes past the messenger: what was switched off is switched on again even if the application hangs meanwhile.
#include "Platform/Mac/Windows/EnhancedInterfacePause.h"

namespace morvel::mac {

namespace {

/// Some applications store the flag as a number.
bool isOn(CFTypeRef flag) {
    return boolFrom(flag).value_or(false) || integerFrom(flag).value_or(0) != 0;
}

}  // namespace

EnhancedInterfacePause::EnhancedInterfacePause(CFRef<AXUIElementRef> application, CFRef<CFTypeRef> previous) {
    if (!application || !isOn(previous.get())) return;
    application_ = std::move(application);
    previous_ = std::move(previous);
    AXUIElementSetAttributeValue(application_.get(), attribute().get(), kCFBooleanFalse);
}

EnhancedInterfacePause::~EnhancedInterfacePause() {
    if (application_) AXUIElementSetAttributeValue(application_.get(), attribute().get(), previous_.get());
}

}  // namespace morvel::mac
