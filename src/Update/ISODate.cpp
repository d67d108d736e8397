#include "Update/ISODate.h"

#include <cstdio>

namespace morvel {

namespace {

using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;

constexpr std::string_view kDateTime = "dddd-dd-ddTdd:dd:dd";
constexpr std::string_view kOffset = "sdd:dd";

/// Whether each character is the pattern's: d a digit, s a sign, anything else itself.
bool matches(std::string_view text, std::string_view pattern) {
    if (text.size() != pattern.size()) return false;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        const bool isSign = text[i] == '+' || text[i] == '-';
        if (pattern[i] == 'd' ? !isDigit : pattern[i] == 's' ? !isSign : text[i] != pattern[i]) return false;
    }
    return true;
}

/// Of a text of which these characters are digits.
int number(std::string_view text, size_t first, size_t count) {
    int value = 0;
    for (const char digit : text.substr(first, count)) value = 10 * value + (digit - '0');
    return value;
}

/// The time between the zone's clock and UTC.
std::optional<minutes> parseOffset(std::string_view zone) {
    if (zone == "Z") return minutes(0);
    if (!matches(zone, kOffset)) return std::nullopt;
    const int hour = number(zone, 1, 2), minute = number(zone, 4, 2);
    if (hour > 23 || minute > 59) return std::nullopt;
    const minutes offset = hours(hour) + minutes(minute);
    return zone[0] == '-' ? -offset : offset;
}

}  // namespace

std::optional<Date> parseISODate(std::string_view text) {
    const std::string_view local = text.substr(0, kDateTime.size());
    if (!matches(local, kDateTime)) return std::nullopt;
    const auto offset = parseOffset(text.substr(kDateTime.size()));
    const std::chrono::year_month_day day{std::chrono::year(number(local, 0, 4)),
                                          std::chrono::month(static_cast<unsigned>(number(local, 5, 2))),
                                          std::chrono::day(static_cast<unsigned>(number(local, 8, 2)))};
    const int hour = number(local, 11, 2), minute = number(local, 14, 2), second = number(local, 17, 2);
    if (!offset || !day.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    return std::chrono::sys_days(day) + hours(hour) + minutes(minute) + seconds(second) - *offset;
}

std::string formatISODate(Date date) {
    const auto moment = std::chrono::floor<seconds>(date);
    const auto midnight = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day day(midnight);
    const std::chrono::hh_mm_ss time(moment - midnight);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02dZ", int(day.year()), unsigned(day.month()),
                  unsigned(day.day()), int(time.hours().count()), int(time.minutes().count()),
                  int(time.seconds().count()));
    return text;
}

}  // namespace morvel
