#include "Launcher/AXMenuShortcut.h"

#include <string>

#include "Platform/AXNames.h"
#include "Util/LowerCase.h"
#include "WindowSource/AXReader.h"

namespace morvel::AXMenuShortcut {

namespace {

constexpr int kEndOfDepth = 7;
// Menus that an application fills without end (history, bookmarks) must not hold the bar up: the item that is looked
// for stands in one of the first menus.
constexpr int kMostElements = 4000;

class Search {
public:
    Search(Accessibility& accessibility, std::string_view character, std::string_view titleNeedle)
        : reader_(accessibility), character_(lowerCased(character)), titleNeedle_(lowerCased(titleNeedle)) {}

    std::optional<AXElement> findInMenuBar(const AXElement& application) {
        const auto menuBar = reader_.readElement(application, ax::kMenuBar);
        return menuBar ? find(*menuBar, 0) : std::nullopt;
    }

private:
    std::optional<AXElement> find(const AXElement& element, int depth) {
        if (depth >= kEndOfDepth || ++elements_ > kMostElements || reader_.hasTimedOut()) return std::nullopt;
        if (matches(element)) return element;
        const auto children = reader_.readElements(element, ax::kChildren);
        if (!children) return std::nullopt;
        for (const AXElement& child : *children)
            if (const auto found = find(child, depth + 1)) return found;
        return std::nullopt;
    }

    bool matches(const AXElement& element) {
        const auto character = reader_.readString(element, ax::kMenuItemCmdChar);
        if (!character || lowerCased(*character) != character_) return false;
        if (reader_.readNumber(element, ax::kMenuItemCmdModifiers) != 0.0) return false;
        const auto title = reader_.readString(element, ax::kTitle);
        return title && lowerCased(*title).find(titleNeedle_) != std::string::npos;
    }

    AXReader reader_;
    std::string character_;
    std::string titleNeedle_;
    int elements_ = 0;
};

}  // namespace

bool press(Accessibility& accessibility, ProcessID pid, std::string_view character,
           std::string_view requireTitleContains) {
    Search search(accessibility, character, requireTitleContains);
    const auto item = search.findInMenuBar(accessibility.applicationElement(pid));
    return item && accessibility.performAction(*item, ax::kPress) == AXError::Success;
}

}  // namespace morvel::AXMenuShortcut
