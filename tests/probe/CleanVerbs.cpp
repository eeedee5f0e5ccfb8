#include <cstdio>
#include <nlohmann/json.hpp>

#include "platform/linux/LinuxAccount.h"
#include "platform/linux/LinuxDirectoryWalker.h"
#include "platform/linux/LinuxFileQueries.h"
#include "platform/linux/LinuxProcessRunner.h"
#include "platform/linux/LinuxSystemTools.h"
#include "platform/linux/LinuxTrash.h"
#include "storage/DevCleaners.h"
#include "tests/probe/ProbeText.h"
#include "tests/probe/Verbs.h"

namespace kestrune::probe {

namespace {

/// The cleaners of one home folder on the real system.
struct RealCleaners {
    explicit RealCleaners(const std::string& home)
        : cleaners(home, {fileQueries, directoryWalker, trash, processRunner, systemTools}) {}

    LinuxFileQueries fileQueries;
    LinuxDirectoryWalker directoryWalker;
    LinuxTrash trash{LinuxAccount::dataHome()};
    LinuxProcessRunner processRunner;
    LinuxSystemTools systemTools;
    DevCleaners cleaners;
};

}  // namespace

int clean(const Arguments& arguments) {
    if (arguments.size() != 2) {
        return misused;
    }
    RealCleaners real(arguments[0]);
    CleanTarget target;
    target.path = arguments[0] + "/" + arguments[1];
    const auto moved = real.cleaners.cleanReviewedTarget(target);
    if (!moved.ok()) {
        std::printf("ERR %d %s\n", moved.error().code, moved.error().localizedDescription.c_str());
        return failed;
    }
    std::printf("OK %s\n", moved.value().c_str());
    return succeeded;
}

int allowed(const Arguments& arguments) {
    if (arguments.size() != 2) {
        return misused;
    }
    const bool answer = DevCleaners::isAllowedPath(arguments[1], arguments[0], LinuxFileQueries());
    std::puts(answer ? "true" : "false");
    return succeeded;
}

int size(const Arguments& arguments) {
    if (arguments.size() != 1) {
        return misused;
    }
    RealCleaners real("/");
    std::printf("%lld\n", static_cast<long long>(real.cleaners.calculateSize(arguments[0])));
    return succeeded;
}

int scanTargets(const Arguments& arguments) {
    if (arguments.size() != 1) {
        return misused;
    }
    RealCleaners real(arguments[0]);
    auto list = nlohmann::ordered_json::array();
    for (const auto& target : real.cleaners.scanAllTargets()) {
        list.push_back({{"category", rawValue(target.category)},
                        {"title", target.title},
                        {"subtitle", target.subtitle},
                        {"path", escaped(target.path)},
                        {"sizeBytes", target.sizeBytes},
                        {"requiresReview", target.requiresReview()}});
    }
    std::puts(list.dump().c_str());
    return succeeded;
}

}  // namespace kestrune::probe
