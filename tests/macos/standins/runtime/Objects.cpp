#include "tests/macos/standins/runtime/Objects.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <mutex>
#include <new>
#include <set>

#include "tests/macos/standins/runtime/Classes.h"
#include "tests/macos/standins/runtime/Singletons.h"
#include "tests/macos/standins/runtime/WeakReferences.h"

namespace vantrel::standins {

namespace {

/// Precedes every object in memory.
struct alignas(std::max_align_t) Header {
    std::atomic<long> references = 1;
};

Header& headerOf(Object* object) {
    return *(reinterpret_cast<Header*>(object) - 1);
}

/// Never destroyed: threads may still create objects while the process ends.
struct Census {
    std::mutex mutex;
    std::map<std::string, long> living;
    std::set<const void*> singletons;

    static Census& shared() {
        static Census* const census = new Census;
        return *census;
    }
};

using Lifecycle = void (*)(Object*, Selector);

void construct(const Class* cls, Object* object) {
    static const Selector name = selector(".cxx_construct");
    if (cls->superclass != nullptr) construct(cls->superclass, object);
    if (const auto found = ownMethod(cls, name)) reinterpret_cast<Lifecycle>(found)(object, name);
}

void destruct(const Class* cls, Object* object) {
    static const Selector name = selector(".cxx_destruct");
    for (; cls != nullptr; cls = cls->superclass) {
        if (const auto found = ownMethod(cls, name)) reinterpret_cast<Lifecycle>(found)(object, name);
    }
}

}  // namespace

std::map<std::string, long> livingObjects() {
    Census& census = Census::shared();
    const std::lock_guard guard(census.mutex);
    return census.living;
}

void census(const char* name, int change) {
    Census& census = Census::shared();
    const std::lock_guard guard(census.mutex);
    const auto place = census.living.try_emplace(name, 0).first;
    place->second += change;
    if (place->second == 0) census.living.erase(place);
}

void leaveAside(const void* object) {
    census(nameOf(static_cast<const Object*>(object)->isa), -1);
    Census& census = Census::shared();
    const std::lock_guard guard(census.mutex);
    census.singletons.insert(object);
}

bool isLeftAside(const void* object) {
    Census& census = Census::shared();
    const std::lock_guard guard(census.mutex);
    return census.singletons.contains(object);
}

extern "C" {

Object* vantrel_allocate(Class* cls) {
    void* const memory = std::calloc(1, sizeof(Header) + cls->description->instanceSize);
    if (memory == nullptr) throw std::bad_alloc();
    auto* const object = reinterpret_cast<Object*>(new (memory) Header + 1);
    object->isa = cls;
    census(nameOf(cls), 1);
    construct(cls, object);
    return object;
}

void vantrel_deallocate(Object* object) {
    destruct(object->isa, object);
    forgetWeakReferences(object);
    census(nameOf(object->isa), -1);
    std::free(&headerOf(object));
}

Object* vantrel_retain(Object* object) {
    if (headerOf(object).references.fetch_add(1) <= 0) {
        fatal(std::string("retain of a dying ") + nameOf(object->isa));
    }
    return object;
}

void vantrel_release(Object* object) {
    static const Selector dealloc = selector("dealloc");
    const long left = headerOf(object).references.fetch_sub(1) - 1;
    if (left < 0) fatal(std::string("one release too many of a ") + nameOf(object->isa));
    if (left == 0) objc_msgSend(object, dealloc);
}

bool vantrel_try_retain(Object* object) {
    auto& references = headerOf(object).references;
    long count = references.load();
    while (count > 0) {
        if (references.compare_exchange_weak(count, count + 1)) return true;
    }
    return false;
}

Object* objc_retain(Object* object) {
    static const Selector name = selector("retain");
    return objc_msgSend(object, name);
}

void objc_release(Object* object) {
    static const Selector name = selector("release");
    objc_msgSend(object, name);
}

Object* objc_alloc(Object* cls) {
    static const Selector name = selector("alloc");
    return objc_msgSend(cls, name);
}

Object* objc_alloc_init(Object* cls) {
    static const Selector name = selector("init");
    return objc_msgSend(objc_alloc(cls), name);
}

Object* objc_opt_new(Object* cls) {
    return objc_alloc_init(cls);
}

Object* objc_opt_self(Object* object) {
    return object;
}

Object* objc_opt_class(Object* object) {
    static const Selector name = selector("class");
    return objc_msgSend(object, name);
}

bool objc_opt_isKindOfClass(Object* object, Class* wanted) {
    return object != nullptr && isKindOf(object->isa, wanted);
}

bool objc_opt_respondsToSelector(Object* object, Selector name) {
    return object != nullptr && method(object->isa, name) != nullptr;
}

void objc_storeStrong(Object** place, Object* object) {
    objc_retain(object);
    Object* const before = *place;
    *place = object;
    objc_release(before);
}

[[noreturn]] void objc_enumerationMutation(Object* collection) {
    fatal(std::string("a ") + nameOf(collection->isa) + " was changed while it was enumerated");
}

}  // extern "C"

}  // namespace vantrel::standins
