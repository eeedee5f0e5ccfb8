#include "platform/macos/MacTrashItem.h"

#import <Foundation/Foundation.h>

#include "platform/macos/MacText.h"

namespace kestrune {

namespace {

class FileManagerTrashItem final : public MacTrashItem {
public:
    Result<MacTrashAnswer, std::string> move(const std::string& path) override {
        @autoreleasepool {
            NSURL* resulting = nil;
            NSError* error = nil;
            if (![NSFileManager.defaultManager trashItemAtURL:fileUrl(path) resultingItemURL:&resulting error:&error]) {
                return toStd(error.localizedDescription);
            }
            const std::string location = pathOf(resulting);
            return MacTrashAnswer{location.empty() ? std::nullopt : std::optional(location)};
        }
    }
};

}  // namespace

std::unique_ptr<MacTrashItem> makeMacTrashItem() {
    return std::make_unique<FileManagerTrashItem>();
}

}  // namespace kestrune
