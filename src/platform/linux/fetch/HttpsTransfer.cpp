#include "platform/linux/fetch/HttpsTransfer.h"

#include <QLatin1String>
#include <QNetworkRequest>
#include <QSsl>
#include <QSslCertificate>
#include <QSslSocket>
#include <QVariant>

#include <algorithm>
#include <utility>

namespace kestrune {

namespace {

constexpr int httpsPort = 443;
constexpr int statusOk = 200;
constexpr qint64 bufferBytes = qint64{256} << 10;
constexpr qint64 chunkBytes = qint64{64} << 10;

bool isSecure(const QUrl& url) {
    return url.isValid() && url.scheme() == QLatin1String("https") && !url.host().isEmpty() && url.userInfo().isEmpty();
}

bool isSameServer(const QUrl& one, const QUrl& other) {
    return one.host() == other.host() && one.port(httpsPort) == other.port(httpsPort);
}

QNetworkRequest neutralRequest(const QUrl& url, const QSslConfiguration& security) {
    QNetworkRequest request(url);
    request.setSslConfiguration(security);
    request.setRawHeader("User-Agent", "Kestrune/" KESTRUNE_VERSION);
    request.setRawHeader("Accept-Language", "*");
    // Bytes are counted as they are; said here, Qt leaves them as they are, too.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    return request;
}

FetchReason reasonOf(const QList<QSslError>& errors) {
    const auto has = [&errors](QSslError::SslError wanted) {
        return std::any_of(errors.begin(), errors.end(),
                           [wanted](const QSslError& error) { return error.error() == wanted; });
    };
    if (has(QSslError::CertificateExpired) || has(QSslError::CertificateNotYetValid)) {
        return FetchReason::certificateExpired;
    }
    const bool isOnlyTheName = std::all_of(errors.begin(), errors.end(), [](const QSslError& error) {
        return error.error() == QSslError::HostNameMismatch;
    });
    return isOnlyTheName ? FetchReason::certificateForOtherHost : FetchReason::certificateUntrusted;
}

FetchReason reasonOf(QNetworkReply::NetworkError error) {
    switch (error) {
        case QNetworkReply::HostNotFoundError:
        case QNetworkReply::ProxyNotFoundError:
            return FetchReason::hostUnknown;
        case QNetworkReply::SslHandshakeFailedError:
            return FetchReason::handshakeFailed;
        case QNetworkReply::ConnectionRefusedError:
        case QNetworkReply::TimeoutError:
        case QNetworkReply::NetworkSessionFailedError:
        case QNetworkReply::ProxyConnectionRefusedError:
        case QNetworkReply::ProxyTimeoutError:
        case QNetworkReply::ProxyAuthenticationRequiredError:
        case QNetworkReply::UnknownNetworkError:
        case QNetworkReply::UnknownProxyError:
            return FetchReason::unreachable;
        default:
            return FetchReason::connectionLost;
    }
}

}  // namespace

HttpsTransfer::HttpsTransfer(const std::string& authorityFile) : m_security(QSslConfiguration::defaultConfiguration()) {
    m_security.setProtocol(QSsl::TlsV1_2OrLater);
    m_security.setPeerVerifyMode(QSslSocket::VerifyPeer);
    if (!authorityFile.empty()) {
        const QList<QSslCertificate> authorities = QSslCertificate::fromPath(QString::fromStdString(authorityFile));
        m_hasAuthorities = !authorities.isEmpty();
        m_security.setCaCertificates(authorities);
    }
    for (QTimer* const timer : {&m_deadline, &m_answerTimer, &m_silenceTimer}) {
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, this, [this] { end(FetchFailure{FetchReason::tooSlow, {}}); });
    }
    connect(&m_network, &QNetworkAccessManager::sslErrors, this,
            [this](QNetworkReply*, const QList<QSslError>& errors) { takeSslErrors(errors); });
}

HttpsTransfer::~HttpsTransfer() {
    dropReply();
}

void HttpsTransfer::start(const std::string& url, TransferLimits limits, Sink sink, Done done) {
    m_limits = limits;
    m_sink = std::move(sink);
    m_done = std::move(done);
    m_url = QUrl::fromEncoded(QByteArray::fromStdString(url), QUrl::StrictMode);
    if (!isSecure(m_url)) {
        endLater(FetchFailure{FetchReason::addressNotSecure, {}});
    } else if (!QSslSocket::supportsSsl()) {
        endLater(FetchFailure{FetchReason::noSecureConnections, {}});
    } else if (!m_hasAuthorities) {
        endLater(FetchFailure{FetchReason::authorityUnreadable, {}});
    } else {
        if (m_limits.untilEnd) {
            m_deadline.start(*m_limits.untilEnd);
        }
        m_answerTimer.start(m_limits.untilAnswer);
        m_silenceTimer.start(m_limits.silence);
        request(m_url);
    }
}

void HttpsTransfer::request(const QUrl& url) {
    m_url = url;
    m_reply = m_network.get(neutralRequest(url, m_security));
    // The rest waits with the sender.
    m_reply->setReadBufferSize(bufferBytes);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &HttpsTransfer::readHeaders);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpsTransfer::readBytes);
    connect(m_reply, &QNetworkReply::finished, this, &HttpsTransfer::finishReply);
}

void HttpsTransfer::readHeaders() {
    m_silenceTimer.start(m_limits.silence);
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QUrl target = m_reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    const QByteArray encoding = m_reply->rawHeader("Content-Encoding").trimmed().toLower();
    if (target.isValid()) {
        follow(m_url.resolved(target));
    } else if (status != statusOk) {
        end(FetchFailure{FetchReason::refusedStatus, std::to_string(status)});
    } else if (!encoding.isEmpty() && encoding != "identity") {
        end(FetchFailure{FetchReason::encoded, {}});
    } else if (m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong() > m_limits.bytes) {
        end(FetchFailure{FetchReason::tooLarge, {}});
    } else {
        m_answerTimer.stop();
    }
}

void HttpsTransfer::readBytes() {
    while (m_reply != nullptr && m_reply->bytesAvailable() > 0) {
        const QByteArray bytes = m_reply->read(chunkBytes);
        if (bytes.isEmpty()) {
            return;
        }
        m_silenceTimer.start(m_limits.silence);
        m_received += bytes.size();
        if (m_received > m_limits.bytes) {
            end(FetchFailure{FetchReason::tooLarge, {}});
        } else if (auto failure = m_sink(bytes)) {
            end(std::move(failure));
        }
    }
}

/// None is ever ignored; they only tell why the connection fails next.
void HttpsTransfer::takeSslErrors(const QList<QSslError>& errors) {
    m_securityFailure = FetchFailure{reasonOf(errors), host()};
}

void HttpsTransfer::finishReply() {
    readBytes();
    if (m_reply == nullptr) {
        return;
    }
    if (m_reply->error() != QNetworkReply::NoError) {
        end(failureOfReply());
    } else {
        end(std::nullopt);
    }
}

FetchFailure HttpsTransfer::failureOfReply() const {
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (m_securityFailure) {
        return *m_securityFailure;
    }
    if (status != 0 && status != statusOk) {
        return {FetchReason::refusedStatus, std::to_string(status)};
    }
    return {reasonOf(m_reply->error()), host()};
}

void HttpsTransfer::follow(const QUrl& target) {
    if (!isSecure(target) || !isSameServer(target, m_url)) {
        end(FetchFailure{FetchReason::redirectRefused, {}});
    } else if (++m_redirects > redirectsAtMost) {
        end(FetchFailure{FetchReason::redirectedTooOften, {}});
    } else {
        dropReply();
        request(target);
    }
}

void HttpsTransfer::endLater(std::optional<FetchFailure> failure) {
    QMetaObject::invokeMethod(
        this, [this, failure = std::move(failure)] { end(failure); }, Qt::QueuedConnection);
}

void HttpsTransfer::end(std::optional<FetchFailure> failure) {
    for (QTimer* const timer : {&m_deadline, &m_answerTimer, &m_silenceTimer}) {
        timer->stop();
    }
    dropReply();
    // Whoever is told may let go of this object.
    if (const Done done = std::exchange(m_done, nullptr)) {
        done(std::move(failure));
    }
}

void HttpsTransfer::dropReply() {
    if (QNetworkReply* const reply = std::exchange(m_reply, nullptr)) {
        reply->disconnect(this);
        if (reply->isRunning()) {
            reply->abort();
        }
        reply->deleteLater();
    }
}

std::string HttpsTransfer::host() const {
    return m_url.host().toStdString();
}

}  // namespace kestrune
