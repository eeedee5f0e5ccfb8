#include "platform/linux/LinuxDirectoryWalker.h"

namespace kestrune {

using WalkerUnderTest = LinuxDirectoryWalker;

}  // namespace kestrune

#include "tests/platform/DirectoryWalkerAgreementTests.h"
