#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Updater.h"

namespace kestrune {

/// Why a transfer failed.
enum class FetchReason {
    addressNotSecure,
    noSecureConnections,
    hostUnknown,
    unreachable,
    connectionLost,
    certificateUntrusted,
    certificateExpired,
    certificateForOtherHost,
    handshakeFailed,
    refusedStatus,
    redirectRefused,
    redirectedTooOften,
    encoded,
    tooLarge,
    tooSlow,
    authorityUnreadable,
    notFeed,
    feedDeclaresTypes,
    feedTooDeep,
    feedTooManyItems,
    archiveShorter,
    archiveLonger,
    archiveLengthUnknown,
    signatureWrong,
    folderUnusable,
    diskFull,
    fileUnwritable,
    fetcherMissing,
    fetcherEnded,
    fetcherSilent,
};

/// A transfer that failed, without words: the sentence is made where the user's language is known.
struct FetchFailure {
    FetchReason reason = FetchReason::fetcherEnded;
    std::string detail;  ///< the host, the number or the path that the sentence names

    bool operator==(const FetchFailure&) const = default;
};

/// The name that reason has between programs, the same in every version.
[[nodiscard]] std::string_view nameOf(FetchReason reason);

[[nodiscard]] std::optional<FetchReason> fetchReason(std::string_view name);

/// The failure as the user is told. Any thread.
[[nodiscard]] UpdaterError describe(const FetchFailure& failure);

}  // namespace kestrune
