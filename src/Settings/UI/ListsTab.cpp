#include <map>
#include <memory>

#include "Settings/UI/Bindings.h"
#include "Settings/UI/SettingsTabs.h"

namespace morvel::tabs {

namespace {

constexpr Size kIconSize{20, 20};
/// Icons are loaded while the window waits. The rows of a list that is longer than anybody reads do without.
constexpr size_t kMostIcons = 100;
constexpr size_t kLongestIdentifier = 255;

/// Each icon is loaded once in the life of the window, as rows are asked for with every change.
class RowIcons {
public:
    explicit RowIcons(Icons& icons) : icons_(icons) {}

    ui::ImageRef of(const ListedItem& item) {
        const auto known = loaded_.find(item.id);
        if (known != loaded_.end()) return known->second;
        if (loaded_.size() >= kMostIcons) return nullptr;
        const ui::ImageRef icon = item.kind == ListedItem::Kind::Folder ? icons_.fileIcon(item.identifier)
                                                                        : icons_.applicationIcon(item.identifier);
        return loaded_[item.id] = icon ? icons_.baked(icon, kIconSize) : nullptr;
    }

private:
    Icons& icons_;
    std::map<std::string, ui::ImageRef> loaded_;
};

ui::FormControl listOf(const EditableList& list, Icons& icons, std::string rowButton, std::string emptyText) {
    const auto rows = [items = list.items, rowIcons = std::make_shared<RowIcons>(icons)] {
        std::vector<ui::FormListRow> found;
        for (const ListedItem& item : items())
            found.push_back({item.id, rowIcons->of(item), item.name, item.identifier});
        return found;
    };
    return {{}, {}, ui::FormList{rows, std::move(rowButton), list.remove, std::move(emptyText)}};
}

std::string trimmed(const std::string& text) {
    constexpr const char* kBlanks = " \t\r\n";
    const size_t first = text.find_first_not_of(kBlanks);
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

/// An identifier is one word; anything else stays in the field to be mended.
bool isIdentifier(const std::string& text) {
    return !text.empty() && text.size() <= kLongestIdentifier && text.find_first_of(" \t\r\n/") == std::string::npos;
}

ui::FormControl identifierEntry(const EditableList& list) {
    const auto take = [add = list.add](const std::string& text) {
        const std::string identifier = trimmed(text);
        if (!isIdentifier(identifier)) return false;
        add(identifier);
        return true;
    };
    return {{}, {}, ui::FormEntry{"com.example.app", "Add", take}};
}

EditableList hiddenApps(const SettingsSources& sources) {
    Setting<std::set<std::string>>& blacklist = sources.settings.windowBlacklist;
    EditableList list;
    list.items = [&blacklist, nameOf = sources.nameOf] {
        std::vector<ListedItem> items;
        for (const std::string& bundleID : blacklist.value())
            items.push_back({ListedItem::Kind::Application, bundleID, bundleID, nameOf(bundleID)});
        return items;
    };
    list.remove = [&blacklist](const std::string& bundleID) {
        auto left = blacklist.value();
        if (left.erase(bundleID) > 0) blacklist.set(std::move(left));
    };
    list.add = [&blacklist](const std::string& bundleID) {
        auto more = blacklist.value();
        if (more.insert(bundleID).second) blacklist.set(std::move(more));
    };
    return list;  // its changes are the setting's
}

ui::FormSection pinnedItems(const SettingsSources& sources) {
    return {
        "Pinned Items",
        {listOf(sources.pinnedItems, sources.icons, "Unpin",
                "No pinned items. Right-click a running window in the morvel → Pin App, or use the buttons below to "
                "pin a folder."),
         {{},
          {},
          ui::FormPathButton{
              "Pin Folder…", ui::PathKind::Folder, "Choose a folder to pin", {}, sources.pinnedItems.add}}}};
}

ui::FormSection blacklist(std::string heading, const EditableList& list, Icons& icons, std::string rowButton,
                          std::string emptyText) {
    return {std::move(heading),
            {listOf(list, icons, std::move(rowButton), std::move(emptyText)), identifierEntry(list)}};
}

}  // namespace

ui::FormTab lists(const SettingsSources& sources) {
    ui::FormTab tab{"pinned", "Pinned & Blacklist", {}};
    if (sources.pinnedItems.items) tab.sections.push_back(pinnedItems(sources));
    tab.sections.push_back(blacklist("Hidden Apps (Window Blacklist)", hiddenApps(sources), sources.icons, "Show",
                                     "No hidden apps. Apps in this list are completely hidden from the morvel."));
    if (sources.clampingBlacklist.items)
        tab.sections.push_back(blacklist("Clamping Blacklist", sources.clampingBlacklist, sources.icons, "Remove",
                                         "No blacklisted apps. Apps in this list are exempt from window clamping."));
    return tab;
}

}  // namespace morvel::tabs
