#include "platform/macos/MacFileQueries.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>

namespace kestrune {

namespace {

bool holdsNul(const std::string& path) {
    return path.find('\0') != std::string::npos;
}

std::optional<std::string> realPath(const std::string& path) {
    const std::unique_ptr<char, void (*)(void*)> resolved(::realpath(path.c_str(), nullptr), std::free);
    return resolved ? std::optional<std::string>(resolved.get()) : std::nullopt;
}

}  // namespace

std::optional<FileKind> MacFileQueries::kind(const std::string& path) const {
    struct stat status {};

    if (holdsNul(path) || ::stat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return S_ISDIR(status.st_mode) ? FileKind::directory : FileKind::other;
}

std::optional<std::int64_t> MacFileQueries::fileSize(const std::string& path) const {
    struct stat status {};

    if (holdsNul(path) || ::lstat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return status.st_size;
}

bool MacFileQueries::isReadable(const std::string& path) const {
    return !holdsNul(path) && ::access(path.c_str(), R_OK) == 0;
}

std::string MacFileQueries::resolvingLinks(const std::string& path) const {
    if (path.empty() || holdsNul(path)) {
        return path;
    }
    // The longest part that exists is resolved, what follows it stays as spelled.
    std::size_t end = path.size();
    while (end > 0) {
        const auto resolved = realPath(path.substr(0, end));
        if (resolved) {
            const std::string rest = path.substr(end);
            return *resolved == "/" && !rest.empty() ? rest : *resolved + rest;
        }
        const std::size_t separator = path.find_last_of('/', end - 1);
        if (separator == std::string::npos) {
            break;
        }
        end = separator;
    }
    return path;
}

}  // namespace kestrune
