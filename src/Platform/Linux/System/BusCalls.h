// Asking other programs on the session bus, without waiting for them.
#pragma once

#include <gio/gio.h>

#include <functional>
#include <memory>

#include "Util/Lifetime.h"
#include "Util/Subscription.h"

namespace morvel::x11 {

struct UnrefVariant {
    void operator()(GVariant* value) const { g_variant_unref(value); }
};
using Variant = std::unique_ptr<GVariant, UnrefVariant>;

/// Whether there is a session bus to talk on. Without one, GIO would start a bus of its own, which outlives us and on
/// which nobody else is.
bool hasSessionBus();

/// Calls `reached` once in a later turn with the session's bus, which is not the caller's to keep. Not where there is
/// none, and not after the token's end. From then on the end of the bus is not the program's. Main thread only.
[[nodiscard]] Subscription reachSessionBus(std::function<void(GDBusConnection* bus)> reached);

/// Which method of whom; the texts outlive the call that they are handed to.
struct BusMethod {
    const char* service;
    const char* path;
    const char* interface;
    const char* name;
};

/// Whether a service that does not run is started to be asked.
enum class StartService { No, Yes };

/// Main thread only.
class BusCalls {
public:
    explicit BusCalls(GDBusConnection* bus);
    ~BusCalls();
    BusCalls(const BusCalls&) = delete;
    BusCalls& operator=(const BusCalls&) = delete;

    GDBusConnection* bus() const { return bus_; }

    /// With the answer, which is of the type that was asked for, or null when there was none in time.
    using Answered = std::function<void(GVariant* answer)>;
    /// `arguments`: a floating tuple, which is taken over, or null. Calls `answered` once, in a later turn, unless this
    /// has been destroyed by then. It may destroy this.
    void call(const BusMethod& method, GVariant* arguments, const char* answerType, Answered answered,
              StartService start = StartService::No) const;

private:
    GDBusConnection* const bus_;
    GCancellable* const pending_;
    Lifetime lifetime_;
};

}  // namespace morvel::x11
