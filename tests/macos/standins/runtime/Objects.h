#pragma once

#include <map>
#include <string>

#include "tests/macos/standins/runtime/Layout.h"

namespace vantrel::standins {

/// Objects that live, by the name of their class; copied blocks are counted under "block". Any thread.
std::map<std::string, long> livingObjects();

/// Counts one more object of that name, or one less.
void census(const char* name, int change);

extern "C" {

// The root class's part.
Object* vantrel_allocate(Class* cls);
void vantrel_deallocate(Object* object);
Object* vantrel_retain(Object* object);
void vantrel_release(Object* object);
/// One more reference, unless the last one has gone.
bool vantrel_try_retain(Object* object);

Object* objc_msgSend(Object* receiver, Selector name, ...);
Object* objc_retain(Object* object);
void objc_release(Object* object);
Object* objc_autorelease(Object* object);
}

}  // namespace vantrel::standins
