#include "platform/macos/MacFileStore.h"

namespace kestrune {

using StoreUnderTest = MacFileStore;

}  // namespace kestrune

#include "tests/platform/FileStoreTests.h"
