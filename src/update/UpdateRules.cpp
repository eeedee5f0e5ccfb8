#include "update/UpdateRules.h"

#include <algorithm>
#include <cstdint>

#include "base/CharacterKind.h"
#include "base/Text.h"
#include "base/WholeNumber.h"
#include "update/VersionNumber.h"
#include "update/WebAddress.h"

namespace kestrune::UpdateRules {

namespace {

constexpr std::size_t longestVersion = 128;
constexpr std::size_t longestDisplayVersion = 64;
constexpr std::size_t longestNotes = 20'000;
constexpr std::int64_t largestArchive = std::int64_t{4} * 1024 * 1024 * 1024;

std::optional<VersionNumber> newerVersion(const std::string& text, const Program& program) {
    const auto running = VersionNumber::parse(program.runningVersion);
    auto version = text.size() <= longestVersion ? VersionNumber::parse(text) : std::nullopt;
    return running && version && *version > *running ? version : std::nullopt;
}

bool isPlainLine(std::string_view text) {
    if (!isValidUtf8(text) || characterCount(text) > longestDisplayVersion) {
        return false;
    }
    bool leavesOne = false;
    while (!text.empty()) {
        const std::string_view character = firstCharacter(text);
        if (isDisturbing(character)) {
            return false;
        }
        leavesOne = leavesOne || leavesAMark(character);
        text.remove_prefix(character.size());
    }
    return leavesOne;
}

// RFC 4648: 64 bytes are 86 characters, the last of which has four bits left that are 0, and two for the length.
bool isSignature(std::string_view text) {
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr std::string_view lastCharacters = "AQgw";
    constexpr std::size_t characters = 86;
    return text.size() == characters + 2 && text.ends_with("==") && text.find_first_not_of(alphabet) == characters &&
           lastCharacters.find(text[characters - 1]) != std::string_view::npos;
}

bool isArchiveName(std::string_view name, const std::optional<std::string>& suffix) {
    return !suffix || (name.size() > suffix->size() + 1 && name.ends_with("." + *suffix));
}

bool isForThisSystem(const FeedItem& item) {
    return item.os.empty() || item.os == "linux";
}

}  // namespace

std::optional<UpdateItem> update(const FeedItem& item, const Program& program) {
    const std::string& displayVersion = item.shortVersion.empty() ? item.version : item.shortVersion;
    const auto address = WebAddress::parse(item.url);
    const auto length = wholeNumber<std::int64_t>(item.length);
    const bool exists = newerVersion(item.version, program) && isPlainLine(displayVersion) && isForThisSystem(item) &&
                        address && isArchiveName(address->fileName, program.archiveSuffix) && length && *length > 0 &&
                        *length <= largestArchive && isSignature(item.signature);
    if (!exists) {
        return std::nullopt;
    }
    return UpdateItem{.version = item.version,
                      .displayVersion = displayVersion,
                      .notes = plainNotes(item.notes),
                      .archiveUrl = item.url,
                      .archiveBytes = *length,
                      .archiveSignature = item.signature};
}

std::optional<UpdateItem> bestUpdate(const std::vector<FeedItem>& feed, const Program& program) {
    std::optional<UpdateItem> best;
    for (const FeedItem& item : feed) {
        auto candidate = update(item, program);
        if (candidate && (!best || VersionNumber::parse(candidate->version) > VersionNumber::parse(best->version))) {
            best = std::move(candidate);
        }
    }
    return best;
}

std::string plainNotes(std::string_view notes) {
    constexpr std::string_view whiteSpace = " \t\n";
    std::string plain;
    std::size_t characters = 0;
    while (!notes.empty() && characters < longestNotes) {
        const std::string_view character = firstCharacter(notes);
        const bool isKept = character == "\n" || character == "\t" || !isDisturbing(character);
        if (isKept && !(plain.empty() && whiteSpace.find(character) != std::string_view::npos)) {
            plain += character;
            ++characters;
        }
        notes.remove_prefix(character.size());
    }
    return plain.substr(0, plain.find_last_not_of(whiteSpace) + 1);
}

}  // namespace kestrune::UpdateRules
