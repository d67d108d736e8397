#include "Platform/Linux/Keyboard/KeyReader.h"

#include "Platform/Linux/System/Module.h"
#include "Platform/Linux/System/XConnection.h"

namespace morvel::x11 {

std::unique_ptr<KeyReader> makeKeyReader(XConnection& connection) {
    void* entry = loadModule("morvel-keyboard.so", kMakeKeyReader, connection.log());
    if (!entry) return nullptr;
    std::unique_ptr<KeyReader> reader(reinterpret_cast<MakeKeyReader*>(entry)(MORVEL_VERSION, connection.get()));
    if (!reader) connection.log().error("The module for keyboards is of another version.");
    return reader;
}

}  // namespace morvel::x11
