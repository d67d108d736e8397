#include "Display/SpaceEvents.h"

#include <utility>

namespace morvel {

void SpaceEvents::start(Handler handler) {
    handler_ = std::move(handler);
    if (std::exchange(registered_, true)) return;
    registration_ = server_.observeSpaceEvents([this](uint32_t event) {
        const Handler current = handler_;  // it may put another in its place
        if (current) current(event);
    });
}

}  // namespace morvel
