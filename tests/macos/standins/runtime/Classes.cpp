#include "tests/macos/standins/runtime/Classes.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <set>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace vantrel::standins {

struct ClassMethods {
    std::unordered_map<Selector, Implementation> all;
};

}  // namespace vantrel::standins

namespace {

using namespace vantrel::standins;

/// Created before everything else and never destroyed: threads may still send messages while the process ends.
struct Registry {
    std::mutex mutex;
    std::set<std::string, std::less<>> selectors;
    std::vector<std::unique_ptr<ClassMethods>> methods;

    static Registry& shared() {
        static Registry* const registry = new Registry;
        return *registry;
    }
};

constexpr std::uint32_t entrySizeMask = 0xfffc;

void add(Class& cls, MethodList* list) {
    if (list == nullptr) return;
    auto* place = reinterpret_cast<char*>(list->first);
    for (std::uint32_t index = 0; index < list->count; ++index, place += list->entrySize & entrySizeMask) {
        auto* const entry = reinterpret_cast<Method*>(place);
        entry->name = selector(entry->name);
        cls.methods->all[entry->name] = entry->implementation;
    }
}

/// A class's variables begin where its superclass's end, which the compiler does not know.
void slideVariables(ClassDescription& description, std::uint32_t superclassSize) {
    if (superclassSize <= description.instanceStart) return;
    const auto* list = description.variables;
    const std::span<const InstanceVariable> variables(list == nullptr ? nullptr : list->first,
                                                      list == nullptr ? 0 : list->count);
    std::uint32_t alignment = alignof(void*);
    for (const auto& variable : variables) alignment = std::max(alignment, 1U << variable.alignment);
    std::uint32_t slide = superclassSize - description.instanceStart;
    slide = (slide + alignment - 1) & ~(alignment - 1);
    for (const auto& variable : variables) {
        if (variable.offset != nullptr) *variable.offset += slide;
    }
    description.instanceStart += slide;
    description.instanceSize += slide;
}

void load(Class* cls) {
    if (cls == nullptr || cls->methods != nullptr) return;
    load(cls->superclass);
    Registry& registry = Registry::shared();
    cls->methods = registry.methods.emplace_back(std::make_unique<ClassMethods>()).get();
    const bool isMeta = (cls->description->flags & isMetaclass) != 0;
    if (!isMeta && cls->superclass != nullptr) {
        slideVariables(*cls->description, cls->superclass->description->instanceSize);
    }
    add(*cls, cls->description->methods);
}

}  // namespace

extern "C" {

// The linker's names for the beginning and the end of the compiler's sections.
extern Class* __start_objc_classlist[] __attribute__((weak));
extern Class* __stop_objc_classlist[] __attribute__((weak));
extern Category* __start_objc_catlist[] __attribute__((weak));
extern Category* __stop_objc_catlist[] __attribute__((weak));
extern Selector __start_objc_selrefs[] __attribute__((weak));
extern Selector __stop_objc_selrefs[] __attribute__((weak));

void* _objc_empty_cache = nullptr;

// Before the constructors of the program's own objects.
__attribute__((constructor(101))) static void loadEverything() {
    for (Selector* each = __start_objc_selrefs; each < __stop_objc_selrefs; ++each) *each = selector(*each);
    for (Class** each = __start_objc_classlist; each < __stop_objc_classlist; ++each) {
        load((*each)->isa);
        load(*each);
    }
    for (Category** each = __start_objc_catlist; each < __stop_objc_catlist; ++each) {
        Class* const extended = (*each)->extended;
        load(extended->isa);
        load(extended);
        add(*extended, (*each)->instanceMethods);
        add(*extended->isa, (*each)->classMethods);
    }
}

/// Foundation's: raises NSInvalidArgumentException.
[[noreturn]] void vantrel_raise_unrecognized(const char* message);

Implementation vantrel_method(const Object* receiver, Selector name) {
    if (const Implementation found = method(receiver->isa, name)) return found;
    const bool isMeta = (receiver->isa->description->flags & isMetaclass) != 0;
    vantrel_raise_unrecognized((std::string(isMeta ? "+[" : "-[") + nameOf(receiver->isa) + " " + name + "]").c_str());
}

Implementation vantrel_super_method(const SuperMessage* message, Selector name) {
    if (const Implementation found = method(message->current->superclass, name)) return found;
    vantrel_raise_unrecognized((std::string("super of ") + nameOf(message->current) + " " + name).c_str());
}

Selector sel_registerName(const char* name) {
    return selector(name);
}

Class* object_getClass(const Object* object) {
    return object == nullptr ? nullptr : object->isa;
}

}  // extern "C"

namespace vantrel::standins {

Selector selector(std::string_view name) {
    Registry& registry = Registry::shared();
    const std::lock_guard guard(registry.mutex);
    const auto found = registry.selectors.find(name);
    if (found != registry.selectors.end()) return found->c_str();
    return registry.selectors.emplace(name).first->c_str();
}

Implementation ownMethod(const Class* cls, Selector name) {
    const auto found = cls->methods->all.find(name);
    return found == cls->methods->all.end() ? nullptr : found->second;
}

Implementation method(const Class* cls, Selector name) {
    for (; cls != nullptr; cls = cls->superclass) {
        if (const Implementation found = ownMethod(cls, name)) return found;
    }
    return nullptr;
}

bool isKindOf(const Class* cls, const Class* wanted) {
    for (; cls != nullptr; cls = cls->superclass) {
        if (cls == wanted) return true;
    }
    return false;
}

const char* nameOf(const Class* cls) {
    return cls->description->name;
}

void fatal(std::string_view what) {
    std::fprintf(stderr, "stand-ins: %.*s\n", static_cast<int>(what.size()), what.data());
    std::abort();
}

}  // namespace vantrel::standins
