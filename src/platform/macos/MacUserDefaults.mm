#include "platform/macos/MacUserDefaults.h"

#import <Foundation/Foundation.h>

#include <map>
#include <mutex>
#include <utility>

#include "platform/PreferenceSuite.h"
#include "platform/macos/MacText.h"

/// Tells of one key's changes, for as long as it lives.
@interface KestruneDefaultsObserver : NSObject
- (instancetype)initWithDefaults:(NSUserDefaults*)defaults key:(NSString*)key changed:(std::function<void()>)changed;
@end

@implementation KestruneDefaultsObserver {
    NSUserDefaults* _defaults;
    NSString* _key;
    std::function<void()> _changed;
}

- (instancetype)initWithDefaults:(NSUserDefaults*)defaults key:(NSString*)key changed:(std::function<void()>)changed {
    self = [super init];
    if (self != nil) {
        _defaults = defaults;
        _key = key;
        _changed = std::move(changed);
        [_defaults addObserver:self forKeyPath:_key options:0 context:nullptr];
    }
    return self;
}

- (void)dealloc {
    [_defaults removeObserver:self forKeyPath:_key context:nullptr];
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
    _changed();
}

@end

namespace kestrune {

namespace {

bool isBoolean(NSNumber* _Nonnull number) {
    return CFGetTypeID((__bridge CFTypeRef)number) == CFBooleanGetTypeID();
}

DefaultsElement elementOf(id _Nonnull object) {
    if ([object isKindOfClass:[NSString class]]) {
        return toStd(static_cast<NSString*>(object));
    }
    if ([object isKindOfClass:[NSData class]]) {
        NSData* data = object;
        return DefaultsBytes{std::string(static_cast<const char*>(data.bytes), data.length)};
    }
    if ([object isKindOfClass:[NSNumber class]] && !isBoolean(object)) {
        return static_cast<NSNumber*>(object).doubleValue;
    }
    return {};
}

DefaultsValue valueOf(id _Nullable object) {
    if ([object isKindOfClass:[NSNumber class]]) {
        NSNumber* number = object;
        return isBoolean(number) ? DefaultsValue(number.boolValue == YES) : DefaultsValue(number.doubleValue);
    }
    if ([object isKindOfClass:[NSDate class]]) {
        return WallTime(Seconds(static_cast<NSDate*>(object).timeIntervalSince1970));
    }
    if (![object isKindOfClass:[NSArray class]]) {
        return {};
    }
    DefaultsList list;
    for (id element in static_cast<NSArray*>(object)) {
        list.push_back(elementOf(element));
    }
    return list;
}

/// The objects that stand for the alternatives of DefaultsElement and DefaultsValue.
struct ObjectFor {
    id _Nullable operator()(std::monostate) const { return nil; }

    id _Nullable operator()(bool value) const { return [NSNumber numberWithBool:value ? YES : NO]; }

    id _Nullable operator()(double value) const { return [NSNumber numberWithDouble:value]; }

    id _Nullable operator()(const std::string& value) const { return toNs(value); }

    id _Nullable operator()(const DefaultsBytes& value) const {
        return [NSData dataWithBytes:value.bytes.data() length:value.bytes.size()];
    }

    id _Nullable operator()(WallTime value) const {
        return [NSDate dateWithTimeIntervalSince1970:value.time_since_epoch().count()];
    }

    id _Nullable operator()(const DefaultsList& value) const {
        NSMutableArray* array = [NSMutableArray array];
        for (const DefaultsElement& element : value) {
            if (id object = std::visit(ObjectFor(), element)) {
                [array addObject:object];
            }
        }
        return array;
    }
};

}  // namespace

struct MacUserDefaults::Objects {
    explicit Objects(NSUserDefaults* _Nonnull store) : defaults(store) {}

    NSUserDefaults* _Nonnull const defaults;
    std::mutex lock;
    std::map<std::string, KestruneDefaultsObserver*> observers;
};

MacUserDefaults::MacUserDefaults(std::unique_ptr<Objects> objects) : m_objects(std::move(objects)) {
}

MacUserDefaults::~MacUserDefaults() = default;

std::unique_ptr<UserDefaults> MacUserDefaults::forThisProgram() {
    @autoreleasepool {
        NSUserDefaults* defaults = NSUserDefaults.standardUserDefaults;
        if (NSBundle.mainBundle.bundleIdentifier == nil) {
            if (const std::optional<std::string> suite = PreferenceSuite::fromEnvironment()) {
                defaults = [[NSUserDefaults alloc] initWithSuiteName:toNs(*suite)];
            }
        }
        if (defaults == nil) {
            PreferenceSuite::refuse();
        }
        return std::unique_ptr<UserDefaults>(new MacUserDefaults(std::make_unique<Objects>(defaults)));
    }
}

DefaultsValue MacUserDefaults::value(const std::string& key) const {
    @autoreleasepool {
        return valueOf([m_objects->defaults objectForKey:toNs(key)]);
    }
}

void MacUserDefaults::setValue(const std::string& key, const DefaultsValue& value) {
    @autoreleasepool {
        [m_objects->defaults setObject:std::visit(ObjectFor(), value) forKey:toNs(key)];
    }
}

bool MacUserDefaults::synchronize() {
    @autoreleasepool {
        return [m_objects->defaults synchronize] == YES;
    }
}

void MacUserDefaults::watch(const std::string& key, std::function<void()> changed) {
    @autoreleasepool {
        KestruneDefaultsObserver* observer = [[KestruneDefaultsObserver alloc] initWithDefaults:m_objects->defaults
                                                                                            key:toNs(key)
                                                                                        changed:std::move(changed)];
        const std::scoped_lock guard(m_objects->lock);
        m_objects->observers[key] = observer;
    }
}

}  // namespace kestrune
