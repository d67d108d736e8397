// Pasteboards: what is dragged, by us or by any other program.
#pragma once

#include <string_view>

#include "Platform/Mac/apple/Foundation/NSArray.h"
#include "Platform/Mac/apple/Foundation/NSDictionary.h"
#include "Platform/Mac/apple/Foundation/NSNumber.h"
#include "Platform/Mac/apple/Foundation/NSURL.h"

namespace morvel::mac {

extern "C" {
extern const objc::RawObject NSPasteboardURLReadingFileURLsOnlyKey;
}

class NSPasteboard : public NSObject {
public:
    static constexpr const char* kClass = "NSPasteboard";
    using NSObject::NSObject;

    NSArray types() const { return send<NSArray>(*this, "types"_sel); }
    /// Empty when the type is not there or its data is no text.
    NSString stringForType(std::string_view type) const {
        return send<NSString>(*this, "stringForType:"_sel, NSString::from(type));
    }
    /// An array, a dictionary, a string or a number, as its writer chose; empty for anything that is no property list.
    Id propertyListForType(std::string_view type) const {
        return send<Id>(*this, "propertyListForType:"_sel, NSString::from(type));
    }
    bool canReadFileURLs() const {
        return send<bool>(*this, "canReadObjectForClasses:options:"_sel, urlClass(), fileURLsOnly());
    }
    /// Of NSURLs.
    NSArray readFileURLs() const {
        return send<NSArray>(*this, "readObjectsForClasses:options:"_sel, urlClass(), fileURLsOnly());
    }

private:
    static NSArray urlClass() {
        return NSArray::from<Id>({Id(reinterpret_cast<objc::RawObject>(ClassOf<NSURL>::get()))});
    }
    static NSDictionary fileURLsOnly() {
        return NSDictionary::from({{NSString(NSPasteboardURLReadingFileURLsOnlyKey), NSNumber::from(true)}});
    }
};

class NSPasteboardItem : public NSObject {
public:
    static constexpr const char* kClass = "NSPasteboardItem";
    using NSObject::NSObject;

    bool setString(const NSString& text, const NSString& type) const {
        return send<bool>(*this, "setString:forType:"_sel, text, type);
    }
};

}  // namespace morvel::mac
