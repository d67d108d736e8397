// A settings file that a person brings from somewhere.
#include "Fuzzing.h"
#include "Settings/SettingsFile.h"
#include "sim/FakeDefaults.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace morvel;
    sim::FakeDefaults defaults, otherDefaults;
    SettingsStore settings(defaults), other(otherDefaults);
    const std::string before = SettingsFile::exported(settings);
    const auto taken = SettingsFile::imported(settings, fuzz::textOf(data, size));
    const std::string after = SettingsFile::exported(settings);
    if (!taken) fuzz::require(after == before, "of a file that cannot be read nothing is taken");
    fuzz::require(SettingsFile::imported(other, after).has_value(), "what was taken can be exported and brought along");
    fuzz::require(SettingsFile::exported(other) == after, "and is the same there");
    return 0;
}
