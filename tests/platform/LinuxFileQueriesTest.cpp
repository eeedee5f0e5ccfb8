#include "platform/linux/LinuxFileQueries.h"

namespace kestrune {

using QueriesUnderTest = LinuxFileQueries;

}  // namespace kestrune

#include "tests/platform/FileQueriesTests.h"
