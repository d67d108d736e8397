// Moving values between a message and the stores.
#include "Invocation.h"

namespace morvel::mac::checked {

std::size_t sizeOfEncoding(const std::string& encoding) {
    switch (encoding.front()) {
        case 'v':
            return 0;
        case 'c':
        case 'B':
            return 1;
        case 'i':
        case 'I':
        case 'f':
            return 4;
        case '{':
            break;
        default:
            return 8;
    }
    // The structs in use are made of doubles and 64-bit integers, nested or not.
    std::size_t fields = 0;
    bool inName = false;
    for (const char c : encoding) {
        if (c == '{') inName = true;
        if (!inName && c != '}') ++fields;
        if (c == '=') inName = false;
    }
    return fields * 8;
}

Value Invocation::stored(std::size_t index) const {
    Value value{types_.arguments[index], {}};
    const auto* const bytes = static_cast<const unsigned char*>(arguments_[index]);
    value.bytes.assign(bytes, bytes + sizeOfEncoding(value.encoding));
    return value;
}

void Invocation::answerObject(const Id& object) {
    answer<RawObject>(object ? objc_autorelease(objc_retain(object.raw())) : nullptr);
}

void Invocation::answerStored(const Value& value) {
    if (result_ && value.encoding == types_.result) std::memcpy(result_, value.bytes.data(), value.bytes.size());
}

}  // namespace morvel::mac::checked
