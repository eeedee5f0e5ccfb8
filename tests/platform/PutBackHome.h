#pragma once
#include <gtest/gtest.h>

#include <string>

#include "platform/linux/LinuxTrash.h"
#include "tests/platform/TrashHome.h"

namespace kestrune {

/// A home folder whose Trash gives items back.
class PutBackHome : public TrashHome {
protected:
    /// Moves a folder with this content to the Trash and answers where it lies there.
    std::string trash(const std::string& relativePath, const std::string& content = "mine") {
        makeFolder(relativePath, content);
        const auto moved = move(relativePath);
        EXPECT_TRUE(moved.ok()) << moved.error().message;
        return moved.ok() ? moved.value().location : std::string();
    }

    [[nodiscard]] auto plan(const std::string& location) const { return LinuxTrash().planPutBack(home, location); }

    /// The plan of an item that can go back.
    [[nodiscard]] PutBackPlan goodPlan(const std::string& location) const {
        const auto planned = plan(location);
        EXPECT_TRUE(planned.ok()) << static_cast<int>(planned.error().failure) << planned.error().message;
        return planned.ok() ? planned.value() : PutBackPlan{};
    }

    [[nodiscard]] auto putBack(const PutBackPlan& confirmed) const { return LinuxTrash().putBack(home, confirmed); }

    void expectNoPlan(const std::string& location, PutBackFailure failure, const std::string& path = {}) const {
        const auto planned = plan(location);
        ASSERT_FALSE(planned.ok()) << planned.value().originalPath;
        expectError(planned.error(), failure, path);
    }

    void expectNotPutBack(const PutBackPlan& confirmed, PutBackFailure failure, const std::string& path = {}) const {
        const auto result = putBack(confirmed);
        ASSERT_FALSE(result.ok()) << result.value();
        expectError(result.error(), failure, path);
    }

    static void expectError(const PutBackError& error, PutBackFailure failure, const std::string& path) {
        EXPECT_EQ(error.failure, failure) << error.message;
        EXPECT_EQ(error.message.empty(), failure != PutBackFailure::system) << error.message;
        EXPECT_EQ(error.path, path);
    }

    void writeRecord(const std::string& text) const { writeFile(trashFolder + "/info/a.trashinfo", text); }
};

}  // namespace kestrune
