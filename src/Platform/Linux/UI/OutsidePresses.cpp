#include "Platform/Linux/UI/OutsidePresses.h"

#include <sys/uio.h>

#include <array>

namespace morvel::x11 {

namespace {

// The two requests of the input extension that are needed are written out here: its library is large, and every bar
// would load it.
constexpr uint8_t kSelectEventsRequest = 46;
constexpr uint8_t kQueryVersionRequest = 47;
constexpr uint16_t kAllMasterDevices = 1;
constexpr uint16_t kRawButtonPress = 15;
constexpr uint32_t kFirstWheelButton = 4, kLastWheelButton = 7;

struct QueryVersion {
    uint8_t majorOpcode = 0, minorOpcode = 0;
    uint16_t length = 0;
    uint16_t majorVersion = 2, minorVersion = 2;  // before 2.1, grabs of others hide raw events
};

struct SelectEvents {
    uint8_t majorOpcode = 0, minorOpcode = 0;
    uint16_t length = 0;
    uint32_t window = 0;
    uint16_t maskCount = 1, pad = 0;
    uint16_t device = kAllMasterDevices, maskLength = 1;
    uint32_t mask = 0;
};

struct RawButtonEvent {
    uint8_t responseType, extension;
    uint16_t sequence;
    uint32_t length;
    uint16_t eventType, device;
    uint32_t time, button;
};

}  // namespace

OutsidePresses::OutsidePresses(ToolkitContext& context) : context_(context) {
    // Answered long before the first popover asks, so that nobody waits then.
    xcb_prefetch_extension_data(context_.connection().get(), &extension_);
}

Subscription OutsidePresses::observe(std::function<void()> pressed) {
    if (listeners_++ == 0) start();
    auto listener = std::make_shared<Subscription>(pressed_.subscribe(std::move(pressed)));
    return Subscription([this, listener] {
        listener->reset();
        if (--listeners_ > 0) return;
        if (isAvailable_) select(0);
        events_.reset();
    });
}

void OutsidePresses::start() {
    XConnection& connection = context_.connection();
    if (!wasAsked_) {
        wasAsked_ = true;
        const xcb_query_extension_reply_t* known = xcb_get_extension_data(connection.get(), &extension_);
        isAvailable_ = known && known->present;
        if (isAvailable_) {
            QueryVersion query;
            // The answer does not matter: a server that is too old refuses the selection.
            xcb_discard_reply(connection.get(), send(kQueryVersionRequest, &query, sizeof query, true));
        }
    }
    if (!isAvailable_) return;
    events_ = connection.observeGenericEvents(xcb_get_extension_data(connection.get(), &extension_)->major_opcode,
                                              [this](const xcb_generic_event_t& event) { handle(event); });
    select(1u << kRawButtonPress);
}

void OutsidePresses::select(uint32_t eventMask) {
    SelectEvents request;
    request.window = context_.connection().root();
    request.mask = eventMask;
    send(kSelectEventsRequest, &request, sizeof request, false);
}

unsigned OutsidePresses::send(uint8_t request, void* data, size_t size, bool hasReply) {
    // The first two parts are xcb's own; it fills in the header of what follows.
    std::array<iovec, 3> parts{};
    parts[2] = {data, size};
    const xcb_protocol_request_t protocol{1, &extension_, request, static_cast<uint8_t>(hasReply ? 0 : 1)};
    return xcb_send_request(context_.connection().get(), 0, parts.data() + 2, &protocol);
}

void OutsidePresses::handle(const xcb_generic_event_t& event) {
    const auto& raw = reinterpret_cast<const RawButtonEvent&>(event);
    if (raw.eventType != kRawButtonPress) return;
    if (raw.button >= kFirstWheelButton && raw.button <= kLastWheelButton) return;
    if (!context_.isMenuOpen() && !context_.isPointerInside()) pressed_.emit();
}

}  // namespace morvel::x11
