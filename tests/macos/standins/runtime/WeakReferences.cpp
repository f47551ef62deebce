#include "tests/macos/standins/runtime/WeakReferences.h"

#include <mutex>
#include <unordered_map>
#include <unordered_set>

#include "tests/macos/standins/runtime/Objects.h"

namespace vantrel::standins {

namespace {

/// The places that refer weakly to an object. One lock for all of them; no message is sent under it.
struct Places {
    std::mutex mutex;
    std::unordered_map<Object*, std::unordered_set<Object**>> of;

    static Places& shared() {
        static Places* const places = new Places;
        return *places;
    }

    void store(Object** place, Object* object) {
        if (*place != nullptr) {
            const auto before = of.find(*place);
            if (before != of.end() && before->second.erase(place) > 0 && before->second.empty()) of.erase(before);
        }
        *place = object;
        if (object != nullptr) of[object].insert(place);
    }
};

}  // namespace

void forgetWeakReferences(Object* object) {
    Places& places = Places::shared();
    const std::lock_guard guard(places.mutex);
    const auto found = places.of.find(object);
    if (found == places.of.end()) return;
    for (Object** place : found->second) *place = nullptr;
    places.of.erase(found);
}

extern "C" {

Object* objc_storeWeak(Object** place, Object* object) {
    // A dying object gets no more weak references. The reference keeps it alive until the place is registered.
    const bool lives = object != nullptr && vantrel_try_retain(object);
    {
        Places& places = Places::shared();
        const std::lock_guard guard(places.mutex);
        places.store(place, lives ? object : nullptr);
    }
    if (lives) objc_release(object);
    return lives ? object : nullptr;
}

Object* objc_initWeak(Object** place, Object* object) {
    *place = nullptr;
    return objc_storeWeak(place, object);
}

void objc_destroyWeak(Object** place) {
    objc_storeWeak(place, nullptr);
}

Object* objc_loadWeakRetained(Object** place) {
    Places& places = Places::shared();
    const std::lock_guard guard(places.mutex);
    return *place != nullptr && vantrel_try_retain(*place) ? *place : nullptr;
}

Object* objc_loadWeak(Object** place) {
    return objc_autorelease(objc_loadWeakRetained(place));
}

void objc_copyWeak(Object** to, Object** from) {
    Object* const object = objc_loadWeakRetained(from);
    objc_initWeak(to, object);
    objc_release(object);
}

void objc_moveWeak(Object** to, Object** from) {
    objc_copyWeak(to, from);
    objc_destroyWeak(from);
}

}  // extern "C"

}  // namespace vantrel::standins
