// What the system starts at login.
#pragma once

#include "Platform/Mac/apple/Foundation/NSError.h"

namespace morvel::mac {

/// Since macOS 13; before, the service is empty and nothing can be registered.
class SMAppService : public NSObject {
public:
    static constexpr const char* kClass = "SMAppService";
    using NSObject::NSObject;

    /// This application itself.
    static SMAppService mainApp() { return send<SMAppService>(ClassOf<SMAppService>{}, "mainAppService"_sel); }
    bool registerService(ErrorOut& error) const {
        return send<bool>(*this, "registerAndReturnError:"_sel, error.receive());
    }
    bool unregisterService(ErrorOut& error) const {
        return send<bool>(*this, "unregisterAndReturnError:"_sel, error.receive());
    }
};

}  // namespace morvel::mac
