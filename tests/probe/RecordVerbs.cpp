#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <iterator>
#include <limits>
#include <nlohmann/json.hpp>
#include <string_view>

#include "engine/TelemetryFormulas.h"
#include "engine/TopProcesses.h"
#include "platform/ProcessText.h"
#include "platform/linux/LinuxFileStore.h"
#include "tests/probe/FeedJson.h"
#include "tests/probe/ProcessJson.h"
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

std::string activity(const std::string& bytes) {
    const auto entries = ActivityLog::decode(bytes);
    return entries ? ActivityLog::encode(*entries) : "null";
}

std::string diskFree(const std::string& bytes) {
    const DiskSummary disk = TelemetryFormulas::diskSummaryFromDf(bytes);
    const nlohmann::ordered_json object{
        {"usedGB", disk.usedGB}, {"totalGB", disk.totalGB}, {"pct", disk.pct}, {"freeGB", disk.freeGB}};
    return object.dump();
}

std::string processes(const std::string& bytes) {
    return jsonOf(ProcessText::processes(bytes)).dump();
}

std::string listeners(const std::string& bytes) {
    return jsonOf(ProcessText::listeningPorts(bytes)).dump();
}

std::string topProcesses(const std::string& bytes) {
    return jsonOf(TopProcesses::parse(bytes)).dump();
}

struct Parser {
    std::string_view kind;
    std::string (*print)(const std::string& bytes);
};

constexpr std::array<Parser, 6> parsers{{{"activity", activity},
                                         {"appcast", feedJson},
                                         {"df", diskFree},
                                         {"ps", processes},
                                         {"lsof", listeners},
                                         {"top", topProcesses}}};

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
    if (arguments.size() != 1) {
        return misused;
    }
    const auto* const parser =
        std::find_if(parsers.begin(), parsers.end(), [&](const Parser& known) { return known.kind == arguments[0]; });
    if (parser == parsers.end()) {
        return misused;
    }
    std::puts(parser->print({std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()}).c_str());
    return succeeded;
}

}  // namespace kestrune::probe
