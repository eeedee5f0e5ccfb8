#include "platform/macos/MacRunningPrograms.h"

#import <AppKit/AppKit.h>

#include <algorithm>

#include "platform/macos/MacText.h"

namespace kestrune {

std::vector<std::string> MacRunningPrograms::names() {
    @autoreleasepool {
        std::vector<std::string> names;
        for (NSRunningApplication* application in NSWorkspace.sharedWorkspace.runningApplications) {
            std::string name = toStd(application.localizedName);
            if (!name.empty() && std::find(names.begin(), names.end(), name) == names.end()) {
                names.push_back(std::move(name));
            }
        }
        return names;
    }
}

}  // namespace kestrune
