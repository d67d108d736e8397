// Blocks: C++ callables as the system takes them, and the system's blocks as C++ callables.
//
// - `StackBlock<void(NSNotification)> block(callable)` is a block in the C++ object itself, for calls that use it
//   before they return. A callee that keeps it copies it to the heap, which copies the callable.
// - `Block<void(NSNotification)>` is a reference to a block on the heap: made from a callable, or wrapped around one
//   that the system handed us. It can be called, and it is what completion handlers in our overrides arrive as.
//
// The callable is destroyed with the last copy, on whichever thread releases it. Exceptions end at the block's border.
#pragma once

#include <functional>
#include <new>
#include <utility>

#include "Platform/Mac/objc/Guard.h"
#include "Platform/Mac/objc/Native.h"

namespace morvel::mac::objc {

/// A block as the runtime sees it. Fixed by the system's binary interface.
struct BlockHeader {
    const void* isa;
    int flags;
    int reserved;
    void (*invoke)();
    const struct BlockDescriptor* descriptor;
};
struct BlockDescriptor {
    unsigned long reserved;
    unsigned long size;
    void (*copy)(void* copied, const void* original);
    void (*dispose)(const void* block);
    const char* signature;
};
enum BlockFlags : int { kBlockHasCopyDispose = 1 << 25, kBlockHasSignature = 1 << 30 };

using RawBlock = BlockHeader*;

template <>
struct Encode<RawBlock> {
    static constexpr FixedString value{"@?"};
};

namespace detail {

template <typename Signature>
struct BlockLiteral;

template <typename R, typename... Args>
struct BlockLiteral<R(Args...)> {
    BlockHeader header;
    alignas(std::function<R(Args...)>) unsigned char storage[sizeof(std::function<R(Args...)>)];

    std::function<R(Args...)>& callable() {
        return *std::launder(reinterpret_cast<std::function<R(Args...)>*>(storage));
    }

    static NativeType<R> invoke(BlockLiteral* block, NativeType<Args>... arguments) noexcept {
        return guarded("block", [&]() -> NativeType<R> {
            if constexpr (std::is_void_v<R>) {
                block->callable()(Native<Args>::fromNative(arguments)...);
            } else {
                return Native<R>::toResult(block->callable()(Native<Args>::fromNative(arguments)...));
            }
        });
    }
    // The runtime has moved the bytes already; this makes the callable a real copy of its own. If what it holds cannot
    // be copied it stays empty, and so each call of the copy ends at the block's border.
    static void copy(void* copied, const void* original) noexcept {
        auto* const target = new (static_cast<BlockLiteral*>(copied)->storage) std::function<R(Args...)>();
        guarded("block copy", [&] { *target = static_cast<BlockLiteral*>(const_cast<void*>(original))->callable(); });
    }
    static void dispose(const void* block) noexcept {
        std::destroy_at(&static_cast<BlockLiteral*>(const_cast<void*>(block))->callable());
    }

    static constexpr auto kSignature = ((Encode<R>::value + FixedString{"@?"}) + ... + Encode<Args>::value);
    static constexpr BlockDescriptor kDescriptor{0, sizeof(BlockHeader) + sizeof(storage), &copy, &dispose,
                                                 kSignature.text};
};

}  // namespace detail

template <typename Signature>
class StackBlock;

template <typename R, typename... Args>
class StackBlock<R(Args...)> {
public:
    explicit StackBlock(std::function<R(Args...)> callable) {
        literal_.header = {_NSConcreteStackBlock, kBlockHasCopyDispose | kBlockHasSignature, 0,
                           reinterpret_cast<void (*)()>(&Literal::invoke), &Literal::kDescriptor};
        new (literal_.storage) std::function<R(Args...)>(std::move(callable));
    }
    StackBlock(const StackBlock&) = delete;
    StackBlock& operator=(const StackBlock&) = delete;
    ~StackBlock() { Literal::dispose(&literal_); }

    /// Valid while this object lives.
    RawBlock raw() const { return const_cast<RawBlock>(&literal_.header); }

private:
    using Literal = detail::BlockLiteral<R(Args...)>;
    Literal literal_;
};

template <typename Signature>
class Block;

template <typename R, typename... Args>
class Block<R(Args...)> {
public:
    Block() = default;
    /// Keeps a block of the system's.
    explicit Block(RawBlock borrowed) : raw_(borrowed ? static_cast<RawBlock>(_Block_copy(borrowed)) : nullptr) {}
    Block(std::function<R(Args...)> callable) : Block(StackBlock<R(Args...)>(std::move(callable)).raw()) {}
    Block(const Block& other) : Block(other.raw_) {}
    Block(Block&& other) noexcept : raw_(std::exchange(other.raw_, nullptr)) {}
    Block& operator=(Block other) noexcept {
        std::swap(raw_, other.raw_);
        return *this;
    }
    ~Block() {
        if (raw_) _Block_release(raw_);
    }

    /// Calls the block. An empty one does nothing and returns a zero value.
    R operator()(Args... arguments) const {
        if (!raw_) return R();
        auto* entry = reinterpret_cast<NativeType<R> (*)(RawBlock, NativeType<Args>...)>(raw_->invoke);
        if constexpr (std::is_void_v<R>) {
            entry(raw_, Native<Args>::toNative(arguments)...);
        } else {
            return Native<R>::fromNative(entry(raw_, Native<Args>::toNative(arguments)...));
        }
    }

    RawBlock raw() const { return raw_; }
    explicit operator bool() const { return raw_ != nullptr; }

private:
    RawBlock raw_ = nullptr;
};

template <typename Signature>
struct Encode<Block<Signature>> {
    static constexpr FixedString value{"@?"};
};
template <typename Signature>
struct Encode<StackBlock<Signature>> {
    static constexpr FixedString value{"@?"};
};
template <typename Signature>
struct Native<Block<Signature>> {
    using type = RawBlock;
    static type toNative(const Block<Signature>& block) { return block.raw(); }
    static Block<Signature> fromNative(type block) { return Block<Signature>(block); }
};
template <typename Signature>
struct Native<StackBlock<Signature>> {
    using type = RawBlock;
    static type toNative(const StackBlock<Signature>& block) { return block.raw(); }
};

}  // namespace morvel::mac::objc
