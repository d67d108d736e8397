#include "UI/FormSearch.h"

#include <algorithm>
#include <sstream>

namespace morvel::ui {

namespace {

std::string folded(std::string_view text) {
    std::string lower(text);
    for (char& letter : lower)
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    return lower;
}

std::vector<std::string> wordsOf(std::string_view query) {
    std::istringstream stream(folded(query));
    std::vector<std::string> words;
    for (std::string word; stream >> word;) words.push_back(word);
    return words;
}

/// What a control without a label is known by.
std::string titleOf(const FormControl& control) {
    if (const auto* button = std::get_if<FormButton>(&control.kind)) return button->title;
    if (const auto* button = std::get_if<FormPathButton>(&control.kind)) return button->title;
    if (const auto* link = std::get_if<FormLink>(&control.kind)) return link->title;
    return {};
}

bool isFound(const FormControl& control, const std::string& heading, const std::vector<std::string>& words) {
    const std::string text = folded(control.label + "\n" + titleOf(control) + "\n" + control.help + "\n" + heading);
    return std::ranges::all_of(words, [&](const std::string& word) { return text.find(word) != std::string::npos; });
}

bool anyOf(const ShownControls::Section& section) {
    return std::ranges::find(section, true) != section.end();
}
bool anyOf(const ShownControls::Tab& tab) {
    return std::ranges::any_of(tab, [](const ShownControls::Section& section) { return anyOf(section); });
}

}  // namespace

bool ShownControls::hasAny(size_t tab, size_t section) const {
    return anyOf(tabs_[tab][section]);
}

bool ShownControls::hasAny(size_t tab) const {
    return anyOf(tabs_[tab]);
}

bool ShownControls::isEmpty() const {
    return std::ranges::none_of(tabs_, [](const Tab& tab) { return anyOf(tab); });
}

size_t ShownControls::tabToShow(size_t current) const {
    if (current < tabs_.size() && hasAny(current)) return current;
    for (size_t tab = 0; tab < tabs_.size(); ++tab)
        if (hasAny(tab)) return tab;
    return current;
}

ShownControls shownControls(const Form& form, std::string_view query) {
    const std::vector<std::string> words = wordsOf(query);
    std::vector<ShownControls::Tab> tabs;
    for (const FormTab& tab : form.tabs) {
        auto& sections = tabs.emplace_back();
        for (const FormSection& section : tab.sections) {
            auto& controls = sections.emplace_back();
            for (const FormControl& control : section.controls)
                controls.push_back((!control.isVisible || control.isVisible()) &&
                                   isFound(control, section.heading, words));
        }
    }
    return ShownControls(std::move(tabs));
}

bool isEnabled(const FormControl& control) {
    return !control.isEnabled || control.isEnabled();
}

}  // namespace morvel::ui
