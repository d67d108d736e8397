#include "Platform/Linux/UI/Drag/DragContents.h"

#include "Platform/Linux/UI/Drag/UriList.h"

namespace morvel::x11 {

namespace {

constexpr size_t kMaxFetched = 4;

// Types of programs like ours are names in reverse domain notation; a media type has a slash, and what old X programs
// speak has neither slash nor dot. Files have one name only on X, so nobody offers them under another.
bool isTypeIdentifier(std::string_view name) {
    return name.find('.') != name.npos && name.find('/') == name.npos && name != ui::kFileURLType;
}

}  // namespace

DragContents DragContents::offered(const std::vector<std::string>& names) {
    DragContents contents;
    for (const std::string& name : names) {
        if (contents.texts_.size() >= kMaxOfferedTypes) break;
        if (name == kUriListType)
            contents.texts_.try_emplace(std::string(ui::kFileURLType));
        else if (name != ui::kFileURLType && name != ui::kLegacyFilenamesType)
            contents.texts_.try_emplace(name);
    }
    return contents;
}

DragContents DragContents::of(const ui::DragItem& item) {
    DragContents contents;
    contents.texts_[item.type] = item.text;
    return contents;
}

std::optional<std::string> DragContents::string(std::string_view type) const {
    const auto found = texts_.find(type);
    return found == texts_.end() ? std::nullopt : found->second;
}

std::vector<std::string> DragContents::namesToFetch() const {
    std::vector<std::string> names;
    if (hasFileURLs()) names.emplace_back(kUriListType);
    for (const auto& [type, text] : texts_)
        if (isTypeIdentifier(type) && !text && names.size() < kMaxFetched) names.push_back(type);
    return names;
}

void DragContents::fetched(std::string_view name, std::string_view bytes) {
    if (name != kUriListType) {
        if (const auto found = texts_.find(name); found != texts_.end()) found->second = std::string(bytes);
        return;
    }
    const auto files = texts_.find(ui::kFileURLType);
    if (files == texts_.end()) return;
    files->second = std::string(bytes.substr(0, bytes.find_first_of("\r\n")));
    paths_ = localPathsIn(bytes);
}

}  // namespace morvel::x11
