#include "tests/macos/standins/appkit/SendAction.h"

extern "C" void objc_msgSend();

extern "C" const char* sel_getName(SEL selector) {
    return (const char*)(const void*)selector;
}

namespace vantrel::standins {

void sendAction(SEL action, __unsafe_unretained id target, __unsafe_unretained id sender) {
    if (action == nullptr || target == nil) return;
    reinterpret_cast<void (*)(id, SEL, id)>(objc_msgSend)(target, action, sender);
}

}  // namespace vantrel::standins
