#include "sim/SimInstalledApplications.h"

#include <cctype>

namespace morvel::sim {

namespace {

bool isDigit(char c) {
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

/// Cuts the number at the front off.
unsigned long takeNumber(std::string_view& text) {
    unsigned long number = 0;
    while (!text.empty() && isDigit(text.front())) {
        number = number * 10 + static_cast<unsigned long>(text.front() - '0');
        text.remove_prefix(1);
    }
    return number;
}

}  // namespace

int SimInstalledApplications::compareNames(const std::string& a, const std::string& b) {
    std::string_view left = a, right = b;
    while (!left.empty() && !right.empty()) {
        long difference = 0;
        if (isDigit(left.front()) && isDigit(right.front())) {
            difference = static_cast<long>(takeNumber(left)) - static_cast<long>(takeNumber(right));
        } else {
            difference = std::tolower(static_cast<unsigned char>(left.front())) -
                         std::tolower(static_cast<unsigned char>(right.front()));
            left.remove_prefix(1);
            right.remove_prefix(1);
        }
        if (difference != 0) return difference < 0 ? -1 : 1;
    }
    return static_cast<int>(left.size()) - static_cast<int>(right.size());
}

void SimInstalledApplications::install(const std::string& bundleID, const std::string& name) {
    const std::string path = "/Applications/" + name + ".app";
    if (bundles.contains(path)) return;
    contents.front().second->push_back(name + ".app");
    bundles[path] = {.identifier = bundleID, .displayName = name, .name = name};
    changes.emit();
}

}  // namespace morvel::sim
