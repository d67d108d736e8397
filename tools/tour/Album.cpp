#include "Album.h"

#include <iomanip>
#include <iostream>
#include <sstream>

namespace morvel::tour {

using namespace std::chrono_literals;

Album::Album(e2e::VirtualDesktop& world, std::filesystem::path folder) : world_(world), folder_(std::move(folder)) {
    std::filesystem::create_directories(folder_);
    for (const auto& entry : std::filesystem::directory_iterator(folder_))
        if (entry.path().extension() == ".png") std::filesystem::remove(entry.path());
}

void Album::expect(const std::string& what, const std::function<bool()>& seen) {
    // After a failure the rest of the step mostly fails too; it is not worth waiting long for each of its parts.
    if (!world_.desktop.waitUntil(seen, missing_.empty() ? e2e::kPatience : 1s)) missing_.push_back(what);
}

void Album::waitForStillness() {
    auto last = world_.shoot();
    for (int tries = 0; tries < 20; ++tries) {
        world_.desktop.runFor(100ms);
        auto now = world_.shoot();
        if (now.differenceTo(last, world_.desktop.box()).isEmpty()) return;
        last = std::move(now);
    }
}

void Album::close(const std::string& name, const std::string& caption) {
    waitForStillness();
    std::ostringstream number;
    number << std::setw(2) << std::setfill('0') << ++steps_;
    const auto picture = world_.shoot();
    const auto file = folder_ / (number.str() + "-" + name + ".png");
    picture.writePng(file);
    const bool observed = missing_.empty();
    sheet_.add(picture, number.str() + "  " + caption, observed);
    std::cout << (observed ? "  seen      " : "  NOT SEEN  ") << file.filename().string() << ": " << caption << "\n";
    for (const auto& what : missing_) std::cout << "              missing: " << what << "\n";
    std::cout << std::flush;
    if (!observed) ++failed_;
    missing_.clear();
}

bool Album::finish() {
    sheet_.writePng(folder_ / "contact-sheet.png");
    std::cout << (steps_ - failed_) << " of " << steps_ << " steps observed; pictures in " << folder_.string() << "\n";
    return failed_ == 0 && steps_ > 0;
}

}  // namespace morvel::tour
