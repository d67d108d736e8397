#include "Update/UpdateRules.h"

#include <algorithm>
#include <vector>

namespace morvel {

namespace {

constexpr std::chrono::duration<double> kBetweenChecks = std::chrono::hours(24);

std::vector<int64_t> numbers(std::string_view dotted) {
    std::vector<int64_t> found;
    while (!dotted.empty()) {
        const size_t dot = std::min(dotted.find('.'), dotted.size());
        if (const auto number = parseInteger(dotted.substr(0, dot))) found.push_back(*number);
        dotted.remove_prefix(std::min(dot + 1, dotted.size()));
    }
    return found;
}

}  // namespace

bool osMeetsRequirement(std::string_view currentOS, std::string_view required) {
    std::vector<int64_t> current = numbers(currentOS), wanted = numbers(required);
    const size_t length = std::max(current.size(), wanted.size());
    current.resize(length);
    wanted.resize(length);
    return current >= wanted;
}

bool isUpgrade(const std::optional<SemanticVersion>& local, const SemanticVersion& remote,
               std::string_view minimumOSVersion, const std::optional<std::string>& currentOS) {
    if (!local || remote <= *local) return false;
    return !currentOS || osMeetsRequirement(*currentOS, minimumOSVersion);
}

bool isCheckDue(bool isAutomatic, const std::optional<Date>& lastChecked, Date now) {
    if (!isAutomatic) return false;
    return !lastChecked || std::chrono::abs(now - *lastChecked) >= kBetweenChecks;
}

}  // namespace morvel
