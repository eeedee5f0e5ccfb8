#include "ui/Motion.h"

namespace kestrune::Motion {

namespace {

bool& reducedFlag() {
    static bool reduced = false;
    return reduced;
}

}  // namespace

bool isReduced() {
    return reducedFlag();
}

void setReduced(bool reduced) {
    reducedFlag() = reduced;
}

int duration(int milliseconds) {
    return isReduced() ? 0 : milliseconds;
}

}  // namespace kestrune::Motion
