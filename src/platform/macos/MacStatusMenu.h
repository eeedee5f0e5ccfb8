#pragma once

#import <AppKit/AppKit.h>

#include <vector>

#include "platform/MenuItem.h"
#include "platform/StatusItem.h"

/// The menu of the status item. Main thread.
@interface KestruneStatusMenu : NSObject <NSMenuDelegate>

@property(nonatomic, readonly, strong, nonnull) NSMenu* menu;

/// Whoever has made it takes the handlers away before they end.
@property(nonatomic) kestrune::StatusItem::Handlers handlers;

/// Shows items, in an open menu too.
- (void)show:(const std::vector<kestrune::MenuItem>&)items;

@end
