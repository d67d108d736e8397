// The list is made before main, so it is a function's static and asks nothing of the runtime.
#include "WrittenMessages.h"

namespace morvel::mac::checked {

std::vector<objc::WrittenMessage>& writtenMessages() {
    static std::vector<objc::WrittenMessage> list;
    return list;
}

}  // namespace morvel::mac::checked

namespace morvel::mac::objc {

bool checkedNoteMessage(const WrittenMessage& message) {
    checked::writtenMessages().push_back(message);
    return true;
}

}  // namespace morvel::mac::objc
