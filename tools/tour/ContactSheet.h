// All pictures of the tour on one sheet, numbered and captioned.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "harness/Screenshot.h"

namespace morvel::tour {

class ContactSheet {
public:
    void add(const e2e::Screenshot& picture, const std::string& caption, bool observed);
    void writePng(const std::filesystem::path& file) const;

private:
    struct Entry {
        e2e::Screenshot picture;
        std::string caption;
        bool observed;
    };
    std::vector<Entry> entries_;
};

}  // namespace morvel::tour
