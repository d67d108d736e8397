// Reading what any program may have written.
#include "Platform/Mac/UI/MacDragPasteboard.h"

#include <algorithm>

#include "Util/BundleIdentifier.h"

namespace morvel::mac {

namespace {

/// What our own buttons are dragged as: each adds one of these to the bundle identifier.
constexpr std::string_view kOwnTypes[] = {".running-window", ".pinned-app"};

/// What other things are dragged as, for a bar that raises windows under any drag: nearly every source offers one of
/// these beside its own types. A registered type is not asked for here; it only lets the drag be heard of.
constexpr std::string_view kCommonTypes[] = {
    "public.utf8-plain-text",                  // text, and with it most of what editors drag
    "NSStringPboardType",                      // text of programs that know only the old names
    "public.rtf",                              // styled text
    "public.html",                             // parts of web pages
    "public.url",                              // links
    "public.tiff",                             // pictures
    "public.png",                              //
    "com.adobe.pdf",                           // drawings
    "com.apple.pasteboard.promised-file-url",  // files that come to be when they are dropped, as attachments of mail
    "com.apple.NSFilePromiseItemMetaData",     // the same, from newer programs
};

bool isAbsolute(const std::string& path) {
    return path.starts_with('/');
}

}  // namespace

bool MacDragPasteboard::hasType(std::string_view type) const {
    // The name alone says nothing here: the system lists the old type for sources that have no files to offer.
    if (type == ui::kLegacyFilenamesType) return static_cast<bool>(contents_.propertyListForType(type));
    const auto types = contents_.types().elements<NSString>();
    return std::ranges::any_of(types, [&](const NSString& listed) { return listed.text() == type; });
}

std::optional<std::string> MacDragPasteboard::string(std::string_view type) const {
    const auto text = objc::as<NSString>(contents_.stringForType(type));
    return text ? std::optional(text.text()) : std::nullopt;
}

std::vector<std::string> MacDragPasteboard::filePaths() const {
    std::vector<std::string> paths;
    for (const NSURL& url : contents_.readFileURLs().elements<NSURL>()) {
        // The system was asked for files alone, but a path of another kind of URL would name a file that is not meant.
        if (url.isFileURL()) paths.push_back(url.path().text());
    }
    if (paths.empty()) {
        const auto names = objc::as<NSArray>(contents_.propertyListForType(ui::kLegacyFilenamesType));
        for (const NSString& name : names.elements<NSString>()) paths.push_back(name.text());
    }
    std::erase_if(paths, [](const std::string& path) { return !isAbsolute(path); });
    return paths;
}

NSArray draggedTypes() {
    std::vector<NSString> types = {NSString::from(ui::kFileURLType), NSString::from(ui::kLegacyFilenamesType)};
    for (const std::string_view own : kOwnTypes) {
        types.push_back(NSString::from(std::string(kBundleIdentifier).append(own)));
    }
    for (const std::string_view common : kCommonTypes) types.push_back(NSString::from(common));
    return NSArray::from(types);
}

}  // namespace morvel::mac
