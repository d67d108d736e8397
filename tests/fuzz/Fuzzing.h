// What all fuzzers share. Each is one function that libFuzzer calls with bytes of its own making: it hands them to a
// reader of other people's data, and checks what the reader promises about its answer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

/// Called by libFuzzer. Returns 0: the input is fit for the corpus.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace morvel::fuzz {

inline std::string_view textOf(const uint8_t* data, size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Ends the program, which makes libFuzzer keep the input, where a promise is broken.
inline void require(bool holds, const char* promise) {
    if (holds) return;
    std::fprintf(stderr, "Broken promise: %s\n", promise);
    std::abort();
}

}  // namespace morvel::fuzz
