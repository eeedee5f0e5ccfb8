#include "platform/macos/MacWalkSystem.h"

namespace kestrune {

using SystemUnderTest = MacWalkSystem;

}  // namespace kestrune

#include "tests/platform/WalkPathTests.h"
