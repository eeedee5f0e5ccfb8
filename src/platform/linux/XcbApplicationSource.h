#pragma once

#include <QSocketNotifier>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/linux/ApplicationSource.h"
#include "platform/linux/XcbConnection.h"
#include "platform/linux/XcbDesktop.h"

namespace kestrune {

/// The clients of an X server, as its window manager lists them. Only windows that belong to a program can be in front:
/// the desktop's background and its panels leave the one before them there. A quit request closes the main windows of a
/// program, unless none of them takes part in closing.
/// The connection is opened at the first question. After the server went away it is opened anew, at the next question
/// or when it comes back. Where X is only guest of another display system, it is not started by asking:
/// its server is looked for every half minute until it is found, and only one on this machine is connected to. A server
/// that does not greet is given up after a quarter of a second. Main thread.
class XcbApplicationSource final : public ApplicationSource {
public:
    XcbApplicationSource();

    [[nodiscard]] bool isAvailable() override;
    [[nodiscard]] bool isComplete() override;
    [[nodiscard]] std::vector<SourcedApplication> applications() override;
    [[nodiscard]] std::optional<std::int32_t> frontmost() override;
    [[nodiscard]] bool tellsFrontmost() override;
    void observeActivation(ActivationHandler handler) override;
    [[nodiscard]] bool close(std::int32_t pid, const IsStillMeant& isStillMeant) override;

private:
    [[nodiscard]] bool connect();
    void disconnect();
    void listen();
    [[nodiscard]] std::optional<XcbRoot> root();
    [[nodiscard]] std::optional<std::int32_t> processInFront(const XcbRoot& root);
    void readEvents();
    void tellFront();

    std::unique_ptr<XcbConnection> m_connection;
    std::chrono::steady_clock::time_point m_notBefore;  ///< when a connection may be tried again
    ActivationHandler m_handler;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_later;  ///< reads what events came along with replies, or connects again
    std::int32_t m_front = 0;
    bool m_isManaged = false;  ///< a window manager ran when it was last asked
};

}  // namespace kestrune
