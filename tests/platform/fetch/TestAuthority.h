#pragma once

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslKey>
#include <QStringList>

#include <stdexcept>
#include <string>

#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {

/// A certificate and the key it belongs to.
struct TestIdentity {
    QSslCertificate certificate;
    QSslKey key;
};

/// A certificate authority of the test's own, made by openssl.
class TestAuthority final {
public:
    TestAuthority() {
        run({"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes", "-keyout",
             path("authority.key"), "-out", path("authority.pem"), "-days", "2", "-subj", "/CN=Test authority"});
    }

    /// The authority that most tests share.
    static const TestAuthority& instance() {
        static const TestAuthority authority;
        return authority;
    }

    [[nodiscard]] std::string file() const { return path("authority.pem").toStdString(); }

    /// An identity of a server that goes by names ("DNS:localhost,IP:127.0.0.1"), valid for so many days from now.
    [[nodiscard]] TestIdentity issue(const QString& names = QStringLiteral("DNS:localhost,IP:127.0.0.1"),
                                     int days = 2) const {
        QFile extensions(path("extensions"));
        extensions.open(QIODevice::WriteOnly | QIODevice::Truncate);
        extensions.write("subjectAltName=" + names.toLatin1() + "\n");
        extensions.close();
        run({"req", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes", "-keyout",
             path("server.key"), "-out", path("server.csr"), "-subj", "/CN=Test server"});
        run({"x509", "-req", "-in", path("server.csr"), "-CA", path("authority.pem"), "-CAkey", path("authority.key"),
             "-CAcreateserial", "-out", path("server.pem"), "-days", QString::number(days), "-extfile",
             path("extensions")});
        QFile key(path("server.key"));
        key.open(QIODevice::ReadOnly);
        return {QSslCertificate::fromPath(path("server.pem")).value(0), QSslKey(key.readAll(), QSsl::Ec)};
    }

private:
    /// An argument of openssl.
    class Argument final {
    public:
        Argument(const char* text) : m_text(QString::fromLatin1(text)) {}  // NOLINT(google-explicit-constructor)

        Argument(QString text) : m_text(std::move(text)) {}  // NOLINT(google-explicit-constructor)

        [[nodiscard]] const QString& text() const { return m_text; }

    private:
        QString m_text;
    };

    [[nodiscard]] QString path(const char* name) const { return QString::fromStdString(m_folder.path(name)); }

    static void run(std::initializer_list<Argument> arguments) {
        QStringList texts;
        for (const Argument& argument : arguments) {
            texts << argument.text();
        }
        QProcess openssl;
        openssl.start(QStringLiteral("openssl"), texts);
        if (!openssl.waitForFinished() || openssl.exitCode() != 0) {
            throw std::runtime_error(openssl.readAllStandardError().toStdString());
        }
    }

    TemporaryFolder m_folder;
};

}  // namespace kestrune
