#include "platform/macos/bridge/JSONBridge.h"

#include <utility>
#include <vector>

#include "platform/macos/bridge/Text.h"

namespace vantrel::macos {

namespace {

bool isBoolean(NSNumber* number) {
    return CFGetTypeID((__bridge CFTypeRef)number) == CFBooleanGetTypeID();
}

// An object still to be read, and its destination. Destinations do not move: an array gets its size before its members
// are read, and a map does not move its values.
struct Unread {
    id object;
    JSONValue* place;
    std::size_t depth;
};

void readArray(NSArray* array, const Unread& whole, std::vector<Unread>& unread) {
    auto& values = whole.place->value.emplace<JSONArray>(array.count);
    std::size_t index = 0;
    for (id element in array) unread.push_back({element, &values[index++], whole.depth + 1});
}

bool readObject(NSDictionary* dictionary, const Unread& whole, std::vector<Unread>& unread) {
    auto& values = whole.place->value.emplace<JSONObject>();
    for (id key in dictionary) {
        auto name = bytesOfAny(key);
        if (!name) return false;
        unread.push_back({dictionary[key], &values[std::move(*name)], whole.depth + 1});
    }
    return true;
}

bool read(const Unread& whole, std::vector<Unread>& unread) {
    id object = whole.object;
    auto& value = whole.place->value;
    if ([object isKindOfClass:[NSNull class]]) return true;
    if ([object isKindOfClass:[NSString class]]) {
        value = bytesOf(object);
        return true;
    }
    if ([object isKindOfClass:[NSNumber class]]) {
        NSNumber* number = object;
        if (isBoolean(number)) {
            value = static_cast<bool>(number.boolValue);
        } else {
            value = number.doubleValue;
        }
        return true;
    }
    if (whole.depth >= deepestJSON) return false;
    if ([object isKindOfClass:[NSArray class]]) {
        readArray(object, whole, unread);
        return true;
    }
    return [object isKindOfClass:[NSDictionary class]] && readObject(object, whole, unread);
}

NSArray* foundationArray(const JSONArray& values, std::size_t depth) {
    NSMutableArray* array = [NSMutableArray arrayWithCapacity:values.size()];
    for (const JSONValue& value : values) {
        id element = foundationObject(value, depth);
        if (element == nil) return nil;
        [array addObject:element];
    }
    return array;
}

NSDictionary* foundationDictionary(const JSONObject& values, std::size_t depth) {
    NSMutableDictionary* dictionary = [NSMutableDictionary dictionaryWithCapacity:values.size()];
    for (const auto& [name, value] : values) {
        NSString* key = strictText(name);
        id element = foundationObject(value, depth);
        if (key == nil || element == nil) return nil;
        dictionary[key] = element;
    }
    return dictionary;
}

}  // namespace

// A list instead of recursion: a queue's thread has a stack of half a megabyte, and the server chooses the depth.
std::optional<JSONValue> jsonValue(id object) {
    JSONValue value;
    std::vector<Unread> unread{{object, &value, 0}};
    while (!unread.empty()) {
        const Unread next = unread.back();
        unread.pop_back();
        if (!read(next, unread)) return std::nullopt;
    }
    return value;
}

id foundationObject(const JSONValue& value, std::size_t depth) {
    if (const auto* string = value.string()) return strictText(*string);
    if (const bool* boolean = value.boolean()) return [NSNumber numberWithBool:*boolean];
    if (const auto* number = std::get_if<double>(&value.value)) return [NSNumber numberWithDouble:*number];
    if (std::holds_alternative<std::nullptr_t>(value.value)) return [NSNull null];
    if (depth >= deepestJSON) return nil;
    if (const auto* array = value.array()) return foundationArray(*array, depth + 1);
    if (const auto* object = value.object()) return foundationDictionary(*object, depth + 1);
    return nil;
}

}  // namespace vantrel::macos
