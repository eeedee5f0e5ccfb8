#pragma once

#include <cstdint>
#include <string>

namespace kestrune {

/// A newer version that a check found. Every text of it comes from the network: plain text, never markup.
struct UpdateItem {
    std::string version;         ///< what is compared: numbers parted by dots
    std::string displayVersion;  ///< what is shown: one line of at most 64 characters
    std::string notes;           ///< what is new; empty when the feed does not tell
    std::string archiveUrl;      ///< https
    std::int64_t archiveBytes = 0;
    std::string archiveSignature;  ///< Ed25519 over the archive's bytes, in base64

    bool operator==(const UpdateItem&) const = default;
};

enum class UpdateChoice { install, dismiss, skip };

struct UpdaterError {
    static constexpr int noUpdate = 1001;  ///< the check ended well and found nothing
    static constexpr int cancelled = 1002;
    static constexpr int network = 2001;    ///< the feed or the archive could not be fetched
    static constexpr int feed = 2002;       ///< the feed is not one
    static constexpr int signature = 2003;  ///< the archive is not what the feed's publisher signed
    static constexpr int install = 2004;

    int code = 0;
    std::string description;  ///< one sentence, ending with a full stop

    bool operator==(const UpdaterError&) const = default;
};

/// What a check tells. Every call comes on the main thread, from the event loop.
class UpdaterDelegate {
public:
    UpdaterDelegate() = default;
    UpdaterDelegate(const UpdaterDelegate&) = delete;
    UpdaterDelegate& operator=(const UpdaterDelegate&) = delete;
    virtual ~UpdaterDelegate() = default;

    virtual void didFindValidUpdate(const UpdateItem& item) = 0;

    /// The update is about to be shown. After a scheduled check it stays out of sight until checkForUpdates() is
    /// called.
    virtual void willHandleShowingUpdate(const UpdateItem& item, bool userInitiated) = 0;

    virtual void userDidMake(UpdateChoice choice, const UpdateItem& item) = 0;

    /// Followed by didAbortWithError with UpdaterError::noUpdate.
    virtual void didNotFindUpdate() = 0;

    virtual void didAbortWithError(const UpdaterError& error) = 0;

    /// The update is ready and replaces the program. False when it must not now; the user has been told why.
    [[nodiscard]] virtual bool shouldInstallUpdate() = 0;
};

/// Keeps the program up to date: looks for a newer version once a day and when asked, shows what it found, and
/// installs it after the user agreed. Main thread.
class Updater {
public:
    Updater() = default;
    Updater(const Updater&) = delete;
    Updater& operator=(const Updater&) = delete;
    virtual ~Updater() = default;

    /// False in a build without a feed: nothing below then does anything.
    [[nodiscard]] virtual bool isConfigured() const = 0;

    /// Begins the daily checks; once. delegate outlives the updater.
    virtual void start(UpdaterDelegate& delegate) = 0;

    /// The user asks: shows an update that is known already, else looks for one and shows what came of it.
    virtual void checkForUpdates() = 0;
};

}  // namespace kestrune
