#import <Foundation/Foundation.h>

#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/foundation/Text.h"

using namespace vantrel::standins;

@interface __NSCFBoolean : NSNumber
@end

namespace {

/// The deepest document that is written. No page tells a bound for reading; this one only spares the stack.
constexpr std::size_t deepest = 512;
constexpr std::size_t deepestRead = 1024;
constexpr double largestWhole = 9007199254740992.0;

/// Nil for more levels than the system reads.
id objectOf(const nlohmann::json& value, std::size_t depth) {
    if (value.is_string()) return textOf(value.get_ref<const std::string&>());
    if (value.is_boolean()) return [NSNumber numberWithBool:value.get<bool>()];
    if (value.is_number()) return [NSNumber numberWithDouble:value.get<double>()];
    if (value.is_null()) return [NSNull null];
    if (depth >= deepestRead) return nil;
    if (value.is_array()) {
        NSMutableArray* array = [NSMutableArray arrayWithCapacity:value.size()];
        for (const auto& element : value) {
            id object = objectOf(element, depth + 1);
            if (object == nil) return nil;
            [array addObject:object];
        }
        return array;
    }
    NSMutableDictionary* dictionary = [NSMutableDictionary dictionaryWithCapacity:value.size()];
    for (const auto& [name, element] : value.items()) {
        id object = objectOf(element, depth + 1);
        if (object == nil) return nil;
        dictionary[textOf(name)] = object;
    }
    return dictionary;
}

bool isWritable(id object, std::size_t depth) {
    if (depth > deepest) return false;
    if ([object isKindOfClass:[NSArray class]]) {
        for (id element in (NSArray*)object) {
            if (!isWritable(element, depth + 1)) return false;
        }
        return true;
    }
    if ([object isKindOfClass:[NSDictionary class]]) {
        for (id key in (NSDictionary*)object) {
            if (![key isKindOfClass:[NSString class]]) return false;
            if (!isWritable(((NSDictionary*)object)[key], depth + 1)) return false;
        }
        return true;
    }
    if (depth == 0) return false;
    if ([object isKindOfClass:[NSNumber class]]) return std::isfinite([(NSNumber*)object doubleValue]);
    return [object isKindOfClass:[NSString class]] || [object isKindOfClass:[NSNull class]];
}

std::string writtenText(NSString* text) {
    std::string escaped;
    for (const char c : nlohmann::json(bytesOf(text)).dump()) {
        if (c == '/') escaped += '\\';
        escaped += c;
    }
    return escaped;
}

std::string writtenNumber(NSNumber* number) {
    const double value = number.doubleValue;
    if ([number isKindOfClass:[__NSCFBoolean class]]) return value != 0 ? "true" : "false";
    const bool isWhole = value == std::trunc(value) && std::fabs(value) <= largestWhole;
    return isWhole ? std::to_string(static_cast<std::int64_t>(value)) : nlohmann::json(value).dump();
}

std::string written(id object) {
    if ([object isKindOfClass:[NSString class]]) return writtenText(object);
    if ([object isKindOfClass:[NSNumber class]]) return writtenNumber(object);
    std::string members;
    if ([object isKindOfClass:[NSArray class]]) {
        for (id element in (NSArray*)object) members += (members.empty() ? "" : ",") + written(element);
        return "[" + members + "]";
    }
    if (![object isKindOfClass:[NSDictionary class]]) return "null";
    for (NSString* key in (NSDictionary*)object) {
        members += (members.empty() ? "" : ",") + writtenText(key) + ":" + written(((NSDictionary*)object)[key]);
    }
    return "{" + members + "}";
}

/// The virtual Mac needs this form to decide which objects must fail.
vantrel::JSONValue valueOf(id object) {
    if ([object isKindOfClass:[NSString class]]) return bytesOf(object);
    if ([object isKindOfClass:[__NSCFBoolean class]]) return static_cast<bool>([object boolValue]);
    if ([object isKindOfClass:[NSNumber class]]) return [(NSNumber*)object doubleValue];
    if ([object isKindOfClass:[NSArray class]]) {
        vantrel::JSONArray values;
        for (id element in (NSArray*)object) values.push_back(valueOf(element));
        return values;
    }
    if (![object isKindOfClass:[NSDictionary class]]) return {};
    vantrel::JSONObject values;
    for (NSString* key in (NSDictionary*)object) values[bytesOf(key)] = valueOf(((NSDictionary*)object)[key]);
    return values;
}

}  // namespace

@implementation NSJSONSerialization

+ (BOOL)isValidJSONObject:(id)object {
    return isWritable(object, 0);
}

// By default slashes are escaped; there is an option not to escape them.
+ (NSData*)dataWithJSONObject:(id)object options:(NSJSONWritingOptions)options error:(NSError* __autoreleasing*)error {
    if (options != 0 || !isWritable(object, 0)) {
        vantrel::standins::raise(@"NSInvalidArgumentException", @"Invalid type in JSON write");
    }
    const vantrel::JSONValue value = valueOf(object);
    // The Mac can be told to refuse an object.
    if (value.object() != nullptr && !mac().parts().json.serialise(*value.object())) {
        if (error != nullptr) *error = errorOf(@"NSCocoaErrorDomain", 3851, "I dati non possono essere scritti.");
        return nil;
    }
    const std::string bytes = written(object);
    return [NSData dataWithBytes:bytes.data() length:bytes.size()];
}

+ (id)JSONObjectWithData:(NSData*)data options:(NSJSONReadingOptions)options error:(NSError* __autoreleasing*)error {
    if (data == nil || options != 0) {
        vantrel::standins::raise(@"NSInvalidArgumentException", @"data parameter is nil");
    }
    const auto* const bytes = static_cast<const char*>(data.bytes);
    const auto document = nlohmann::json::parse(bytes, bytes + data.length, nullptr, false);
    id object = document.is_structured() ? objectOf(document, 0) : nil;
    if (object == nil && error != nullptr) {
        *error = errorOf(@"NSCocoaErrorDomain", 3840, "I dati non hanno il formato corretto.");
    }
    return object;
}

@end
