#include "platform/macos/MacFileQueries.h"

namespace kestrune {

using QueriesUnderTest = MacFileQueries;

}  // namespace kestrune

#include "tests/platform/FileQueriesTests.h"
