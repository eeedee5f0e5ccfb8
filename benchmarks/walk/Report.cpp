#include "benchmarks/walk/Report.h"

#include <array>
#include <cstdio>

namespace kestrune {

namespace {

std::string quoted(std::string_view text) {
    std::string json = "\"";
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte >= 0x7f || character == '"' || character == '\\') {
            std::array<char, 8> escape{};
            static_cast<void>(std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(byte)));
            json += escape.data();
        } else {
            json += character;
        }
    }
    return json + '"';
}

}  // namespace

void Report::add(std::string_view name, const std::vector<ReportedItem>& items) {
    std::string& json = field(name);
    json += '[';
    for (std::size_t i = 0; i < items.size(); ++i) {
        json += (i == 0 ? "[" : ",[") + quoted(items[i].path) + ',' + std::to_string(items[i].bytes) + ']';
    }
    json += ']';
}

std::string& Report::field(std::string_view name) {
    m_fields += m_fields.empty() ? "" : ",";
    m_fields += quoted(name);
    m_fields += ':';
    return m_fields;
}

}  // namespace kestrune
