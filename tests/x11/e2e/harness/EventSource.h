// Something with a descriptor that is served while the harness waits.
#pragma once

namespace morvel::e2e {

class EventSource {
public:
    virtual ~EventSource() = default;
    virtual int descriptor() const = 0;
    /// Handles everything that has arrived, without blocking.
    virtual void serve() = 0;
};

}  // namespace morvel::e2e
