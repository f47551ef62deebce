#pragma once

#include <cstdint>

/// The parts that are read here of what the compiler writes for Apple's second Objective-C ABI. The field names are
/// this project's.
namespace vantrel::standins {

struct Class;
struct ClassMethods;

/// Selectors of the same name are the same pointer once a class has been loaded.
using Selector = const char*;
using Implementation = void (*)();

struct Method {
    Selector name;
    const char* types;
    Implementation implementation;
};

struct MethodList {
    std::uint32_t entrySize;
    std::uint32_t count;
    Method first[1];
};

struct InstanceVariable {
    /// Where the compiled code finds the variable's offset.
    long* offset;
    const char* name;
    const char* type;
    /// As the exponent of two.
    std::uint32_t alignment;
    std::uint32_t size;
};

struct InstanceVariableList {
    std::uint32_t entrySize;
    std::uint32_t count;
    InstanceVariable first[1];
};

/// The part of a class that Apple's runtime only reads.
struct ClassDescription {
    std::uint32_t flags;
    std::uint32_t instanceStart;
    std::uint32_t instanceSize;
    std::uint32_t reserved;
    const std::uint8_t* strongLayout;
    const char* name;
    MethodList* methods;
    const void* protocols;
    InstanceVariableList* variables;
    const std::uint8_t* weakLayout;
    const void* properties;
};

struct Object {
    Class* isa;
};

struct Class : Object {
    Class* superclass;
    const void* cache;
    /// Empty until the class is loaded.
    ClassMethods* methods;
    ClassDescription* description;
};

struct Category {
    const char* name;
    Class* extended;
    MethodList* instanceMethods;
    MethodList* classMethods;
};

/// The contents of a message to super: its receiver, and the class whose method sends it.
struct SuperMessage {
    Object* receiver;
    Class* current;
};

inline constexpr std::uint32_t isMetaclass = 1;

}  // namespace vantrel::standins
