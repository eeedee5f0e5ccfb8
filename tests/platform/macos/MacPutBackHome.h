#pragma once

#include <fcntl.h>

#include "platform/macos/MacFolders.h"
#include "tests/platform/macos/MacTrashHome.h"

namespace kestrune {

/// A home folder whose Trash gives items back.
class MacPutBackHome : public MacTrashHome {
protected:
    [[nodiscard]] auto plan(const std::string& location) { return macTrash.planPutBack(home, location); }

    /// The plan of an item that can go back.
    [[nodiscard]] PutBackPlan goodPlan(const std::string& location) {
        const auto planned = plan(location);
        EXPECT_TRUE(planned.ok()) << static_cast<int>(planned.error().failure) << planned.error().message;
        return planned.ok() ? planned.value() : PutBackPlan{};
    }

    [[nodiscard]] auto putBack(const PutBackPlan& confirmed) { return macTrash.putBack(home, confirmed); }

    void expectNoPlan(const std::string& location, PutBackFailure failure, const std::string& path = {}) {
        const auto planned = plan(location);
        ASSERT_FALSE(planned.ok()) << planned.value().originalPath;
        expectError(planned.error(), failure, path);
    }

    void expectNotPutBack(const PutBackPlan& confirmed, PutBackFailure failure, const std::string& path = {}) {
        const auto result = putBack(confirmed);
        ASSERT_FALSE(result.ok()) << result.value();
        expectError(result.error(), failure, path);
    }

    static void expectError(const PutBackError& error, PutBackFailure failure, const std::string& path) {
        EXPECT_EQ(error.failure, failure) << error.message;
        EXPECT_EQ(error.message.empty(), failure != PutBackFailure::system) << error.message;
        EXPECT_EQ(error.path, path);
    }

    /// The numbers that a record of what lies at location begins with.
    static std::string recordHead(const std::string& location) {
        const auto status = macStatusIn(AT_FDCWD, location);
        const FileIdentity item = status.ok() ? status.value().identity : FileIdentity{};
        return std::to_string(item.inode) + " " + std::to_string(item.birthSeconds) + " " +
               std::to_string(item.birthNanoseconds) + " ";
    }

    static void writeRecord(const std::string& location, const std::string& text) {
        fake_darwin::setAttribute(location, MacTrashRecord::attribute, text);
    }

    /// Gives what lies at location a record that a move from path would have written.
    static void giveRecord(const std::string& location, const std::string& path) {
        writeRecord(location, recordHead(location) + path);
    }
};

}  // namespace kestrune
