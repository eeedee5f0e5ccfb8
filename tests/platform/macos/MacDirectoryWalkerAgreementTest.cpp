#include "platform/macos/MacDirectoryWalker.h"

namespace kestrune {

using WalkerUnderTest = MacDirectoryWalker;

}  // namespace kestrune

#include "tests/platform/DirectoryWalkerAgreementTests.h"
