#include <cstddef>
#include <cstring>
#include <mutex>

#include "tests/macos/standins/runtime/Classes.h"
#include "tests/macos/standins/runtime/Objects.h"

namespace vantrel::standins {

namespace {

std::mutex& propertyMutex() {
    static auto* const mutex = new std::mutex;
    return *mutex;
}

Object** placeOf(Object* self, std::ptrdiff_t offset) {
    return reinterpret_cast<Object**>(reinterpret_cast<char*>(self) + offset);
}

void set(Object* self, Object* value, std::ptrdiff_t offset, bool copies) {
    static const Selector copy = selector("copy");
    Object* const fresh = copies ? objc_msgSend(value, copy) : objc_retain(value);
    Object* before = nullptr;
    {
        const std::lock_guard guard(propertyMutex());
        before = *placeOf(self, offset);
        *placeOf(self, offset) = fresh;
    }
    objc_release(before);
}

}  // namespace

extern "C" {

Object* objc_getProperty(Object* self, Selector, std::ptrdiff_t offset, bool) {
    Object* value = nullptr;
    {
        const std::lock_guard guard(propertyMutex());
        value = objc_retain(*placeOf(self, offset));
    }
    return objc_autorelease(value);
}

void objc_setProperty_atomic(Object* self, Selector, Object* value, std::ptrdiff_t offset) {
    set(self, value, offset, false);
}

void objc_setProperty_nonatomic(Object* self, Selector, Object* value, std::ptrdiff_t offset) {
    set(self, value, offset, false);
}

void objc_setProperty_atomic_copy(Object* self, Selector, Object* value, std::ptrdiff_t offset) {
    set(self, value, offset, true);
}

void objc_setProperty_nonatomic_copy(Object* self, Selector, Object* value, std::ptrdiff_t offset) {
    set(self, value, offset, true);
}

void objc_copyStruct(void* to, const void* from, std::ptrdiff_t size, bool, bool) {
    const std::lock_guard guard(propertyMutex());
    std::memmove(to, from, static_cast<std::size_t>(size));
}

}  // extern "C"

}  // namespace vantrel::standins
