// Both directions by type: the stored variant is visited, the object is asked for its class.
#include "Platform/Mac/System/DefaultsObjects.h"

#include "Platform/Mac/apple/CFRef.h"
#include "Platform/Mac/apple/Foundation/NSArray.h"
#include "Platform/Mac/apple/Foundation/NSData.h"
#include "Platform/Mac/apple/Foundation/NSDate.h"
#include "Platform/Mac/apple/Foundation/NSDictionary.h"
#include "Platform/Mac/apple/Foundation/NSNumber.h"

namespace morvel::mac {

namespace {

/// Each overload makes the object of one of the stored types.
struct ObjectMaker {
    Id operator()(bool value) const { return NSNumber::from(value); }
    Id operator()(std::int64_t value) const { return NSNumber::from(NSInteger{value}); }
    Id operator()(double value) const { return NSNumber::from(value); }
    Id operator()(const std::string& value) const { return NSString::from(value); }
    Id operator()(const Date& value) const { return NSDate::since1970(value.time_since_epoch().count()); }
    Id operator()(const Data& value) const { return NSData::from(value); }
    Id operator()(const DefaultsArray& value) const {
        std::vector<Id> elements;
        for (const DefaultsValue& element : value) {
            if (Id object = objectFrom(element)) elements.push_back(std::move(object));
        }
        return NSArray::from(elements);
    }
    Id operator()(const DefaultsDictionary& value) const {
        std::vector<std::pair<NSString, Id>> entries;
        for (const auto& [key, element] : value) {
            NSString name = NSString::from(key);
            Id object = objectFrom(element);
            if (name && object) entries.emplace_back(std::move(name), std::move(object));
        }
        return NSDictionary::from(entries);
    }
};

/// A number object is also a Core Foundation number, which tells more of what it was made from.
DefaultsValue valueOf(const NSNumber& number) {
    const CFTypeRef reference = number.raw();
    if (const auto boolean = boolFrom(reference)) return {*boolean};
    const auto cfNumber = cfCast<CFNumberRef>(reference);
    if (cfNumber && !CFNumberIsFloatType(cfNumber)) {
        if (const auto whole = integerFrom(reference)) return {*whole};
    }
    return {number.doubleValue()};
}

DefaultsValue valueOf(const NSArray& array) {
    DefaultsArray elements;
    for (const Id& element : array.elements<NSObject>()) {
        if (auto value = defaultsValueFrom(element)) elements.push_back(std::move(*value));
    }
    return {std::move(elements)};
}

DefaultsValue valueOf(const NSDictionary& dictionary) {
    DefaultsDictionary entries;
    for (const NSString& key : dictionary.allKeys().elements<NSString>()) {
        if (auto value = defaultsValueFrom(dictionary.at(key))) entries.emplace(key.text(), std::move(*value));
    }
    return {std::move(entries)};
}

}  // namespace

Id objectFrom(const DefaultsValue& value) {
    return std::visit(ObjectMaker{}, value.value);
}

std::optional<DefaultsValue> defaultsValueFrom(const Id& object) {
    if (const auto string = objc::as<NSString>(object)) return DefaultsValue{string.text()};
    if (const auto number = objc::as<NSNumber>(object)) return valueOf(number);
    if (const auto array = objc::as<NSArray>(object)) return valueOf(array);
    if (const auto dictionary = objc::as<NSDictionary>(object)) return valueOf(dictionary);
    if (const auto data = objc::as<NSData>(object)) return DefaultsValue{data.bytes()};
    if (const auto date = objc::as<NSDate>(object)) {
        return DefaultsValue{Date(std::chrono::duration<double>(date.timeIntervalSince1970()))};
    }
    return std::nullopt;
}

}  // namespace morvel::mac
