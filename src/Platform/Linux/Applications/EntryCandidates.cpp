#include "Platform/Linux/Applications/EntryCandidates.h"

#include <algorithm>
#include <array>

namespace morvel::x11 {

namespace {

constexpr std::array<std::string_view, 16> kSharedPrograms{
    "sh",   "bash", "dash",    "zsh",  "python", "python3", "perl",     "java",
    "ruby", "node", "flatpak", "snap", "env",    "sudo",    "xdg-open", "gapplication"};

// The next word of an Exec line; quotes are taken off.
std::string nextWord(std::string_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    std::string word;
    bool isQuoted = false;
    size_t i = 0;
    for (; i < line.size(); ++i) {
        if (line[i] == '"') {
            isQuoted = !isQuoted;
        } else if (line[i] == '\\' && isQuoted && i + 1 < line.size()) {
            word += line[++i];
        } else if (line[i] == ' ' && !isQuoted) {
            break;
        } else {
            word += line[i];
        }
    }
    line.remove_prefix(i);
    return word;
}

bool isAssignment(const std::string& word) {
    return word.find('=') != std::string::npos && word.find('/') > word.find('=');
}

}  // namespace

std::string foldCase(std::string_view name) {
    std::string out(name);
    std::transform(out.begin(), out.end(), out.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return out;
}

std::vector<std::string> entryCandidates(std::string_view classInstance, std::string_view className) {
    std::vector<std::string> out;
    const auto add = [&out](std::string name) {
        std::replace(name.begin(), name.end(), ' ', '-');
        const bool isUsable = !name.empty() && name.front() != '.' && name.find('/') == std::string::npos;
        if (isUsable && std::find(out.begin(), out.end(), name) == out.end()) out.push_back(std::move(name));
    };
    // Exactly as written first: identifiers in reverse domain order are case-sensitive.
    for (const auto name : {classInstance, className}) add(std::string(name));
    for (const auto name : {classInstance, className}) add(foldCase(name));
    return out;
}

std::string execProgram(std::string_view execLine) {
    std::string word = nextWord(execLine);
    while (word == "env" || word.ends_with("/env") || isAssignment(word)) word = nextWord(execLine);
    const std::string program = word.substr(word.rfind('/') + 1);
    const bool isShared = std::find(kSharedPrograms.begin(), kSharedPrograms.end(), program) != kSharedPrograms.end();
    return isShared ? std::string() : program;
}

}  // namespace morvel::x11
