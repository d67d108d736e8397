#include "Platform/Linux/Applications/Autostart.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <utility>

#include "Platform/AtomicFile.h"

namespace morvel::x11 {

namespace {

constexpr size_t kMostBytes = 64 * 1024;

/// The path as one word of an entry's command line.
std::string quoted(const std::string& path) {
    std::string word = "\"";
    for (const char c : path) {
        // Quoted for the command line, and the backslash once more for the file's own escapes.
        if (c == '"' || c == '`' || c == '$') word += "\\\\";
        if (c == '\\') word += "\\\\\\";
        if (c == '%') word += '%';
        word += c;
    }
    return word + '"';
}

}  // namespace

Autostart::Autostart(Log& log, const std::string& configFolder, std::string program)
    : log_(log), file_(configFolder + "/autostart/morvel.desktop"), program_(std::move(program)) {}

std::string Autostart::ownProgram() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

void Autostart::setRegistered(bool isRegistered) {
    const auto fail = [this] { log_.error("Cannot change " + file_ + ": " + std::strerror(errno)); };
    if (!isRegistered) {
        if (std::remove(file_.c_str()) != 0 && errno != ENOENT) fail();
        return;
    }
    if (program_.empty() || program_.find('\n') != std::string::npos) return;
    const std::string command = "\nExec=" + quoted(program_) + "\n";
    const auto present = readFile(file_, kMostBytes);
    if (present && present->find(command) != std::string::npos) return;
    if (!replaceFile(file_, "[Desktop Entry]\nType=Application\nName=Morvel" + command)) fail();
}

}  // namespace morvel::x11
