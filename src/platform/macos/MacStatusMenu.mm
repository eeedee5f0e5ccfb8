#include "platform/macos/MacStatusMenu.h"

#include "platform/macos/MacText.h"
#include "platform/macos/MenuMerge.h"

using kestrune::fitted;
using kestrune::MenuAction;
using kestrune::MenuItem;
using kestrune::MenuLineChange;
using kestrune::MenuMerge;
using kestrune::MenuSteps;
using kestrune::toNs;

@implementation KestruneStatusMenu {
    MenuMerge _merge;
}

- (instancetype)init {
    self = [super init];
    _menu = [[NSMenu alloc] initWithTitle:@""];
    _menu.autoenablesItems = NO;
    _menu.delegate = self;
    return self;
}

- (void)show:(const std::vector<MenuItem>&)items {
    [self apply:_merge.show(items)];
}

- (void)apply:(const MenuSteps&)steps {
    if (steps.rebuilt) {
        [_menu removeAllItems];
        [self fill:_menu with:*steps.rebuilt];
    }
    for (const MenuLineChange& change : steps.changes) {
        NSMenu* menu = _menu;
        NSMenuItem* item = nil;
        for (const std::size_t index : change.place) {
            item = [menu itemAtIndex:static_cast<NSInteger>(index)];
            menu = item.submenu;
        }
        if (item != nil) {
            [self set:change.line on:item];
        }
    }
}

- (void)fill:(NSMenu* _Nonnull)menu with:(const std::vector<MenuItem>&)lines {
    for (const MenuItem& line : lines) {
        if (line.separator) {
            [menu addItem:[NSMenuItem separatorItem]];
            continue;
        }
        const bool isCommand = line.action != MenuAction::none;
        NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:@""
                                                      action:isCommand ? @selector(chosen:) : nil
                                               keyEquivalent:toNs(line.key)];
        item.keyEquivalentModifierMask = NSEventModifierFlagCommand;
        item.target = self;
        item.tag = static_cast<NSInteger>(line.action);
        [self set:line on:item];
        if (!line.submenu.empty()) {
            NSMenu* submenu = [[NSMenu alloc] initWithTitle:@""];
            submenu.autoenablesItems = NO;
            [self fill:submenu with:line.submenu];
            item.submenu = submenu;
        }
        [menu addItem:item];
    }
}

- (void)set:(const MenuItem&)line on:(NSMenuItem* _Nonnull)item {
    const MenuItem shown = fitted(line);
    item.title = toNs(shown.title);
    item.toolTip = shown.tooltip.empty() ? nil : toNs(shown.tooltip);
    item.enabled = shown.enabled ? YES : NO;
    item.hidden = shown.hidden ? YES : NO;
    item.state = shown.checked.value_or(false) ? NSControlStateValueOn : NSControlStateValueOff;
}

/// A block of the run loop, in its default mode only: when the menu's own loop has ended.
- (void)afterTracking:(void (^)(KestruneStatusMenu* menu))work {
    __weak KestruneStatusMenu* weakSelf = self;
    [NSRunLoop.mainRunLoop performInModes:@[ NSDefaultRunLoopMode ]
                                    block:^{
                                      if (KestruneStatusMenu* menu = weakSelf) {
                                          work(menu);
                                      }
                                    }];
}

- (void)chosen:(NSMenuItem* _Nonnull)sender {
    const auto action = static_cast<MenuAction>(sender.tag);
    [self afterTracking:^(KestruneStatusMenu* menu) {
      // A copy: the handler may end what owns this object.
      const auto perform = menu.handlers.perform;
      if (perform) {
          perform(action);
      }
    }];
}

/// The last moment at which AppKit allows lines to be changed before the menu opens: menuWillOpen: is too late for it.
- (void)menuNeedsUpdate:(NSMenu*)menu {
    const auto menuWillOpen = _handlers.menuWillOpen;
    if (menuWillOpen) {
        menuWillOpen();
    }
}

- (void)menuWillOpen:(NSMenu*)menu {
    _merge.opened();
}

/// Lines may not be changed in here, and the chosen one is still needed.
- (void)menuDidClose:(NSMenu*)menu {
    [self afterTracking:^(KestruneStatusMenu* closed) {
      [closed apply:closed->_merge.closed()];
    }];
}

@end
