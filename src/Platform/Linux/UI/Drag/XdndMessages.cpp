#include "Platform/Linux/UI/Drag/XdndMessages.h"

#include <algorithm>
#include <cmath>

namespace morvel::x11 {

namespace {

// In XdndStatus and XdndFinished.
constexpr uint32_t kAccepts = 1;
constexpr uint32_t kWantsPositions = 2;

uint32_t coordinate(double value) {
    return static_cast<uint16_t>(static_cast<int16_t>(std::clamp(std::floor(value), -32768.0, 32767.0)));
}

double coordinate(uint32_t bits) {
    return static_cast<int16_t>(static_cast<uint16_t>(bits));
}

}  // namespace

MessageData XdndEnter::packed() const {
    return {source, version << 24 | (hasTypeList ? 1U : 0U), types[0], types[1], types[2]};
}

XdndEnter XdndEnter::unpacked(const uint32_t* data) {
    return {data[0], data[1] >> 24, (data[1] & 1) != 0, {data[2], data[3], data[4]}};
}

MessageData XdndPosition::packed() const {
    return {source, 0, coordinate(location.x) << 16 | coordinate(location.y), time, action};
}

XdndPosition XdndPosition::unpacked(const uint32_t* data) {
    return {data[0], {coordinate(data[2] >> 16), coordinate(data[2] & 0xFFFF)}, data[3], data[4]};
}

MessageData XdndStatus::packed() const {
    return {target, (accepts ? kAccepts : 0) | kWantsPositions, 0, 0, accepts ? action : 0};
}

XdndStatus XdndStatus::unpacked(const uint32_t* data) {
    const bool accepts = (data[1] & kAccepts) != 0;
    return {data[0], accepts, accepts ? data[4] : 0};
}

MessageData XdndFinished::packed() const {
    return {target, isAccepted ? kAccepts : 0, isAccepted ? action : 0};
}

XdndFinished XdndFinished::unpacked(const uint32_t* data) {
    const bool isAccepted = (data[1] & kAccepts) != 0;
    return {data[0], isAccepted, isAccepted ? data[2] : 0};
}

}  // namespace morvel::x11
