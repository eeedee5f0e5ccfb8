#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Clock.h"

namespace kestrune {

/// The one store of the user's settings. Texts are bytes: a path need not be valid UTF-8. A value of another type
/// than asked for reads as absent, and so does an element of another type in a list of texts. Every set is durable when
/// it returns true; false means that it holds for this session only. Any thread.
class Preferences {
public:
    using Texts = std::vector<std::string>;

    Preferences() = default;
    Preferences(const Preferences&) = delete;
    Preferences& operator=(const Preferences&) = delete;
    virtual ~Preferences() = default;

    [[nodiscard]] virtual std::optional<bool> boolean(const std::string& key) const = 0;
    [[nodiscard]] virtual std::optional<Texts> texts(const std::string& key) const = 0;
    [[nodiscard]] virtual std::optional<WallTime> date(const std::string& key) const = 0;

    /// A window frame: x, y, width, height in device-independent pixels.
    [[nodiscard]] virtual std::optional<std::vector<double>> numbers(const std::string& key) const = 0;

    /// Another number whenever a value may have changed since, so that what was made of one need not be made again.
    [[nodiscard]] virtual std::uint64_t revision() const = 0;

    virtual bool setBoolean(const std::string& key, bool value) = 0;
    virtual bool setTexts(const std::string& key, const Texts& value) = 0;
    virtual bool setDate(const std::string& key, WallTime value) = 0;
    virtual bool setNumbers(const std::string& key, const std::vector<double>& value) = 0;
};

}  // namespace kestrune
