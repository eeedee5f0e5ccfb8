#include <charconv>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <iterator>
#include <limits>
#include <nlohmann/json.hpp>

#include "engine/TelemetryFormulas.h"
#include "platform/linux/LinuxFileStore.h"
#include "tests/probe/Verbs.h"
#include "workspace/ActivityLog.h"

namespace kestrune::probe {

namespace {

std::optional<std::int64_t> wholeNumber(const std::string& text) {
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && rest == end && number >= 0 ? std::optional(number) : std::nullopt;
}

void printActivity(const std::string& bytes) {
    const auto entries = ActivityLog::decode(bytes);
    std::puts(entries ? ActivityLog::encode(*entries).c_str() : "null");
}

void printDiskFree(const std::string& bytes) {
    const DiskSummary disk = TelemetryFormulas::diskSummaryFromDf(bytes);
    const nlohmann::ordered_json object{
        {"usedGB", disk.usedGB}, {"totalGB", disk.totalGB}, {"pct", disk.pct}, {"freeGB", disk.freeGB}};
    std::puts(object.dump().c_str());
}

}  // namespace

int record(const Arguments& arguments) {
    const auto count =
        arguments.size() == 2 ? wholeNumber(arguments[1]) : std::optional(std::numeric_limits<std::int64_t>::max());
    if (arguments.empty() || arguments.size() > 2 || !count) {
        return misused;
    }
    LinuxFileStore files;
    const SystemClock clock;
    auto entries = ActivityLog::load(files, arguments[0]);
    for (std::int64_t number = 1; number <= *count; ++number) {
        entries =
            ActivityLog::withEntry(std::move(entries), {makeActivityId(), clock.now(), "seq " + std::to_string(number),
                                                        "Recorded by the probe.", std::nullopt, false});
        if (!ActivityLog::save(files, arguments[0], entries)) {
            std::puts("ERR Activity is visible for this session, but couldn't be saved.");
            return failed;
        }
        std::printf("ack %lld\n", static_cast<long long>(number));
        static_cast<void>(std::fflush(stdout));
    }
    return succeeded;
}

int parse(const Arguments& arguments) {
    const bool isActivity = arguments == Arguments{"activity"};
    if (!isActivity && arguments != Arguments{"df"}) {
        return misused;
    }
    const std::string bytes{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
    if (isActivity) {
        printActivity(bytes);
    } else {
        printDiskFree(bytes);
    }
    return succeeded;
}

}  // namespace kestrune::probe
