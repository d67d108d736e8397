// The window server's functions for Spaces, which no header declares. Any of them may be missing on a system.
#pragma once

#include <cstddef>
#include <cstdint>

#include "Platform/Mac/apple/CF.h"
#include "Platform/Mac/apple/SystemFunction.h"

namespace morvel::mac {

/// Called by the window server on a thread of its own.
using SpaceEventCallback = void (*)(std::uint32_t event, void* data, std::size_t length, void* context);

/// Each is looked up when it is first needed. Arrays hold numbers: windows in 32 bits, Spaces in 64. Copies are the
/// caller's.
struct SpaceFunctions {
    LateFunction<std::int32_t()> mainConnection{"CGSMainConnectionID"};
    LateFunction<std::uint64_t(std::int32_t)> activeSpace{"CGSGetActiveSpace"};
    LateFunction<CFArrayRef(std::int32_t)> copyManagedDisplaySpaces{"CGSCopyManagedDisplaySpaces"};
    LateFunction<CFArrayRef(std::int32_t, std::uint32_t mask, CFArrayRef)> copySpacesForWindows{
        "CGSCopySpacesForWindows"};
    LateFunction<void(std::int32_t, CFArrayRef, CFArrayRef)> addWindowsToSpaces{"CGSAddWindowsToSpaces"};
    LateFunction<void(std::int32_t, CFArrayRef, CFArrayRef)> removeWindowsFromSpaces{"CGSRemoveWindowsFromSpaces"};
    LateFunction<void(std::int32_t, CFArrayRef, std::uint64_t)> moveWindowsToManagedSpace{
        "CGSMoveWindowsToManagedSpace"};
    LateFunction<std::int32_t(std::int32_t, SpaceEventCallback, std::uint32_t event, void* context)> registerNotify{
        "SLSRegisterConnectionNotifyProc"};

    /// This program's connection with the window server, or 0 when it cannot be told.
    std::int32_t connection() {
        auto* const function = mainConnection.get();
        return function ? function() : 0;
    }
};

}  // namespace morvel::mac
