#include "platform/ArgumentVector.h"

#include <algorithm>
#include <iterator>

namespace kestrune {

namespace {

bool holdsNul(const std::string& text) {
    return text.find('\0') != std::string::npos;
}

char* unprotected(const std::string& text) {
    return const_cast<char*>(text.c_str());  // NOLINT(cppcoreguidelines-pro-type-const-cast)
}

}  // namespace

std::optional<std::vector<char*>> argumentVector(const std::string& executable,
                                                 const std::vector<std::string>& arguments) {
    if (holdsNul(executable) || std::any_of(arguments.begin(), arguments.end(), holdsNul)) {
        return std::nullopt;
    }
    std::vector<char*> vector;
    vector.reserve(arguments.size() + 2);
    vector.push_back(unprotected(executable));
    std::transform(arguments.begin(), arguments.end(), std::back_inserter(vector), unprotected);
    vector.push_back(nullptr);
    return vector;
}

}  // namespace kestrune
