// The settings that a desktop publishes on the X server.
#include "Fuzzing.h"
#include "Platform/Linux/System/XSettings.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    morvel::x11::xSettingsNumber(morvel::fuzz::textOf(data, size), "Gtk/EnableAnimations");
    return 0;
}
