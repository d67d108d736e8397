// Every value is asked for its type before it is read.
#include "Platform/Mac/Windows/AXConversion.h"

#include <cmath>

#include "Platform/Mac/Windows/MacElement.h"

namespace morvel::mac {

namespace {

CFRef<CFTypeRef> shared(CFTypeRef borrowed) {
    return CFRef<CFTypeRef>::retain(borrowed);
}
CFRef<CFTypeRef> owned(CFTypeRef created) {
    return CFRef<CFTypeRef>::adopt(created);
}

/// Each overload makes the object of one type of value.
struct ObjectMaker {
    CFRef<CFTypeRef> operator()(bool value) const { return shared(value ? kCFBooleanTrue : kCFBooleanFalse); }
    CFRef<CFTypeRef> operator()(double value) const {
        return owned(CFNumberCreate(nullptr, kCFNumberFloat64Type, &value));
    }
    CFRef<CFTypeRef> operator()(const std::string& value) const { return shared(cfString(value).get()); }
    CFRef<CFTypeRef> operator()(const Point<AXSpace>& value) const {
        const CGPoint point{value.x, value.y};
        return owned(AXValueCreate(kAXValueTypeCGPoint, &point));
    }
    CFRef<CFTypeRef> operator()(const Size& value) const {
        const CGSize size{value.width, value.height};
        return owned(AXValueCreate(kAXValueTypeCGSize, &size));
    }
    CFRef<CFTypeRef> operator()(const AXElement& value) const { return shared(MacElement::of(value).reference()); }
    CFRef<CFTypeRef> operator()(const std::vector<AXElement>& value) const {
        std::vector<const void*> references;
        for (const AXElement& element : value) {
            if (const auto reference = MacElement::of(element).reference()) references.push_back(reference);
        }
        return owned(
            CFArrayCreate(nullptr, references.data(), static_cast<CFIndex>(references.size()), &kCFTypeArrayCallBacks));
    }
};

std::optional<AXValue> unwrapped(AXValueRef value) {
    CGPoint point;
    CGSize size;
    switch (AXValueGetType(value)) {
        case kAXValueTypeCGPoint:
            if (!AXValueGetValue(value, kAXValueTypeCGPoint, &point)) return std::nullopt;
            if (!std::isfinite(point.x) || !std::isfinite(point.y)) return std::nullopt;
            return Point<AXSpace>{point.x, point.y};
        case kAXValueTypeCGSize:
            if (!AXValueGetValue(value, kAXValueTypeCGSize, &size)) return std::nullopt;
            if (!std::isfinite(size.width) || !std::isfinite(size.height)) return std::nullopt;
            return Size{size.width, size.height};
        default:
            return std::nullopt;
    }
}

std::vector<AXElement> elementsIn(CFArrayRef array) {
    std::vector<AXElement> found;
    for (const CFTypeRef element : elementsOf(array)) {
        if (const auto reference = cfCast<AXUIElementRef>(element))
            found.push_back(MacElement::wrap(CFRef<AXUIElementRef>::retain(reference)));
    }
    return found;
}

}  // namespace

std::optional<AXValue> axValueFrom(CFTypeRef value) {
    if (const auto text = stringFrom(value)) return *text;
    if (const auto boolean = boolFrom(value)) return *boolean;
    if (const auto number = doubleFrom(value)) return *number;
    if (const auto wrapped = cfCast<AXValueRef>(value)) return unwrapped(wrapped);
    if (const auto array = cfCast<CFArrayRef>(value)) return elementsIn(array);
    if (const auto element = cfCast<AXUIElementRef>(value))
        return MacElement::wrap(CFRef<AXUIElementRef>::retain(element));
    return std::nullopt;
}

CFRef<CFTypeRef> cfValueFrom(const AXValue& value) {
    return std::visit(ObjectMaker{}, value);
}

morvel::AXError axErrorFrom(AXError error) {
    switch (error) {
        case kAXErrorSuccess:
            return morvel::AXError::Success;
        case kAXErrorNoValue:
            return morvel::AXError::NoValue;
        case kAXErrorAttributeUnsupported:
        case kAXErrorActionUnsupported:
        case kAXErrorNotificationUnsupported:
        case kAXErrorNotImplemented:
            return morvel::AXError::Unsupported;
        case kAXErrorNotificationAlreadyRegistered:
            return morvel::AXError::AlreadyRegistered;
        case kAXErrorCannotComplete:
            return morvel::AXError::CannotComplete;
        case kAXErrorInvalidUIElement:
            return morvel::AXError::InvalidElement;
        case kAXErrorAPIDisabled:
            return morvel::AXError::ApiDisabled;
        default:
            return morvel::AXError::Failure;
    }
}

}  // namespace morvel::mac
