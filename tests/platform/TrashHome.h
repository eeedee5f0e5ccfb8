#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include "platform/linux/LinuxTrash.h"

namespace kestrune {

namespace fs = std::filesystem;

inline std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline void writeFile(const fs::path& file, const std::string& content) {
    std::ofstream(file, std::ios::binary) << content;
}

/// A home folder of its own for every test, and moves of what lies in it.
class TrashHome : public testing::Test {
protected:
    TrashHome() {
        std::string pattern = (fs::temp_directory_path() / "kestrune-trash-XXXXXX").string();
        m_root = fs::canonical(::mkdtemp(pattern.data())).string();
        home = m_root + "/home";
        trashFolder = home + "/.local/share/Trash";
        fs::create_directory(home);
    }

    ~TrashHome() override {
        std::error_code ignored;
        fs::remove_all(m_root, ignored);
    }

    TrashHome(const TrashHome&) = delete;
    TrashHome& operator=(const TrashHome&) = delete;

    [[nodiscard]] std::string beside(const std::string& name) const { return m_root + "/" + name; }

    /// A folder with one file in it, so that its content tells it from others.
    void makeFolder(const std::string& relativePath, const std::string& content = "mine") const {
        fs::create_directories(home + "/" + relativePath);
        writeFile(home + "/" + relativePath + "/content", content);
    }

    [[nodiscard]] auto move(const std::string& relativePath, std::optional<FileIdentity> expected = {}) const {
        LinuxTrash trash;
        return trash.moveToTrash({home, relativePath, expected});
    }

    void expectFailure(const std::string& relativePath, TrashFailure failure) const {
        const auto result = move(relativePath);
        ASSERT_FALSE(result.ok()) << result.value().location;
        EXPECT_EQ(result.error().failure, failure) << result.error().message;
        EXPECT_EQ(result.error().message.empty(), failure != TrashFailure::system);
    }

    [[nodiscard]] std::size_t recordCount() const {
        std::error_code error;
        const fs::directory_iterator records(trashFolder + "/info", error);
        return error ? 0 : static_cast<std::size_t>(std::distance(fs::begin(records), fs::end(records)));
    }

    std::string home;
    std::string trashFolder;

private:
    std::string m_root;
};

}  // namespace kestrune
