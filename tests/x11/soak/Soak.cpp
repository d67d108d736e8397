// The bar on a real X server among programs and windows that do anything at all: opened, renamed, moved, hidden, killed
// and stopped (SIGSTOP) ones, restarts of the window manager, changing monitors, and a hand on the mouse.
//
//   x11_soak [--seconds N] [--seed N] [--program PATH]
//
// Every few seconds everything comes to rest; then the bar has exactly the buttons that the managed windows ask for.
// What the bar occupies is written down at each rest and must not grow once it has warmed up. By default ten minutes.
// Ends with 0 only if the bar did not crash, lost nothing, showed nothing too much, and grew by nothing.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>

#include "RandomClients.h"

namespace morvel::e2e {
namespace {

struct Options {
    int seconds = 600;
    unsigned seed = 1;
    std::string program = MORVEL_PROGRAM;
};

constexpr auto kBetweenRests = 10s;
/// What pages of the allocator and of libraries may come and go. In kilobytes.
constexpr long kTolerance = 1024;

/// In kilobytes; 0 when the process is gone.
long memory(pid_t pid, const std::string& kind) {
    std::ifstream in("/proc/" + std::to_string(pid) + "/smaps_rollup");
    for (std::string line; std::getline(in, line);)
        if (line.starts_with(kind + ":")) return std::stol(line.substr(kind.size() + 1));
    return 0;
}

std::string joined(const std::vector<std::string>& titles) {
    std::string text;
    for (const auto& title : titles) text += " [" + title + "]";
    return text;
}

long median(std::vector<long> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

class Soak {
public:
    explicit Soak(const Options& options) : options_(options), chance_(options.seed) {}

    int run() {
        if (!bar_.waitForPanels(1)) return failed("the bar does not start");
        const auto start = WaitClock::now();
        const auto end = start + std::chrono::seconds(options_.seconds);
        for (auto rest = start + kBetweenRests; WaitClock::now() < end; rest = WaitClock::now() + kBetweenRests) {
            for (; WaitClock::now() < std::min(rest, end); ++steps_) {
                clients_.step();
                if (!bar_.program().isRunning()) return failed("the bar has ended");
            }
            if (!comesToRest()) return 1;
            sample(std::chrono::duration_cast<std::chrono::seconds>(WaitClock::now() - start));
        }
        clients_.closeAll();
        if (!comesToRest()) return 1;
        return isFlat() && endsCleanly() ? 0 : 1;
    }

private:
    int failed(const std::string& why) {
        std::printf("FAILED after %d steps with seed %u: %s\n%s\n", steps_, options_.seed, why.c_str(),
                    bar_.log().c_str());
        world_.shoot().writePng("soak-failure.png");
        return 1;
    }

    bool comesToRest() {
        clients_.calmDown();
        std::vector<std::string> expected, shown;
        const auto isRight = [&] {
            expected = clients_.expectedTitles();
            shown = bar_.buttonTitles();
            std::ranges::sort(shown);
            return shown == expected;
        };
        // The longest that a window takes that nobody told the bar about: the sweep, and what it is told meanwhile.
        if (desktop_.waitUntil(isRight, 40s)) return true;
        return failed("buttons:" + joined(shown) + "\nwindows:" + joined(expected) + clients_.description()) == 0;
    }

    void sample(std::chrono::seconds age) {
        const pid_t pid = bar_.program().pid();
        resident_.push_back(memory(pid, "Rss"));
        std::printf("%4ld s %6d steps %3zu windows  Rss %6ld kB  Pss %6ld kB  private %6ld kB\n", long(age.count()),
                    steps_, clients_.expectedTitles().size(), resident_.back(), memory(pid, "Pss"),
                    memory(pid, "Private_Dirty"));
        std::fflush(stdout);
    }

    /// The last quarter of the samples against the second one; the first is the warming up.
    bool isFlat() {
        const auto quarter = static_cast<std::ptrdiff_t>(resident_.size() / 4);
        if (quarter == 0) return true;  // too short to tell
        const long before = median({resident_.begin() + quarter, resident_.begin() + 2 * quarter});
        const long after = median({resident_.end() - quarter, resident_.end()});
        std::printf("Rss %ld kB after warming up, %ld kB at the end\n", before, after);
        return after <= before + kTolerance || failed("it grows") == 0;
    }

    bool endsCleanly() {
        bar_.program().signal(SIGTERM);
        if (bar_.program().waitForExit() != 0) return failed("the bar does not end cleanly") == 0;
        for (const char* fault : {"AddressSanitizer", "LeakSanitizer", "runtime error:", "Assertion"})
            if (bar_.log().find(fault) != std::string::npos) return failed("the bar reports a fault") == 0;
        return true;
    }

    const Options options_;
    Chance chance_;
    VirtualDesktop world_;
    Desktop& desktop_ = world_.desktop;
    Bar bar_{world_.server,
             world_.desktop,
             options_.program,
             {.defaults = R"({"groupingMode": "never", "windowlessAppsMode": "off", "updaterAutoCheckEnabled": false,
                             "windowButtonWidthMode": "custom", "windowButtonCustomWidth": 60})"}};
    RandomClients clients_{world_, bar_, chance_};
    std::vector<long> resident_;  // kilobytes, at each rest
    int steps_ = 0;
};

}  // namespace
}  // namespace morvel::e2e

int main(int count, char** arguments) {
    morvel::e2e::Options options;
    for (int i = 1; i + 1 < count; i += 2) {
        if (std::strcmp(arguments[i], "--seconds") == 0) options.seconds = std::atoi(arguments[i + 1]);
        if (std::strcmp(arguments[i], "--seed") == 0) options.seed = unsigned(std::atoi(arguments[i + 1]));
        if (std::strcmp(arguments[i], "--program") == 0) options.program = arguments[i + 1];
    }
    return morvel::e2e::Soak(options).run();
}
