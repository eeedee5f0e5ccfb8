// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#import <Foundation/FoundationBase.h>

NS_ASSUME_NONNULL_BEGIN
@interface NSUserDefaults : NSObject
@property(class, readonly, strong) NSUserDefaults* standardUserDefaults;
- (nullable instancetype)initWithSuiteName:(nullable NSString*)suitename
    API_AVAILABLE(macos(10.9))NS_DESIGNATED_INITIALIZER;
- (nullable id)objectForKey:(NSString*)key;
- (BOOL)boolForKey:(NSString*)key;
- (void)setBool:(BOOL)value forKey:(NSString*)key;
- (void)setObject:(nullable id)value forKey:(NSString*)key;
- (nullable NSArray<NSString*>*)stringArrayForKey:(NSString*)key;
@end
NS_ASSUME_NONNULL_END
