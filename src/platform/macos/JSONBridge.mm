#include "platform/macos/JSONBridge.h"

#include <utility>

#include "platform/macos/Text.h"

namespace vantrel::macos {

namespace {

bool isBoolean(NSNumber* number) {
    return CFGetTypeID((__bridge CFTypeRef)number) == CFBooleanGetTypeID();
}

std::optional<JSONValue> arrayValue(NSArray* array, std::size_t depth) {
    JSONArray values;
    for (id element in array) {
        auto value = jsonValue(element, depth);
        if (!value) return std::nullopt;
        values.push_back(std::move(*value));
    }
    return values;
}

std::optional<JSONValue> objectValue(NSDictionary* dictionary, std::size_t depth) {
    JSONObject values;
    for (id key in dictionary) {
        auto name = bytesOfAny(key);
        auto value = jsonValue(dictionary[key], depth);
        if (!name || !value) return std::nullopt;
        values.insert_or_assign(std::move(*name), std::move(*value));
    }
    return values;
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

std::optional<JSONValue> jsonValue(id object, std::size_t depth) {
    if ([object isKindOfClass:[NSNull class]]) return JSONValue();
    if ([object isKindOfClass:[NSString class]]) return JSONValue(bytesOf(object));
    if ([object isKindOfClass:[NSNumber class]]) {
        NSNumber* number = object;
        if (isBoolean(number)) return JSONValue(static_cast<bool>(number.boolValue));
        return JSONValue(number.doubleValue);
    }
    if (depth >= deepestJSON) return std::nullopt;
    if ([object isKindOfClass:[NSArray class]]) return arrayValue(object, depth + 1);
    if ([object isKindOfClass:[NSDictionary class]]) return objectValue(object, depth + 1);
    return std::nullopt;
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
