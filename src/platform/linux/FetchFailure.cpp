#include "platform/linux/FetchFailure.h"

#include <algorithm>
#include <array>

#include "base/Localized.h"

namespace kestrune {

namespace {

struct Entry {
    FetchReason reason;
    std::string_view name;
    int code;
};

constexpr std::array<Entry, 30> entries{{
    {FetchReason::addressNotSecure, "address-not-secure", UpdaterError::network},
    {FetchReason::noSecureConnections, "no-secure-connections", UpdaterError::network},
    {FetchReason::hostUnknown, "host-unknown", UpdaterError::network},
    {FetchReason::unreachable, "unreachable", UpdaterError::network},
    {FetchReason::connectionLost, "connection-lost", UpdaterError::network},
    {FetchReason::certificateUntrusted, "certificate-untrusted", UpdaterError::network},
    {FetchReason::certificateExpired, "certificate-expired", UpdaterError::network},
    {FetchReason::certificateForOtherHost, "certificate-for-other-host", UpdaterError::network},
    {FetchReason::handshakeFailed, "handshake-failed", UpdaterError::network},
    {FetchReason::refusedStatus, "refused-status", UpdaterError::network},
    {FetchReason::redirectRefused, "redirect-refused", UpdaterError::network},
    {FetchReason::redirectedTooOften, "redirected-too-often", UpdaterError::network},
    {FetchReason::encoded, "encoded", UpdaterError::network},
    {FetchReason::tooLarge, "too-large", UpdaterError::network},
    {FetchReason::tooSlow, "too-slow", UpdaterError::network},
    {FetchReason::authorityUnreadable, "authority-unreadable", UpdaterError::network},
    {FetchReason::notFeed, "not-feed", UpdaterError::feed},
    {FetchReason::feedDeclaresTypes, "feed-declares-types", UpdaterError::feed},
    {FetchReason::feedTooDeep, "feed-too-deep", UpdaterError::feed},
    {FetchReason::feedTooManyItems, "feed-too-many-items", UpdaterError::feed},
    {FetchReason::archiveShorter, "archive-shorter", UpdaterError::network},
    {FetchReason::archiveLonger, "archive-longer", UpdaterError::network},
    {FetchReason::archiveLengthUnknown, "archive-length-unknown", UpdaterError::feed},
    {FetchReason::signatureWrong, "signature-wrong", UpdaterError::signature},
    {FetchReason::folderUnusable, "folder-unusable", UpdaterError::network},
    {FetchReason::diskFull, "disk-full", UpdaterError::network},
    {FetchReason::fileUnwritable, "file-unwritable", UpdaterError::network},
    {FetchReason::fetcherMissing, "fetcher-missing", UpdaterError::network},
    {FetchReason::fetcherEnded, "fetcher-ended", UpdaterError::network},
    {FetchReason::fetcherSilent, "fetcher-silent", UpdaterError::network},
}};

const Entry& entryOf(FetchReason reason) {
    return entries.at(static_cast<std::size_t>(reason));
}

std::string securitySentence(const FetchFailure& failure) {
    switch (failure.reason) {
        case FetchReason::addressNotSecure:
            return localized("The address of the update is not a secure one (https).");
        case FetchReason::noSecureConnections:
            return localized("Secure connections are not available on this system.");
        case FetchReason::certificateUntrusted:
            return localized("%1 showed a certificate that this system does not trust.", {failure.detail});
        case FetchReason::certificateExpired:
            return localized("The certificate of %1 is not valid today. Check the date of this computer.",
                             {failure.detail});
        case FetchReason::certificateForOtherHost:
            return localized("%1 showed the certificate of another server.", {failure.detail});
        case FetchReason::authorityUnreadable:
            return localized("The file with the trusted certificates cannot be read.");
        default:
            return localized("A secure connection to %1 could not be made.", {failure.detail});
    }
}

std::string networkSentence(const FetchFailure& failure) {
    switch (failure.reason) {
        case FetchReason::hostUnknown:
            return localized("The server %1 could not be found. Check the network connection.", {failure.detail});
        case FetchReason::unreachable:
            return localized("The server %1 could not be reached. Check the network connection.", {failure.detail});
        case FetchReason::connectionLost:
            return localized("The connection to %1 was lost before everything was here.", {failure.detail});
        case FetchReason::refusedStatus:
            return localized("The server answered with the status %1.", {failure.detail});
        case FetchReason::redirectRefused:
            return localized("The server sent the request on to another server, which is not followed.");
        case FetchReason::redirectedTooOften:
            return localized("The server sent the request on too many times.");
        case FetchReason::encoded:
            return localized("The server answered in an encoding that was not asked for.");
        case FetchReason::tooLarge:
            return localized("The server sent more than an update feed can hold.");
        case FetchReason::tooSlow:
            return localized("The server took too long to answer.");
        default:
            return securitySentence(failure);
    }
}

std::string feedSentence(const FetchFailure& failure) {
    switch (failure.reason) {
        case FetchReason::notFeed:
            return localized("The server's answer is not an update feed.");
        case FetchReason::feedDeclaresTypes:
            return localized("The update feed holds a document type declaration, which is not read.");
        case FetchReason::feedTooDeep:
            return localized("The update feed is nested too deeply.");
        case FetchReason::feedTooManyItems:
            return localized("The update feed lists too many versions.");
        case FetchReason::archiveLengthUnknown:
            return localized("The update feed does not say how large the update is.");
        default:
            return networkSentence(failure);
    }
}

std::string archiveSentence(const FetchFailure& failure) {
    switch (failure.reason) {
        case FetchReason::archiveShorter:
            return localized("The update ended before its announced length.");
        case FetchReason::archiveLonger:
            return localized("The update is longer than announced.");
        case FetchReason::signatureWrong:
            return localized("The update is not signed by its publisher, and was thrown away.");
        case FetchReason::folderUnusable:
            return localized("The folder for downloads, %1, cannot be used.", {failure.detail});
        case FetchReason::diskFull:
            return localized("There is not enough space on the disk for the update.");
        case FetchReason::fileUnwritable:
            return localized("The update could not be written to the disk.");
        case FetchReason::fetcherMissing:
            return localized("The program that fetches updates, %1, could not be started. Install Kestrune again.",
                             {failure.detail});
        case FetchReason::fetcherEnded:
            return localized("The program that fetches updates ended unexpectedly.");
        case FetchReason::fetcherSilent:
            return localized("The program that fetches updates did not answer and was stopped.");
        default:
            return feedSentence(failure);
    }
}

}  // namespace

std::string_view nameOf(FetchReason reason) {
    return entryOf(reason).name;
}

std::optional<FetchReason> fetchReason(std::string_view name) {
    const auto* const entry =
        std::find_if(entries.begin(), entries.end(), [name](const Entry& known) { return known.name == name; });
    return entry == entries.end() ? std::nullopt : std::optional(entry->reason);
}

UpdaterError describe(const FetchFailure& failure) {
    return {entryOf(failure.reason).code, archiveSentence(failure)};
}

}  // namespace kestrune
