// Whether the program is started when the person logs in.
#pragma once

namespace morvel {

/// Main thread only. A failure is logged by the host and has no other consequence.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    /// Saying the same again is harmless.
    virtual void setRegistered(bool isRegistered) = 0;
};

}  // namespace morvel
