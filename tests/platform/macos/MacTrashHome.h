#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "base/Text.h"
#include "platform/macos/MacTrash.h"
#include "platform/macos/MacTrashRecord.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/macos/FakeMacTrashItem.h"
#include "tests/platform/macos/fake_darwin/FakeFiles.h"

namespace kestrune {

namespace fs = std::filesystem;

inline std::string contentOf(const fs::path& file) {
    return TemporaryFolder::contentOf(file.string());
}

inline void writeFile(const fs::path& file, const std::string& content) {
    std::ofstream(file, std::ios::binary) << content;
}

/// A home folder of its own for every test, a system that moves things to its ".Trash", and moves of what lies in it.
class MacTrashHome : public testing::Test {
protected:
    MacTrashHome() : home(beside("home")), trashFolder(home + "/.Trash"), system(trashFolder), macTrash(system) {
        fake_darwin::files() = {};
        fs::create_directory(home);
    }

    ~MacTrashHome() override { fake_darwin::files() = {}; }

    MacTrashHome(const MacTrashHome&) = delete;
    MacTrashHome& operator=(const MacTrashHome&) = delete;

    [[nodiscard]] std::string beside(const std::string& name) const {
        return fs::canonical(m_root.path()).string() + "/" + name;
    }

    /// A folder with one file in it, so that its content tells it from others.
    void makeFolder(const std::string& relativePath, const std::string& content = "mine") const {
        fs::create_directories(home + "/" + relativePath);
        writeFile(home + "/" + relativePath + "/content", content);
    }

    [[nodiscard]] auto move(const std::string& relativePath, std::optional<FileIdentity> expected = {}) {
        return macTrash.moveToTrash({home, relativePath, expected});
    }

    void expectFailure(const std::string& relativePath, TrashFailure failure) {
        const auto result = move(relativePath);
        ASSERT_FALSE(result.ok()) << result.value().location;
        EXPECT_EQ(result.error().failure, failure) << result.error().message;
        EXPECT_EQ(result.error().message.empty(), failure != TrashFailure::system);
    }

    /// Moves a folder with this content to the Trash and answers where it lies there.
    std::string trash(const std::string& relativePath, const std::string& content = "mine") {
        makeFolder(relativePath, content);
        const auto moved = move(relativePath);
        EXPECT_TRUE(moved.ok()) << moved.error().message;
        return moved.ok() ? moved.value().location : std::string();
    }

    [[nodiscard]] static std::string recordOf(const std::string& path) {
        return fake_darwin::attribute(path, MacTrashRecord::attribute);
    }

    static std::string user() { return std::to_string(::geteuid()); }

private:
    const TemporaryFolder m_root;

protected:
    std::string home;
    std::string trashFolder;
    FakeMacTrashItem system;
    MacTrash macTrash;
};

}  // namespace kestrune
