// An Objective-C exception is a C++ exception whose type is a class, so that each can pass through frames of the other
// language.
#include <cxxabi.h>
#include <unwind.h>

#include <exception>
#include <new>
#include <typeinfo>

#include "tests/macos/standins/runtime/Classes.h"
#include "tests/macos/standins/runtime/Objects.h"

using namespace vantrel::standins;

extern "C" {

/// The compiler's layout for a class that can be thrown.
struct ClassType {
    const void* const* virtualTable;
    const char* name;
    const Class* cls;
};

extern const void* objc_ehtype_vtable[];

static void doNothing(void*) {}
static bool isNot() {
    return false;
}

/// Whether a catch of `wanted` accepts what was thrown. A null class accepts every object.
static bool catches(const ClassType* wanted, const ClassType* thrown, void** object, unsigned) {
    constexpr int firstFunction = 2;
    if (thrown->virtualTable != objc_ehtype_vtable + firstFunction) return false;
    return wanted->cls == nullptr || isKindOf((*static_cast<Object**>(*object))->isa, wanted->cls);
}

// The layout of std::type_info: offset, its own type, two destructors, is_pointer, is_function, do_catch, do_upcast.
const void* objc_ehtype_vtable[] = {nullptr,
                                    nullptr,
                                    reinterpret_cast<const void*>(doNothing),
                                    reinterpret_cast<const void*>(doNothing),
                                    reinterpret_cast<const void*>(isNot),
                                    reinterpret_cast<const void*>(isNot),
                                    reinterpret_cast<const void*>(catches),
                                    reinterpret_cast<const void*>(isNot)};

extern const ClassType OBJC_EHTYPE_id;
const ClassType OBJC_EHTYPE_id = {objc_ehtype_vtable + 2, "id", nullptr};

static void releaseThrown(void* place) {
    objc_release(*static_cast<Object**>(place));
}

[[noreturn]] void objc_exception_throw(Object* object) {
    auto* const place = static_cast<Object**>(abi::__cxa_allocate_exception(sizeof(Object*)));
    *place = objc_retain(object);
    // Every object is thrown as `id`. The catch finds out its class.
    abi::__cxa_throw(place, const_cast<std::type_info*>(reinterpret_cast<const std::type_info*>(&OBJC_EHTYPE_id)),
                     releaseThrown);
}

Object* objc_begin_catch(void* exception) {
    return *static_cast<Object**>(abi::__cxa_begin_catch(exception));
}

void objc_end_catch() {
    abi::__cxa_end_catch();
}

[[noreturn]] void objc_exception_rethrow() {
    abi::__cxa_rethrow();
}

[[noreturn]] void objc_terminate() {
    std::terminate();
}

_Unwind_Reason_Code __gxx_personality_v0(int, _Unwind_Action, _Unwind_Exception_Class, _Unwind_Exception*,
                                         _Unwind_Context*);

_Unwind_Reason_Code __objc_personality_v0(int version, _Unwind_Action actions, _Unwind_Exception_Class cls,
                                          _Unwind_Exception* exception, _Unwind_Context* context) {
    return __gxx_personality_v0(version, actions, cls, exception, context);
}

}  // extern "C"
