// What other programs hand over in a drag: lists of files, and texts under the types of our own buttons. The first line
// is a list of the types that are offered; what follows is the answer under each of them.
#include <sstream>

#include "Bar/Drag/RunningWindowDrag.h"
#include "Fuzzing.h"
#include "Pinned/PinnedDrop.h"
#include "Platform/Linux/UI/Drag/DragContents.h"
#include "Platform/Linux/UI/Drag/XdndMessages.h"
#include "sim/SimInstalledApplications.h"

namespace morvel {
namespace {

void pinFiles(const ui::DragPasteboard& pasteboard) {
    static sim::SimInstalledApplications applications;
    for (const std::string& path : pasteboard.filePaths()) {
        fuzz::require(path.starts_with('/') && path.find('\0') == path.npos, "a path is absolute and whole");
        if (const auto item = PinnedDrop::itemAt(path, applications))
            fuzz::require(!item->displayName.empty(), "what is pinned has a name");
    }
}

/// The bytes as a message's five items; every field that we write is read back as it was.
void readMessages(std::string_view bytes) {
    x11::MessageData data{};
    bytes.copy(reinterpret_cast<char*>(data.data()), sizeof data);
    const auto enter = x11::XdndEnter::unpacked(data.data());
    const auto position = x11::XdndPosition::unpacked(data.data());
    fuzz::require(x11::XdndEnter::unpacked(enter.packed().data()) == enter, "an enter message is the same");
    fuzz::require(x11::XdndPosition::unpacked(position.packed().data()) == position, "a position is the same");
    x11::XdndStatus::unpacked(data.data());
    x11::XdndFinished::unpacked(data.data());
}

}  // namespace
}  // namespace morvel

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace morvel;
    const std::string_view input = fuzz::textOf(data, size);
    const size_t lineEnd = std::min(input.find('\n'), input.size());
    std::istringstream line{std::string(input.substr(0, lineEnd))};
    std::vector<std::string> types;
    for (std::string type; line >> type;) types.push_back(type);
    const std::string_view answer = input.substr(std::min(lineEnd + 1, input.size()));

    auto contents = x11::DragContents::offered(types);
    for (const std::string& name : contents.namesToFetch()) contents.fetched(name, answer);
    if (const auto window = RunningWindowDrag::window(contents))
        fuzz::require(WindowID::parse(window->text()) == window, "a window's identifier is the same as a text");
    pinFiles(contents);
    readMessages(answer);
    return 0;
}
