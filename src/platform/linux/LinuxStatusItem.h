#pragma once

#include <QDBusConnection>

#include <memory>

#include "platform/StatusItem.h"

namespace kestrune {

/// The status item of a Linux desktop: a StatusNotifierItem with its exported menu. The program runs on without a bus,
/// without a panel and while either comes and goes. Main thread.
class LinuxStatusItem final : public StatusItem {
public:
    explicit LinuxStatusItem(QDBusConnection connection);
    ~LinuxStatusItem() override;

    void start(Handlers handlers) override;

    /// The menus of all updates have as many items and the same submenus.
    void update(const StatusItemContent& content) override;

    [[nodiscard]] bool isShown() const override;

private:
    struct OnBus;

    const QDBusConnection m_connection;
    Handlers m_handlers;
    StatusItemContent m_content;
    std::unique_ptr<OnBus> m_onBus;  ///< since the first update
};

}  // namespace kestrune
