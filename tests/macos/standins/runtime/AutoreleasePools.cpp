#include "tests/macos/standins/runtime/AutoreleasePools.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "tests/macos/standins/runtime/Objects.h"
#include "tests/macos/standins/runtime/Singletons.h"

namespace vantrel::standins {

namespace {

std::atomic<long> strays = 0;

/// The stack of pools of one thread. What is left is released with the thread.
class Pools {
  public:
    Pools() = default;
    Pools(const Pools&) = delete;
    Pools& operator=(const Pools&) = delete;
    ~Pools() { releaseDownTo(0); }

    std::size_t push() {
        ++depth_;
        return objects_.size();
    }

    void pop(std::size_t size) {
        releaseDownTo(size);
        --depth_;
    }

    void add(Object* object) {
        if (depth_ == 0 && !isLeftAside(object)) ++strays;
        objects_.push_back(object);
    }

  private:
    // Destroying an object may autorelease what it owns.
    void releaseDownTo(std::size_t size) {
        while (objects_.size() > size) {
            Object* const last = objects_.back();
            objects_.pop_back();
            objc_release(last);
        }
    }

    std::vector<Object*> objects_;
    std::size_t depth_ = 0;
};

thread_local Pools pools;

}  // namespace

long autoreleasedWithoutPool() {
    return strays;
}

extern "C" {

// The token is the number of objects below the pool.
void* objc_autoreleasePoolPush() {
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(pools.push()));
}

void objc_autoreleasePoolPop(void* token) {
    pools.pop(reinterpret_cast<std::uintptr_t>(token));
}

Object* objc_autorelease(Object* object) {
    if (object != nullptr) pools.add(object);
    return object;
}

Object* objc_retainAutorelease(Object* object) {
    return objc_autorelease(objc_retain(object));
}

// Apple's runtime passes a returned object on without a pool if it can. Code must not depend on that.
Object* objc_autoreleaseReturnValue(Object* object) {
    return objc_autorelease(object);
}

Object* objc_retainAutoreleaseReturnValue(Object* object) {
    return objc_retainAutorelease(object);
}

Object* objc_retainAutoreleasedReturnValue(Object* object) {
    return objc_retain(object);
}

Object* objc_claimAutoreleasedReturnValue(Object* object) {
    return objc_retain(object);
}

Object* objc_unsafeClaimAutoreleasedReturnValue(Object* object) {
    return object;
}

}  // extern "C"

}  // namespace vantrel::standins
