#pragma once

#include <map>
#include <string>

#include "tests/macos/standins/runtime/Layout.h"

namespace vantrel::standins {

/// The living objects, by the name of their class. Copied blocks count as "block". Any thread.
std::map<std::string, long> livingObjects();

/// Counts one object of that name more or less.
void census(const char* name, int change);

extern "C" {

// The part of the root class.
Object* vantrel_allocate(Class* cls);
void vantrel_deallocate(Object* object);
Object* vantrel_retain(Object* object);
void vantrel_release(Object* object);
/// Adds a reference, unless the last one is gone.
bool vantrel_try_retain(Object* object);

Object* objc_msgSend(Object* receiver, Selector name, ...);
Object* objc_retain(Object* object);
void objc_release(Object* object);
Object* objc_autorelease(Object* object);
}

}  // namespace vantrel::standins
