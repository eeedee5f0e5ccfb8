#include <charconv>
#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "explorer/DiskExplorer.h"
#include "platform/linux/LinuxDirectoryWalker.h"
#include "platform/linux/TrashInfo.h"
#include "tests/probe/Verbs.h"

namespace kestrune::probe {

namespace {

using Json = nlohmann::ordered_json;

Json jsonOf(const std::vector<DiskExplorerItem>& items) {
    Json list = Json::array();
    for (const auto& item : items) {
        list.push_back({{"path", percentEncoded(item.path)}, {"bytes", item.bytes}, {"isDirectory", item.isDirectory}});
    }
    return list;
}

bool readNumber(const std::string& text, std::int64_t& number) {
    const char* const end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, number);
    return error == std::errc{} && stopped == end;
}

}  // namespace

int scan(const Arguments& arguments) {
    DiskExplorerRequest request;
    if (arguments.empty() || arguments.size() > 2 ||
        (arguments.size() == 2 && !readNumber(arguments[1], request.fileLimit))) {
        return misused;
    }
    LinuxDirectoryWalker walker;
    const auto found =
        DiskExplorer::scan(walker, SystemClock(), std::filesystem::absolute(arguments[0]).string(), request);
    const Json answer = {{"folders", jsonOf(found.folders)},
                         {"largestFiles", jsonOf(found.largestFiles)},
                         {"inspectedFiles", found.inspectedFiles},
                         {"skippedLocations", found.skippedLocations},
                         {"stopped", found.stopped},
                         {"limitReached", found.limitReached}};
    std::puts(answer.dump().c_str());
    return succeeded;
}

}  // namespace kestrune::probe
