// Why something failed.
#pragma once

#include <string>

#include "Platform/Mac/apple/Foundation/NSString.h"

namespace morvel::mac {

class NSError : public NSObject {
public:
    static constexpr const char* kClass = "NSError";
    using NSObject::NSObject;

    NSString localizedDescription() const { return send<NSString>(*this, "localizedDescription"_sel); }
};

/// What a call that may fail leaves behind. The system writes a reference that it keeps itself until the pool ends.
class ErrorOut {
public:
    objc::RawObject* receive() { return &raw_; }
    /// For the log.
    std::string text() const {
        const std::string described = NSError(raw_).localizedDescription().text();
        return described.empty() ? "no reason was given" : described;
    }

private:
    objc::RawObject raw_ = nullptr;
};

}  // namespace morvel::mac
