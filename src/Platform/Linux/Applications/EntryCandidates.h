// Which desktop entry a window's program may have, decided from names alone.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace morvel::x11 {

/// The identifiers (without ".desktop") of entries that may stand for a window with this WM_CLASS, the likeliest first,
/// each once. Names that could lead out of the applications folder are left out.
std::vector<std::string> entryCandidates(std::string_view classInstance, std::string_view className);

/// The name of the program that an Exec line starts, without its folder; empty where the line starts it through
/// something that many entries share (a shell, an interpreter), which would match any of them.
std::string execProgram(std::string_view execLine);

/// The key under which names are compared: ASCII letters in lower case.
std::string foldCase(std::string_view name);

}  // namespace morvel::x11
