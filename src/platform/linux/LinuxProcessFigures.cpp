#include "platform/linux/LinuxProcessFigures.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace kestrune::LinuxProcessFigures {

namespace {

// The number at the front of text, which is taken off together with it.
template <typename Number>
std::optional<Number> takeNumber(std::string_view& text) {
    Number value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{}) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value;
}

// Takes count fields and the blank before each off text; less when it ends before.
void skipFields(std::string_view& text, int count) {
    for (int i = 0; i < count; ++i) {
        text.remove_prefix(std::min(text.find(' ', 1), text.size()));
    }
}

}  // namespace

std::optional<std::uint64_t> ticksSinceBoot(std::string_view uptime, std::uint64_t ticksPerSecond) {
    const std::optional<std::uint64_t> seconds = takeNumber<std::uint64_t>(uptime);
    if (!seconds || uptime.size() < 3 || uptime.front() != '.') {
        return std::nullopt;
    }
    uptime = uptime.substr(1, 2);
    const std::optional<std::uint64_t> hundredths = takeNumber<std::uint64_t>(uptime);
    if (!hundredths || !uptime.empty()) {
        return std::nullopt;
    }
    // ps(1) computes in floating point, and drops what is left of a tick.
    const double upSeconds = static_cast<double>(*seconds * 100 + *hundredths) / 100.0;
    return static_cast<std::uint64_t>(upSeconds * static_cast<double>(ticksPerSecond));
}

std::optional<std::int64_t> residentPages(std::string_view statm) {
    skipFields(statm, 1);
    statm.remove_prefix(std::min<std::size_t>(1, statm.size()));
    return takeNumber<std::int64_t>(statm);
}

std::uint64_t imageMark(std::string_view stat) {
    // As proc(5) counts them: code and stack are the fields 26 to 28, data, heap, arguments and environment the fields
    // 45 to 51.
    constexpr int fieldsBeforeCode = 23;
    constexpr int codeFields = 3;
    constexpr int fieldsBeforeData = 16;
    constexpr int dataFields = 7;
    // FNV-1a, on whole numbers.
    constexpr std::uint64_t basis = 14'695'981'039'346'656'037U;
    constexpr std::uint64_t prime = 1'099'511'628'211U;
    const std::size_t close = stat.rfind(')');
    if (close == std::string_view::npos) {
        return 0;
    }
    stat.remove_prefix(close + 1);
    std::uint64_t mark = basis;
    std::uint64_t anyBit = 0;
    const auto mix = [&](int count) {
        for (int i = 0; i < count && stat.size() > 1; ++i) {
            stat.remove_prefix(1);
            const std::uint64_t address = takeNumber<std::uint64_t>(stat).value_or(0);
            anyBit |= address >> 1U;
            mark = (mark ^ address) * prime;
        }
    };
    skipFields(stat, fieldsBeforeCode);
    mix(codeFields);
    skipFields(stat, fieldsBeforeData);
    mix(dataFields);
    return anyBit == 0 ? 0 : mark;
}

std::string processorShare(std::uint64_t processorTicks, std::uint64_t startTime, std::uint64_t ticksSinceBoot,
                           std::uint64_t ticksPerSecond) {
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max() / 1000;
    std::uint64_t thousandths = 0;
    if (ticksSinceBoot > startTime && ticksPerSecond > 0) {
        // ps(1) takes the age to seconds and back, which at times costs it a tick.
        const auto perSecond = static_cast<double>(ticksPerSecond);
        const auto age =
            static_cast<std::uint64_t>(static_cast<double>(ticksSinceBoot - startTime) / perSecond * perSecond);
        thousandths = age == 0 ? 0 : std::min(processorTicks, most) * 1000 / age;
    }
    std::string text = std::to_string(thousandths / 10);
    if (thousandths < 1000) {
        text.append(".").append(std::to_string(thousandths % 10));
    }
    return text;
}

}  // namespace kestrune::LinuxProcessFigures
