// The names of atoms that other programs use, asked for once.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Platform/Linux/System/XConnection.h"

namespace morvel::x11 {

/// Main thread only.
class AtomNames {
public:
    using Names = std::map<std::string, xcb_atom_t, std::less<>>;

    /// The connection outlives it.
    explicit AtomNames(XConnection& connection)
        : connection_(connection), known_(std::make_shared<std::map<xcb_atom_t, std::string>>()) {}

    /// Calls `resolved` with what these atoms are called: at once when all are known, else in a later turn. Numbers
    /// that are no atoms are left out.
    void resolve(std::vector<xcb_atom_t> atoms, std::function<void(Names)> resolved);

private:
    XConnection& connection_;
    std::shared_ptr<std::map<xcb_atom_t, std::string>> known_;  // also of answers that come after our end
};

}  // namespace morvel::x11
