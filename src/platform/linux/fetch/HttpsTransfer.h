#pragma once

#include <QByteArray>
#include <QList>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QSslConfiguration>
#include <QSslError>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/FetchFailure.h"

namespace kestrune {

/// How far a transfer goes.
struct TransferLimits {
    std::int64_t bytes = 0;
    std::chrono::milliseconds untilAnswer{30'000};           ///< from the start to the answer's first bytes
    std::chrono::milliseconds silence{60'000};               ///< between two arrivals
    std::optional<std::chrono::milliseconds> untilEnd = {};  ///< from the start to the last byte
};

/// Gets what stands at one https address. The certificate is verified, at most three redirects are followed, to the
/// same host and port only, and nothing is stored, remembered or told about the user. One at a time; event loop of its
/// thread.
class HttpsTransfer final : public QObject {
    Q_OBJECT

public:
    static constexpr int redirectsAtMost = 3;

    /// Takes the next bytes; a failure ends the transfer with it.
    using Sink = std::function<std::optional<FetchFailure>(const QByteArray& bytes)>;

    /// Nothing: everything went to the sink.
    using Done = std::function<void(std::optional<FetchFailure>)>;

    /// authorityFile holds the certificates to trust (PEM) instead of the system's; empty: the system's.
    explicit HttpsTransfer(const std::string& authorityFile);
    ~HttpsTransfer() override;

    /// done is called once, from the event loop.
    void start(const std::string& url, TransferLimits limits, Sink sink, Done done);

private:
    void request(const QUrl& url);
    void readHeaders();
    void readBytes();
    void takeSslErrors(const QList<QSslError>& errors);
    void finishReply();
    void follow(const QUrl& target);
    void endLater(std::optional<FetchFailure> failure);
    void end(std::optional<FetchFailure> failure);
    void dropReply();
    [[nodiscard]] std::string host() const;
    [[nodiscard]] FetchFailure failureOfReply() const;

    QNetworkAccessManager m_network;
    QSslConfiguration m_security;
    bool m_hasAuthorities = true;
    QTimer m_deadline;
    QTimer m_answerTimer;
    QTimer m_silenceTimer;
    QUrl m_url;
    TransferLimits m_limits;
    Sink m_sink;
    Done m_done;
    QNetworkReply* m_reply = nullptr;
    std::optional<FetchFailure> m_securityFailure;
    std::int64_t m_received = 0;
    int m_redirects = 0;
};

}  // namespace kestrune
