#include <QCoreApplication>
#include <QSocketNotifier>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <optional>

#include "platform/PlatformServices.h"
#include "tests/probe/ProbeText.h"
#include "tests/probe/Verbs.h"

namespace kestrune::probe {

namespace {

using Json = nlohmann::ordered_json;

Json jsonOf(RunningApplications& applications, const RunningApplication& application) {
    return {{"pid", application.processIdentifier},
            {"startTime", application.startTime},
            {"name", escaped(application.localizedName)},
            {"id", escaped(application.bundleIdentifier)},
            {"icon", escaped(applications.iconOf(application).path)},
            {"regular", application.activationPolicy == ActivationPolicy::regular}};
}

void print(const Json& json) {
    std::puts(json.dump().c_str());
    static_cast<void>(std::fflush(stdout));
}

// The application with the process identifier that the text says.
std::optional<RunningApplication> applicationIn(RunningApplications& applications, const std::string& text) {
    std::int32_t pid = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), pid);
    return error == std::errc{} && end == text.data() + text.size() ? applications.application(pid) : std::nullopt;
}

}  // namespace

int applications(const Arguments& arguments) {
    if (!arguments.empty()) {
        return misused;
    }
    int count = 0;
    const QCoreApplication application(count, nullptr);
    const PlatformServices services = makePlatformServices();
    RunningApplications& running = *services.runningApplications;
    Json list = Json::array();
    for (const RunningApplication& each : running.runningApplications()) {
        list.push_back(jsonOf(running, each));
    }
    // What a page that shows the list costs each time.
    const auto start = std::chrono::steady_clock::now();
    static_cast<void>(running.runningApplications());
    const auto spent = std::chrono::steady_clock::now() - start;
    const std::optional<RunningApplication> front = running.frontmostApplication();
    print({{"applications", list},
           {"tellsFrontmost", running.tellsFrontmost()},
           {"frontmost", front ? Json(front->processIdentifier) : Json(nullptr)},
           {"microseconds", std::chrono::duration_cast<std::chrono::microseconds>(spent).count()}});
    return succeeded;
}

int watchApplications(const Arguments& arguments) {
    if (!arguments.empty()) {
        return misused;
    }
    int count = 0;
    const QCoreApplication application(count, nullptr);
    const PlatformServices services = makePlatformServices();
    RunningApplications& running = *services.runningApplications;
    running.observeActivation([&running](const RunningApplication& each) { print(jsonOf(running, each)); });
    print("watching");
    // Until the other end is closed.
    const QSocketNotifier input(fileno(stdin), QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, &QCoreApplication::quit);
    return QCoreApplication::exec();
}

int quitApplication(const Arguments& arguments) {
    const bool isForced = arguments.size() == 2 && arguments[1] == "force";
    if (arguments.size() != 1 && !isForced) {
        return misused;
    }
    int count = 0;
    const QCoreApplication application(count, nullptr);
    const PlatformServices services = makePlatformServices();
    RunningApplications& running = *services.runningApplications;
    const std::optional<RunningApplication> asked = applicationIn(running, arguments[0]);
    if (!asked) {
        print("unknown");
        return failed;
    }
    const bool isAccepted = isForced ? running.forceTerminate(*asked) : running.terminate(*asked);
    print(isAccepted ? "accepted" : "declined");
    return isAccepted ? succeeded : failed;
}

}  // namespace kestrune::probe
