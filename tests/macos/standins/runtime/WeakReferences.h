#pragma once

#include "tests/macos/standins/runtime/Layout.h"

namespace vantrel::standins {

/// From now on every weak reference to the object is nil. Any thread.
void forgetWeakReferences(Object* object);

}  // namespace vantrel::standins
