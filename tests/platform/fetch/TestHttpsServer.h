#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QList>
#include <QSslConfiguration>
#include <QSslSocket>
#include <QTcpServer>
#include <QTimer>

#include <functional>
#include <map>
#include <string>
#include <utility>

#include "tests/platform/fetch/TestAuthority.h"

namespace kestrune {

/// A real HTTPS server on this machine that answers as the test says, one request a connection.
class TestHttpsServer final : public QTcpServer {
public:
    /// Writes the answer to one request, headers and all.
    using Answer = std::function<void(QSslSocket& socket)>;

    explicit TestHttpsServer(TestIdentity identity = TestAuthority::instance().issue())
        : m_identity(std::move(identity)) {
        listen(QHostAddress::LocalHost);
    }

    [[nodiscard]] std::string url(const std::string& path, const std::string& host = "127.0.0.1") const {
        return "https://" + host + ":" + std::to_string(serverPort()) + path;
    }

    /// Answers path, which begins with "/".
    void on(const QByteArray& path, Answer answer) { m_answers[path] = std::move(answer); }

    /// Answers path with these bytes and closes.
    void serve(const QByteArray& path, const QByteArray& bytes) { on(path, sending(whole(bytes))); }

    void redirect(const QByteArray& path, const std::string& target) {
        on(path, sending("HTTP/1.1 302 Found\r\nLocation: " + QByteArray::fromStdString(target) +
                         "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n"));
    }

    /// Sends these bytes, headers and all, and closes.
    static Answer sending(const QByteArray& bytes) {
        return [bytes](QSslSocket& socket) {
            socket.write(bytes);
            socket.disconnectFromHost();
        };
    }

    static QByteArray whole(const QByteArray& body, const QByteArray& headers = {}) {
        return "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n" + headers +
               "Connection: close\r\n\r\n" + body;
    }

    QList<QByteArray> requests;  ///< with their headers

protected:
    void incomingConnection(qintptr descriptor) override {
        auto* socket = new QSslSocket(this);
        socket->setSocketDescriptor(descriptor);
        socket->setLocalCertificate(m_identity.certificate);
        socket->setPrivateKey(m_identity.key);
        connect(socket, &QSslSocket::readyRead, socket, [this, socket, request = QByteArray()]() mutable {
            request += socket->readAll();
            if (request.endsWith("\r\n\r\n")) {
                requests.append(request);
                reply(*socket, request.split(' ').value(1));
            }
        });
        connect(socket, &QSslSocket::disconnected, socket, &QObject::deleteLater);
        socket->startServerEncryption();
    }

private:
    void reply(QSslSocket& socket, const QByteArray& path) {
        const auto answer = m_answers.find(path);
        if (answer == m_answers.end()) {
            sending("HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\nConnection: close\r\n\r\nnone")(socket);
        } else {
            answer->second(socket);
        }
    }

    const TestIdentity m_identity;
    std::map<QByteArray, Answer> m_answers;
};

}  // namespace kestrune
