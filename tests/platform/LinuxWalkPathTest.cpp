#include "platform/linux/LinuxWalkSystem.h"

namespace kestrune {

using SystemUnderTest = LinuxWalkSystem;

}  // namespace kestrune

#include "tests/platform/WalkPathTests.h"
