// Reading window properties out of replies, however wrong their type, format or length may be.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace morvel::x11 {

/// The 32-bit items of the property; none when there is no reply, no property, or one of another format.
std::vector<uint32_t> cardinals(const xcb_get_property_reply_t* reply);
std::optional<uint32_t> firstCardinal(const xcb_get_property_reply_t* reply);
/// The bytes of a property of format 8, valid while the reply is; nothing when there is no such property.
std::optional<std::string_view> bytes(const xcb_get_property_reply_t* reply);
/// Whether the property exists, with whatever value.
bool isPresent(const xcb_get_property_reply_t* reply);

}  // namespace morvel::x11
