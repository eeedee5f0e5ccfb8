#include "app/StatusItemWithPopup.h"

#include <utility>

namespace kestrune {

void StatusItemWithPopup::start(Handlers handlers) {
    m_handlers = std::move(handlers);
    Handlers own = m_handlers;
    own.toggleMenu = [this] { toggleMenu(); };
    m_item.start(std::move(own));
}

void StatusItemWithPopup::update(const StatusItemContent& content) {
    m_item.update(content);
    if (m_content != content) {
        m_content = content;
        m_popup.update(content.menu);
    }
}

void StatusItemWithPopup::toggleMenu() {
    m_handlers.menuWillOpen();
    m_popup.toggle(m_content.menu);
}

}  // namespace kestrune
