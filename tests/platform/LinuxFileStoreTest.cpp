#include "platform/linux/LinuxFileStore.h"

namespace kestrune {

using StoreUnderTest = LinuxFileStore;

}  // namespace kestrune

#include "tests/platform/FileStoreTests.h"
