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
    if (reduced != isReduced()) {
        reducedFlag() = reduced;
        changed().emit();
    }
}

Signal& changed() {
    static Signal signal;
    return signal;
}

int duration(int milliseconds) {
    return isReduced() ? 0 : milliseconds;
}

}  // namespace kestrune::Motion
