#pragma once

#include <utility>
#include <variant>

namespace kestrune {

/// Either a value or the error that stands in its place. Value and Error must be different types.
template <typename Value, typename Error>
class [[nodiscard]] Result final {
public:
    Result(Value value) : m_content(std::in_place_index<0>, std::move(value)) {}  // NOLINT(google-explicit-constructor)

    Result(Error error) : m_content(std::in_place_index<1>, std::move(error)) {}  // NOLINT(google-explicit-constructor)

    [[nodiscard]] bool ok() const { return m_content.index() == 0; }

    /// Only when ok().
    [[nodiscard]] const Value& value() const { return std::get<0>(m_content); }

    /// Only when not ok().
    [[nodiscard]] const Error& error() const { return std::get<1>(m_content); }

private:
    std::variant<Value, Error> m_content;
};

}  // namespace kestrune
