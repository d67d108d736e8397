// Each answer is read afresh, inside a pool of its own: a scan asks for hundreds on a background thread.
#include "Platform/Mac/Applications/MacInstalledApplications.h"

#include <memory>

#include "Platform/Mac/System/FolderWatch.h"
#include "Platform/Mac/apple/Foundation/NSBundle.h"
#include "Platform/Mac/apple/Foundation/NSFileManager.h"
#include "Platform/Mac/objc/AutoreleasePool.h"

namespace morvel::mac {

namespace {

std::optional<std::string> textAt(const NSDictionary& info, std::string_view key) {
    const NSString text = info.at<NSString>(key);
    return text ? std::optional(text.text()) : std::nullopt;
}

}  // namespace

std::vector<std::string> MacInstalledApplications::folders() {
    const objc::AutoreleasePool pool;
    std::vector<std::string> found{"/Applications", "/System/Applications"};
    const std::string own = NSString::from("~/Applications").expandingTilde().text();
    if (own.starts_with('/')) found.push_back(own);
    return found;
}

std::optional<std::vector<std::string>> MacInstalledApplications::list(const std::string& folder) {
    const objc::AutoreleasePool pool;
    const NSString path = NSString::from(folder);
    const NSArray contents = path ? NSFileManager::defaultManager().contentsOfDirectory(path) : NSArray();
    if (!contents) return std::nullopt;
    std::vector<std::string> names;
    for (const NSString& name : contents.elements<NSString>()) names.push_back(name.text());
    return names;
}

std::optional<ApplicationBundle> MacInstalledApplications::bundle(const std::string& path) {
    const objc::AutoreleasePool pool;
    // Without a text no URL can be made; asking for one raises an exception.
    if (path.empty() || !NSString::from(path)) return std::nullopt;
    const NSURL url = NSURL::file(path);
    const NSBundle bundle = url ? NSBundle::from(url) : NSBundle();
    if (!bundle) return std::nullopt;
    const NSDictionary info = bundle.infoDictionary();
    return ApplicationBundle{.identifier = textAt(info, "CFBundleIdentifier"),
                             .displayName = textAt(info, "CFBundleDisplayName"),
                             .name = textAt(info, "CFBundleName")};
}

int MacInstalledApplications::compareNames(const std::string& a, const std::string& b) {
    const objc::AutoreleasePool pool;
    const NSString left = NSString::from(a);
    const NSString right = NSString::from(b);
    if (!left || !right) return a.compare(b);
    return static_cast<int>(left.localizedStandardCompare(right));
}

Subscription MacInstalledApplications::observeChanges(std::function<void()> changed) {
    const auto watches = std::make_shared<Subscriptions>();
    for (const std::string& folder : folders()) watches->push_back(watchFolder(folder, changed));
    return Subscription([watches] { watches->clear(); });
}

}  // namespace morvel::mac
