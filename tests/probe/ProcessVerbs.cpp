#include <QCoreApplication>
#include <cstdio>
#include <optional>

#include "base/WholeNumber.h"
#include "platform/PlatformServices.h"
#include "tests/probe/ProcessJson.h"
#include "tests/probe/Verbs.h"

namespace kestrune::probe {

namespace {

// The product's services. The notification service wants an application object to live in.
class Machine final {
public:
    ProcessListing& listing() { return *m_services.processListing; }

    ProcessControl& control() { return *m_services.processControl; }

private:
    int m_count = 0;
    QCoreApplication m_application{m_count, nullptr};
    PlatformServices m_services = makePlatformServices();
};

}  // namespace

int stop(const Arguments& arguments) {
    const auto pid = arguments.size() == 2 ? wholeNumber<std::int32_t>(arguments[0]) : std::nullopt;
    if (!pid) {
        return misused;
    }
    const bool wasSent = Machine().control().requestTermination({*pid, arguments[1], 0});
    std::puts(wasSent ? "ok" : "refused");
    return wasSent ? succeeded : failed;
}

int list(const Arguments& arguments) {
    if (!arguments.empty()) {
        return misused;
    }
    std::puts(jsonOf(Machine().listing().snapshot()).dump().c_str());
    return succeeded;
}

int ports(const Arguments& arguments) {
    if (!arguments.empty()) {
        return misused;
    }
    std::puts(jsonOf(Machine().listing().snapshot().listeners).dump().c_str());
    return succeeded;
}

}  // namespace kestrune::probe
