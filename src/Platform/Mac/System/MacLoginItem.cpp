#include "Platform/Mac/System/MacLoginItem.h"

#include "Platform/Mac/apple/SMAppService.h"

namespace morvel::mac {

void MacLoginItem::setRegistered(bool isRegistered) {
    const SMAppService service = SMAppService::mainApp();
    ErrorOut error;
    const bool isDone = isRegistered ? service.registerService(error) : service.unregisterService(error);
    if (!isDone) log_.error("The login item could not be changed: " + error.text());
}

}  // namespace morvel::mac
