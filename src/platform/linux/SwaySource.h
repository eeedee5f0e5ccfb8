#pragma once

#include <QSocketNotifier>
#include <QTimer>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/ApplicationSource.h"
#include "platform/linux/SwayConnection.h"
#include "platform/linux/SwayTree.h"

namespace kestrune {

/// The windows of sway, over its own socket. i3 listens at such a socket too, but names no processes there: its windows
/// are X11's business. Whoever is behind the socket costs little, whatever it sends: what one look finds is bounded, of
/// the events that came together the last one counts, and the next ones are heard 200 ms later. Main thread.
class SwaySource final : public ApplicationSource {
public:
    /// The socket's path is what $SWAYSOCK says.
    explicit SwaySource(std::string socketPath);

    ~SwaySource() override;

    [[nodiscard]] bool isAvailable() override;
    [[nodiscard]] bool isComplete() override;
    [[nodiscard]] std::vector<SourcedApplication> applications() override;
    [[nodiscard]] std::optional<std::int32_t> frontmost() override;
    [[nodiscard]] bool tellsFrontmost() override;
    void observeActivation(ActivationHandler handler) override;
    [[nodiscard]] bool close(std::int32_t pid, const IsStillMeant& isStillMeant) override;

private:
    [[nodiscard]] std::optional<std::string> ask(std::uint32_t type, std::string_view payload) const;
    [[nodiscard]] std::optional<std::vector<SwayTree::Window>> windows();
    void listen();
    void stopListening();
    void hear();
    [[nodiscard]] std::optional<std::int32_t> lastFocused();

    std::string m_path;
    bool m_isAnswering = false;  ///< as of the last question for the windows
    ActivationHandler m_handler;
    std::optional<std::int32_t> m_told;  ///< the process the handler was last called with
    std::optional<SwayConnection> m_events;
    std::unique_ptr<QSocketNotifier> m_notifier;  ///< goes before the descriptor it watches
    QTimer m_pause;                               ///< between two times of hearing
};

}  // namespace kestrune
