#include "Settings/UI/RelativeTime.h"

#include <cmath>

namespace morvel {

namespace {

struct Unit {
    double seconds;
    const char* name;
};
// Months and years by their average length.
constexpr Unit kUnits[] = {{31556952, "year"}, {2629746, "month"}, {604800, "week"},
                           {86400, "day"},     {3600, "hour"},     {60, "minute"}};

}  // namespace

std::string relativeTime(Date then, Date now) {
    const double seconds = (now - then).count();
    for (const Unit& unit : kUnits) {
        if (!(seconds >= unit.seconds)) continue;
        const double count = std::floor(seconds / unit.seconds);
        return std::to_string(std::llround(count)) + " " + unit.name + (count == 1 ? " ago" : "s ago");
    }
    return "just now";
}

}  // namespace morvel
