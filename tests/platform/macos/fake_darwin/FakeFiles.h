#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace kestrune::fake_darwin {

/// How the stand-ins for the calls on files behave; reset to the defaults by a new object. One thread at a time.
struct Files {
    struct Volume {
        std::string mountPoint;
        bool isLocal = true;
    };

    std::vector<Volume> volumes;         ///< what getfsstat tells
    int volumesError = 0;                ///< the errno of getfsstat
    int attributeError = 0;              ///< the errno of writing an extended attribute
    int pathError = 0;                   ///< the errno of F_GETPATH
    int renameError = 0;                 ///< the errno of renameatx_np
    std::function<void()> beforeRename;  ///< runs once, right before the next renameatx_np
    std::function<void()> afterRename;   ///< runs once, right after the next one that succeeds
};

Files& files();

/// Gives what lies at path an extended attribute; a link is not followed.
void setAttribute(const std::string& path, const std::string& name, const std::string& value);

/// The extended attribute of what lies at path; empty without one.
std::string attribute(const std::string& path, const std::string& name);

}  // namespace kestrune::fake_darwin
