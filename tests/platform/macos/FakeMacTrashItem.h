#pragma once

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/Text.h"
#include "platform/macos/MacTrashItem.h"

namespace kestrune {

/// A system that moves what a path leads to into a Trash folder by a real rename, and misbehaves on demand.
class FakeMacTrashItem final : public MacTrashItem {
public:
    explicit FakeMacTrashItem(std::string trashFolder) : trash(std::move(trashFolder)) {}

    [[nodiscard]] Result<MacTrashAnswer, std::string> move(const std::string& path) override {
        paths.push_back(path);
        if (failure) {
            return *failure;
        }
        ::mkdir(trash.c_str(), S_IRWXU);
        const std::string destination = freePlace(arrivesAs.value_or(lastPathComponent(path)));
        if (beforeRename) {
            beforeRename();
        }
        if (::rename(path.c_str(), destination.c_str()) != 0) {
            return std::string("The system says: ") + std::strerror(errno);
        }
        if (afterRename) {
            afterRename();
        }
        return MacTrashAnswer{tellsLocation ? std::optional(saysInstead.value_or(destination)) : std::nullopt};
    }

    std::string trash;
    std::optional<std::string> failure;      ///< its words when it moves nothing
    std::optional<std::string> arrivesAs;    ///< the name in the Trash, if not the item's own
    std::optional<std::string> saysInstead;  ///< a location that is not where the item went
    bool tellsLocation = true;
    std::function<void()> beforeRename;
    std::function<void()> afterRename;
    std::vector<std::string> paths;  ///< what it was given, in order

private:
    [[nodiscard]] std::string freePlace(const std::string& name) const {
        std::string place = trash + "/" + name;
        struct stat status = {};
        for (int i = 2; ::lstat(place.c_str(), &status) == 0; ++i) {
            place = trash + "/" + name + " " + std::to_string(i);
        }
        return place;
    }
};

}  // namespace kestrune
