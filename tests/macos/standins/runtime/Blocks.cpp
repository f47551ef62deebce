// Blocks, by the published description of their implementation.
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include "tests/macos/standins/runtime/Classes.h"
#include "tests/macos/standins/runtime/Objects.h"

namespace vantrel::standins {

namespace {

// In the flags of a block or a variable.
constexpr int countMask = 0xfffe;
constexpr int oneReference = 2;
constexpr int needsFree = 1 << 24;
constexpr int hasCopyAndDispose = 1 << 25;
constexpr int isGlobal = 1 << 28;

// The kind of a captured value.
constexpr int kindMask = 0xf;
constexpr int kindBlock = 7;
constexpr int kindVariable = 8;
constexpr int calledByVariable = 128;

struct BlockDescriptor {
    unsigned long reserved;
    unsigned long size;
    void (*copy)(void* to, const void* from);
    void (*dispose)(const void* block);
};

struct BlockObject : Object {
    std::atomic<int> flags;
    int reserved;
    void (*invoke)(void*, ...);
    BlockDescriptor* descriptor;
};

/// A variable that was declared __block.
struct SharedVariable {
    void* isa;
    SharedVariable* forwarding;
    std::atomic<int> flags;
    std::uint32_t size;
    void (*keep)(SharedVariable* to, SharedVariable* from);
    void (*dispose)(SharedVariable* variable);
};

void* duplicate(const void* source, std::size_t size) {
    void* const made = std::malloc(size);
    if (made == nullptr) throw std::bad_alloc();
    return std::memcpy(made, source, size);
}

SharedVariable* share(SharedVariable* variable) {
    if (variable->forwarding != variable || (variable->flags & needsFree) != 0) {
        variable->forwarding->flags += oneReference;
        return variable->forwarding;
    }
    auto* const made = static_cast<SharedVariable*>(duplicate(variable, variable->size));
    // One reference for the block, one for the frame that the variable comes from.
    made->flags = variable->flags | needsFree | 2 * oneReference;
    made->forwarding = made;
    variable->forwarding = made;
    if ((variable->flags & hasCopyAndDispose) != 0) variable->keep(made, variable);
    return made;
}

void unshare(SharedVariable* variable) {
    SharedVariable* const shared = variable->forwarding;
    if ((shared->flags & needsFree) == 0) return;
    if (((shared->flags -= oneReference) & countMask) != 0) return;
    if ((shared->flags & hasCopyAndDispose) != 0) shared->dispose(shared);
    std::free(shared);
}

}  // namespace

extern "C" {

extern Class copiedBlocks __asm__("OBJC_CLASS_$___NSMallocBlock__");

void* _Block_copy(const void* source) {
    if (source == nullptr) return nullptr;
    auto* const block = static_cast<BlockObject*>(const_cast<void*>(source));
    if ((block->flags & isGlobal) != 0) return block;
    if ((block->flags & needsFree) != 0) {
        block->flags += oneReference;
        return block;
    }
    auto* const made = static_cast<BlockObject*>(duplicate(block, block->descriptor->size));
    made->flags = (block->flags & ~countMask) | needsFree | oneReference;
    made->isa = &copiedBlocks;
    census("block", 1);
    if ((block->flags & hasCopyAndDispose) != 0) block->descriptor->copy(made, block);
    return made;
}

void _Block_release(const void* source) {
    auto* const block = static_cast<BlockObject*>(const_cast<void*>(source));
    if (block == nullptr || (block->flags & needsFree) == 0) return;
    const int left = (block->flags -= oneReference) & countMask;
    if (left == countMask) fatal("one release too many of a block");
    if (left != 0) return;
    if ((block->flags & hasCopyAndDispose) != 0) block->descriptor->dispose(block);
    census("block", -1);
    std::free(block);
}

// Retaining a block on the stack does not copy it.
void vantrel_retain_block(void* source) {
    auto* const block = static_cast<BlockObject*>(source);
    if ((block->flags & needsFree) != 0) block->flags += oneReference;
}

void _Block_object_assign(void* to, const void* captured, int kind) {
    auto** const place = static_cast<const void**>(to);
    auto* const object = const_cast<void*>(captured);
    if ((kind & calledByVariable) != 0) {
        *place = object;
    } else if ((kind & kindMask) == kindVariable) {
        *place = share(static_cast<SharedVariable*>(object));
    } else if ((kind & kindMask) == kindBlock) {
        *place = _Block_copy(object);
    } else {
        *place = objc_retain(static_cast<Object*>(object));
    }
}

void _Block_object_dispose(const void* captured, int kind) {
    auto* const object = const_cast<void*>(captured);
    if ((kind & calledByVariable) != 0) return;
    if ((kind & kindMask) == kindVariable) {
        unshare(static_cast<SharedVariable*>(object));
    } else if ((kind & kindMask) == kindBlock) {
        _Block_release(object);
    } else {
        objc_release(static_cast<Object*>(object));
    }
}

Object* objc_retainBlock(Object* block) {
    return static_cast<Object*>(_Block_copy(block));
}

}  // extern "C"

}  // namespace vantrel::standins
