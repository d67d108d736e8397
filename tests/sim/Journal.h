// What the program under test did to the simulated system, in order.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Util/Identity.h"

namespace morvel::sim {

/// The simulated desktop's own name of an accessibility element.
using ElementID = uint64_t;

/// One request: "activate", "AXRaise", "AXMinimized=true", "spaceAdd 5 [1,2]" and the like.
struct Deed {
    std::string what;
    std::optional<ProcessID> pid;
    std::optional<ElementID> element;
};

class Journal {
public:
    void add(Deed deed) { deeds_.push_back(std::move(deed)); }
    const std::vector<Deed>& deeds() const { return deeds_; }
    void clear() { deeds_.clear(); }

    std::vector<std::string> texts() const {
        std::vector<std::string> texts;
        for (const Deed& deed : deeds_) texts.push_back(deed.what);
        return texts;
    }

    /// How many requests to the element begin with the text.
    long count(ElementID element, std::string_view prefix) const {
        return std::ranges::count_if(
            deeds_, [&](const Deed& deed) { return deed.element == element && deed.what.starts_with(prefix); });
    }

private:
    std::vector<Deed> deeds_;
};

}  // namespace morvel::sim
