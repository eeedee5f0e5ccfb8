#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kestrune {

/// One named thing of a tree and its allocated bytes.
struct ReportedItem {
    std::string path;  ///< below the tree: bytes
    std::int64_t bytes = 0;
};

/// How many of a tree's children and files a report names, as many as the program itself asks for.
constexpr std::size_t childrenNamed = 200;
constexpr std::size_t filesNamed = 50;

/// Builds one line of JSON for benchmarks/walk.py. Paths are bytes: each becomes the code point of its number.
class Report final {
public:
    void add(std::string_view name, std::int64_t value) { field(name) += std::to_string(value); }

    void add(std::string_view name, bool value) { field(name) += value ? "true" : "false"; }

    void add(std::string_view name, const std::vector<ReportedItem>& items);

    /// The line, without its end.
    [[nodiscard]] std::string line() const { return "{" + m_fields + "}"; }

private:
    std::string& field(std::string_view name);

    std::string m_fields;
};

}  // namespace kestrune
