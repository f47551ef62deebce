#pragma once

namespace vantrel::standins {

/// From now on the census leaves the object aside: it lives as long as the process.
void leaveAside(const void* object);

/// Whether that was said of the object.
bool isLeftAside(const void* object);

#ifdef __OBJC__
template <class ObjectPointer>
ObjectPointer singleton(ObjectPointer made) {
    leaveAside((__bridge const void*)made);
    return made;
}
#endif

}  // namespace vantrel::standins
