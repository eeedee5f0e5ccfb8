#include "tests/probe/ProcessJson.h"

#include "tests/probe/ProbeText.h"

namespace kestrune::probe {

namespace {

using Json = nlohmann::ordered_json;

Json jsonOf(const std::vector<std::string>& texts) {
    Json list = Json::array();
    for (const std::string& text : texts) {
        list.push_back(escaped(text));
    }
    return list;
}

}  // namespace

Json jsonOf(const ProcessRecord& process) {
    return {{"pid", process.pid},
            {"rss", process.residentKilobytes},
            {"cpu", escaped(process.cpu)},
            {"command", escaped(process.command)}};
}

Json jsonOf(const ListeningPorts& listeners) {
    Json object = Json::object();
    for (const auto& [pid, endpoints] : listeners) {
        object[std::to_string(pid)] = jsonOf(endpoints);
    }
    return object;
}

Json jsonOf(const std::vector<ProcessRecord>& processes) {
    Json list = Json::array();
    for (const ProcessRecord& process : processes) {
        list.push_back(jsonOf(process));
    }
    return list;
}

Json jsonOf(const std::vector<TopProcess>& processes) {
    Json list = Json::array();
    for (const TopProcess& process : processes) {
        list.push_back(Json{{"mem", process.mem}, {"name", escaped(process.name)}});
    }
    return list;
}

Json jsonOf(const ProcessSnapshot& snapshot) {
    Json list = Json::array();
    for (const ProcessRecord& process : snapshot.processes) {
        Json row = jsonOf(process);
        row["startTime"] = process.startTime;
        const auto listeners = snapshot.listeners.find(process.pid);
        row["listeners"] = listeners == snapshot.listeners.end() ? Json::array() : jsonOf(listeners->second);
        list.push_back(std::move(row));
    }
    return list;
}

}  // namespace kestrune::probe
