#include "ui/DroppedFolder.h"

#include <QMimeData>
#include <QSysInfo>
#include <filesystem>
#include <system_error>

namespace kestrune {

namespace {

bool isThisMachine(const QByteArray& host) {
    return host.isEmpty() || host.compare("localhost", Qt::CaseInsensitive) == 0 ||
           host.compare(QSysInfo::machineHostName().toUtf8(), Qt::CaseInsensitive) == 0;
}

// The path of a file URI (RFC 8089). Names need not be valid text, so that its bytes never become a string of
// characters.
std::optional<std::string> pathOf(const QByteArray& uri) {
    constexpr qsizetype schemeLength = 5;
    if (uri.left(schemeLength).compare("file:", Qt::CaseInsensitive) != 0) {
        return {};
    }
    QByteArray rest = uri.mid(schemeLength);
    if (rest.startsWith("//")) {
        const qsizetype slash = rest.indexOf('/', 2);
        if (slash < 0 || !isThisMachine(rest.mid(2, slash - 2))) {
            return {};
        }
        rest = rest.mid(slash);
    }
    const std::string path = QByteArray::fromPercentEncoding(rest).toStdString();
    const bool isPath = path.starts_with('/') && path.find('\0') == std::string::npos;
    return isPath ? std::optional(path) : std::nullopt;
}

}  // namespace

std::optional<std::string> droppedFolder(const QMimeData& data) {
    std::optional<std::string> folder;
    const QList<QByteArray> lines = data.data(QStringLiteral("text/uri-list")).split('\n');
    for (const QByteArray& line : lines) {
        const QByteArray uri = line.trimmed();
        if (uri.isEmpty() || uri.startsWith('#')) {
            continue;
        }
        if (folder) {
            return {};
        }
        folder = pathOf(uri);
        if (!folder) {
            return {};
        }
    }
    std::error_code failure;
    return folder && std::filesystem::is_directory(*folder, failure) ? folder : std::nullopt;
}

}  // namespace kestrune
