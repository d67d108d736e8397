#include "Platform/Linux/System/Property.h"

namespace morvel::x11 {

std::vector<uint32_t> cardinals(const xcb_get_property_reply_t* reply) {
    if (!reply || reply->format != 32) return {};
    const auto* items = static_cast<const uint32_t*>(xcb_get_property_value(reply));
    return {items, items + reply->value_len};
}

std::optional<uint32_t> firstCardinal(const xcb_get_property_reply_t* reply) {
    if (!reply || reply->format != 32 || reply->value_len == 0) return std::nullopt;
    return *static_cast<const uint32_t*>(xcb_get_property_value(reply));
}

std::optional<std::string_view> bytes(const xcb_get_property_reply_t* reply) {
    if (!reply || reply->format != 8) return std::nullopt;
    return std::string_view(static_cast<const char*>(xcb_get_property_value(reply)), reply->value_len);
}

bool isPresent(const xcb_get_property_reply_t* reply) {
    return reply && reply->type != XCB_ATOM_NONE;
}

}  // namespace morvel::x11
