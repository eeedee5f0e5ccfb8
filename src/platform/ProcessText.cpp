#include "platform/ProcessText.h"

#include <algorithm>

#include "base/WholeNumber.h"

namespace kestrune::ProcessText {

namespace {

constexpr std::string_view whiteSpace = " \t\v\f\r";

// The text up to the next line end, which is taken off text together with it.
std::string_view takeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

std::string_view withoutLeadingSpace(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(whiteSpace), text.size()));
    return text;
}

// The field at the front of text, which is taken off together with the white space on both of its sides.
std::string_view takeField(std::string_view& text) {
    text = withoutLeadingSpace(text);
    const std::string_view field = text.substr(0, text.find_first_of(whiteSpace));
    text = withoutLeadingSpace(text.substr(field.size()));
    return field;
}

std::optional<ProcessRecord> process(std::string_view line) {
    const auto pid = wholeNumber<std::int32_t>(takeField(line));
    const auto residentKilobytes = wholeNumber<std::int64_t>(takeField(line));
    const std::string_view cpu = takeField(line);
    if (!pid || !residentKilobytes || line.empty()) {
        return std::nullopt;
    }
    return ProcessRecord{*pid, *residentKilobytes, std::string(cpu), std::string(line), 0};
}

}  // namespace

std::vector<ProcessRecord> processes(std::string_view listing) {
    std::vector<ProcessRecord> records;
    while (!listing.empty()) {
        if (std::optional<ProcessRecord> record = process(takeLine(listing))) {
            records.push_back(std::move(*record));
        }
    }
    return records;
}

ListeningPorts listeningPorts(std::string_view listing) {
    ListeningPorts listeners;
    std::optional<std::int32_t> pid;
    while (!listing.empty()) {
        const std::string_view line = takeLine(listing);
        if (line.starts_with('p')) {
            pid = wholeNumber<std::int32_t>(line.substr(1));
        } else if (line.starts_with('n') && pid) {
            listeners[*pid].emplace_back(line.substr(1));
        }
    }
    for (auto& [listener, endpoints] : listeners) {
        std::sort(endpoints.begin(), endpoints.end());
        endpoints.erase(std::unique(endpoints.begin(), endpoints.end()), endpoints.end());
    }
    return listeners;
}

std::optional<Owner> owner(std::string_view line) {
    if (line.ends_with('\n')) {
        line.remove_suffix(1);
    }
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    const auto user = wholeNumber<std::uint32_t>(takeField(line));
    return user && !line.empty() ? std::optional(Owner{*user, std::string(line)}) : std::nullopt;
}

}  // namespace kestrune::ProcessText
