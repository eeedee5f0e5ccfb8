#include "platform/macos/MacStatusItem.h"

#import <AppKit/AppKit.h>

#include <string>
#include <utility>

#include "platform/macos/MacStatusMenu.h"
#include "platform/macos/MacText.h"

namespace kestrune {

struct MacStatusItem::Parts {
    KestruneStatusMenu* _Nonnull menu;
    NSStatusItem* _Nullable item;  // from the first update on
    StatusItemContent shown;
};

MacStatusItem::MacStatusItem() : m_parts(new Parts{[[KestruneStatusMenu alloc] init], nil, {}}) {
}

MacStatusItem::~MacStatusItem() {
    m_parts->menu.handlers = {};
    if (NSStatusItem* item = m_parts->item) {
        [NSStatusBar.systemStatusBar removeStatusItem:item];
    }
}

void MacStatusItem::start(Handlers handlers) {
    m_parts->menu.handlers = std::move(handlers);
}

void MacStatusItem::update(const StatusItemContent& content) {
    @autoreleasepool {
        if (m_parts->item == nil) {
            m_parts->item = [NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength];
            m_parts->item.menu = m_parts->menu.menu;
        }
        NSStatusBarButton* button = m_parts->item.button;
        if (content.title != m_parts->shown.title) {
            button.title = toNs(content.title);
        }
        if (content.tooltip != m_parts->shown.tooltip) {
            button.toolTip = toNs(content.tooltip);
            // The title would be read out as the name of its picture and a bare figure.
            button.accessibilityTitle = toNs(content.tooltip);
        }
        [m_parts->menu show:content.menu];
        m_parts->shown = content;
    }
}

bool MacStatusItem::isShown() const {
    return m_parts->item != nil && m_parts->item.visible;
}

}  // namespace kestrune
