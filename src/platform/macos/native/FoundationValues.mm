#import "platform/macos/native/FoundationValues.h"

namespace tarnwik::mac {

namespace {

/// Makes the object that stands for each kind of value.
struct ObjectMaker
{
    id _Nullable operator()(std::monostate) const { return nil; }
    id _Nullable operator()(const std::string &text) const { return textFromUTF8(text); }
    id _Nullable operator()(bool flag) const { return [NSNumber numberWithBool:flag]; }
    id _Nullable operator()(std::int64_t number) const { return [NSNumber numberWithLongLong:number]; }
    id _Nullable operator()(double number) const { return [NSNumber numberWithDouble:number]; }
};

PropertyValue valueFromNumber(NSNumber *_Nonnull number)
{
    // Booleans are numbers to Objective-C; only CoreFoundation tells them apart.
    if (CFGetTypeID((__bridge CFTypeRef)number) == CFBooleanGetTypeID())
        return PropertyValue(static_cast<bool>(number.boolValue));
    if (CFNumberIsFloatType((__bridge CFNumberRef)number))
        return PropertyValue(number.doubleValue);
    return PropertyValue(static_cast<std::int64_t>(number.longLongValue));
}

} // namespace

NSString *_Nonnull textFromUTF8(const std::string &utf8)
{
    NSString *const text = [[NSString alloc] initWithBytes:utf8.data()
                                                    length:utf8.size()
                                                  encoding:NSUTF8StringEncoding];
    return text ? text : @"";
}

NSString *_Nullable textFromUTF8(const std::optional<std::string> &utf8)
{
    return utf8 ? textFromUTF8(*utf8) : nil;
}

std::optional<std::string> utf8FromText(NSString *_Nullable text)
{
    // Not UTF8String, whose result ends at the first NUL.
    NSData *const data = [text dataUsingEncoding:NSUTF8StringEncoding];
    return data ? std::optional(bytesFromData(data)) : std::nullopt;
}

std::string bytesFromData(NSData *_Nonnull data)
{
    return std::string(static_cast<const char *>(data.bytes), data.length);
}

id _Nullable objectFromValue(const PropertyValue &value)
{
    return std::visit(ObjectMaker(), value);
}

PropertyValue valueFromObject(id _Nullable object)
{
    if ([object isKindOfClass:[NSString class]]) {
        const auto text = utf8FromText(static_cast<NSString *>(object));
        return text ? PropertyValue(*text) : PropertyValue();
    }
    if ([object isKindOfClass:[NSNumber class]])
        return valueFromNumber(static_cast<NSNumber *>(object));
    return {};
}

std::optional<PlatformError> platformError(NSError *_Nullable error)
{
    if (!error)
        return std::nullopt;
    return PlatformError{utf8FromText(error.domain).value_or(std::string()), error.code,
                         utf8FromText(error.localizedDescription).value_or(std::string())};
}

} // namespace tarnwik::mac
