#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

#include "tests/probe/Verbs.h"

namespace {

using namespace kestrune::probe;

struct Verb {
    std::string_view name;
    std::string_view arguments;
    int (*run)(const Arguments&);
};

constexpr std::array<Verb, 18> verbs{{
    {"clean", "HOME REL", clean},
    {"record", "HOME [N]", record},
    {"runproc", "EXE [ARG...]", runProcess},
    {"size", "PATH", size},
    {"allowed", "HOME PATH", allowed},
    {"scan-targets", "HOME", scanTargets},
    {"scan", "DIR [FILE-LIMIT]", scan},
    {"parse", "activity|appcast|df|ps|lsof|top < INPUT", parse},
    {"pref-set", "HOME KEY VALUE...", setPreference},
    {"pref-get", "HOME KEY", preference},
    {"telemetry", "", telemetry},
    {"apps", "", applications},
    {"apps-watch", "", watchApplications},
    {"apps-quit", "PID [force]", quitApplication},
    {"stop", "PID EXE", stop},
    {"list", "", list},
    {"ports", "", ports},
    {"feed", "URL [AUTHORITY-FILE]", feed},
}};

void printUsage() {
    for (const Verb& verb : verbs) {
        static_cast<void>(std::fprintf(stderr, "usage: kestrune-probe %.*s %.*s\n", static_cast<int>(verb.name.size()),
                                       verb.name.data(), static_cast<int>(verb.arguments.size()),
                                       verb.arguments.data()));
    }
}

}  // namespace

int main(int argc, char** argv) {
    const Arguments arguments(argv + std::min(argc, 1), argv + argc);
    int status = misused;
    if (!arguments.empty()) {
        const auto* const verb =
            std::find_if(verbs.begin(), verbs.end(), [&](const Verb& known) { return known.name == arguments[0]; });
        if (verb != verbs.end()) {
            status = verb->run(Arguments(arguments.begin() + 1, arguments.end()));
        }
    }
    if (status == misused) {
        printUsage();
    }
    return status;
}
