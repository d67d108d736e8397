// Dispatch queues and timers, by plain functions with a context. Any thread may enqueue; what runs on the main queue
// runs on the main thread.
#pragma once

#include <cstdint>

#include "Platform/Mac/objc/Encoding.h"

namespace morvel::mac {

struct DispatchQueueTag;
struct DispatchSourceTag;
struct DispatchObjectTag;
struct DispatchSourceTypeTag;
struct DispatchQueueAttributeTag;

using dispatch_queue_t = DispatchQueueTag*;
using dispatch_source_t = DispatchSourceTag*;
using dispatch_object_t = DispatchObjectTag*;
using dispatch_source_type_t = const DispatchSourceTypeTag*;
using dispatch_queue_attr_t = DispatchQueueAttributeTag*;
/// Nanoseconds; a moment on the system's uptime clock, or one of the two constants.
using dispatch_time_t = std::uint64_t;
using dispatch_function_t = void (*)(void* context);

inline constexpr dispatch_time_t DISPATCH_TIME_NOW = 0;
inline constexpr dispatch_time_t DISPATCH_TIME_FOREVER = ~dispatch_time_t{0};
inline constexpr std::uint32_t QOS_CLASS_UTILITY = 17;
inline constexpr std::uint32_t QOS_CLASS_USER_INITIATED = 25;
/// The folder was taken away.
inline constexpr std::uint64_t DISPATCH_VNODE_DELETE = 1;
/// Something was added to a folder or taken away.
inline constexpr std::uint64_t DISPATCH_VNODE_WRITE = 2;
/// The folder has another name or place.
inline constexpr std::uint64_t DISPATCH_VNODE_RENAME = 32;

extern "C" {
void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work);
void dispatch_after_f(dispatch_time_t when, dispatch_queue_t queue, void* context, dispatch_function_t work);
dispatch_time_t dispatch_time(dispatch_time_t when, std::int64_t nanoseconds);
dispatch_queue_attr_t dispatch_queue_attr_make_with_qos_class(dispatch_queue_attr_t attributes, std::uint32_t qosClass,
                                                              std::int32_t relativePriority);
dispatch_queue_t dispatch_queue_create(const char* label, dispatch_queue_attr_t attributes);
dispatch_source_t dispatch_source_create(dispatch_source_type_t type, std::uint64_t handle, std::uint64_t mask,
                                         dispatch_queue_t queue);
void dispatch_source_set_timer(dispatch_source_t source, dispatch_time_t start, std::uint64_t intervalNanoseconds,
                               std::uint64_t leewayNanoseconds);
void dispatch_source_set_event_handler_f(dispatch_source_t source, dispatch_function_t handler);
void dispatch_source_set_cancel_handler_f(dispatch_source_t source, dispatch_function_t handler);
void dispatch_source_cancel(dispatch_source_t source);
void dispatch_set_context(dispatch_object_t object, void* context);
void dispatch_resume(dispatch_object_t object);
void dispatch_release(dispatch_object_t object);

extern DispatchQueueTag _dispatch_main_q;
extern const DispatchSourceTypeTag _dispatch_source_type_timer;
extern const DispatchSourceTypeTag _dispatch_source_type_signal;
extern const DispatchSourceTypeTag _dispatch_source_type_vnode;
}

inline dispatch_object_t dispatchObject(dispatch_source_t source) {
    return reinterpret_cast<dispatch_object_t>(source);
}
inline dispatch_object_t dispatchObject(dispatch_queue_t queue) {
    return reinterpret_cast<dispatch_object_t>(queue);
}

}  // namespace morvel::mac

namespace morvel::mac::objc {

template <>
struct Encode<DispatchQueueTag> {
    static constexpr FixedString value{"{dispatch_queue_s=}"};
};
template <>
struct Encode<DispatchSourceTag> {
    static constexpr FixedString value{"{dispatch_source_s=}"};
};
template <>
struct Encode<DispatchObjectTag> {
    static constexpr FixedString value{"{__DispatchObject=}"};
};
template <>
struct Encode<DispatchSourceTypeTag> {
    static constexpr FixedString value{"{dispatch_source_type_s=}"};
};
template <>
struct Encode<DispatchQueueAttributeTag> {
    static constexpr FixedString value{"{dispatch_queue_attr_s=}"};
};

}  // namespace morvel::mac::objc
