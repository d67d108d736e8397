// Bytes.
#pragma once

#include <vector>

#include "Platform/Mac/apple/Object.h"

namespace morvel::mac {

class NSData : public NSObject {
public:
    static constexpr const char* kClass = "NSData";
    using NSObject::NSObject;

    static NSData from(const std::vector<std::uint8_t>& bytes) {
        return send<NSData>(ClassOf<NSData>{}, "dataWithBytes:length:"_sel, static_cast<const void*>(bytes.data()),
                            static_cast<NSUInteger>(bytes.size()));
    }
    NSUInteger length() const { return send<NSUInteger>(*this, "length"_sel); }
    std::vector<std::uint8_t> bytes() const {
        const auto* const first = static_cast<const std::uint8_t*>(send<const void*>(*this, "bytes"_sel));
        return first ? std::vector<std::uint8_t>(first, first + length()) : std::vector<std::uint8_t>();
    }
};

}  // namespace morvel::mac
