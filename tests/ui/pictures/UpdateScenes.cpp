#include "tests/ui/pictures/UpdateScenes.h"

#include <string>

namespace kestrune {

namespace {

constexpr std::int64_t megabyte = 1'000'000;

UpdateItem item(const std::string& version, const std::string& notes) {
    UpdateItem result;
    result.displayVersion = version;
    result.notes = notes;
    result.archiveBytes = 48 * megabyte;
    return result;
}

std::string lengthy() {
    std::string notes = "What is new in this version:\n\n";
    for (int line = 1; line < 80; ++line) {
        notes += "• Change " + std::to_string(line) +
                 ": the explorer measures folders on several disks at once, and tells sooner what it found\n";
    }
    return notes;
}

}  // namespace

std::vector<UpdateScene> updateScenes() {
    const auto question = [](const UpdateItem& found) {
        return [found](QtUpdatePresenter& presenter) { presenter.showUpdate(found, "2.1.0", [](UpdateChoice) {}); };
    };
    const auto download = [](std::int64_t bytes, std::int64_t total) {
        return [=](QtUpdatePresenter& presenter) {
            presenter.showDownload(item("2.2.0", ""), [] {});
            presenter.setDownloaded(bytes, total);
        };
    };
    return {{"update-checking", [](QtUpdatePresenter& presenter) { presenter.showChecking([] {}); }},
            {"update-found", question(item("2.2.0", "• Scans are twice as fast\n• Ports show who opened them\n"))},
            {"update-no-notes", question(item("2.2.0", ""))},
            {"update-long", question(item("2.2.0", lengthy()))},
            {"update-hostile",
             question(item(std::string(64, 'W'), "<b>Bold</b>\n\xE2\x80\xAEgnp.exe\n" + std::string(3000, 'x')))},
            {"update-download", download(18 * megabyte, 48 * megabyte)},
            {"update-download-large", download(990 * megabyte, 1'240 * megabyte)},
            {"update-download-unknown", download(18 * megabyte, 0)},
            {"update-installing", [](QtUpdatePresenter& presenter) { presenter.showInstalling(item("2.2.0", "")); }},
            {"update-outcome",
             [](QtUpdatePresenter& presenter) {
                 presenter.showOutcome("You’re up to date", "Kestrune 2.1.0 is the newest version.");
             }},
            {"update-ready",
             [](QtUpdatePresenter& presenter) { presenter.showReadyToRelaunch(item("2.2.0", ""), [] {}); }}};
}

}  // namespace kestrune
