// What every wrapper starts from: the bridge's words, and NSObject.
//
// A wrapper is a value that holds a strong reference (objc::Id); its members send exactly one message each and are
// named after it. kClass is the class that factories and `as` refer to.
#pragma once

#include <cstdint>

#include "Platform/Mac/objc/Block.h"
#include "Platform/Mac/objc/Id.h"
#include "Platform/Mac/objc/Send.h"

namespace morvel::mac {

using objc::Block;
using objc::ClassOf;
using objc::create;
using objc::Id;
using objc::Selector;
using objc::send;
using objc::sendOwned;
using namespace objc::literals;

using NSInteger = std::int64_t;
using NSUInteger = std::uint64_t;

class NSObject : public Id {
public:
    static constexpr const char* kClass = "NSObject";
    using Id::Id;
    /// Explicit, for wrappers inherit it: a window must not pass for a view.
    explicit NSObject(const Id& other) : Id(other) {}
};

}  // namespace morvel::mac
