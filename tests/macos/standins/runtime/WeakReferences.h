#pragma once

#include "tests/macos/standins/runtime/Layout.h"

namespace vantrel::standins {

/// Every weak reference to the object is nil from now on. Any thread.
void forgetWeakReferences(Object* object);

}  // namespace vantrel::standins
