#import <Foundation/Foundation.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/ProgramStart.h"
#include "platform/macos/MacApplicationDelegate.h"
#include "platform/macos/MacText.h"
#include "platform/macos/MacTranslation.h"

namespace kestrune::ProgramStart {

std::string installTranslation() {
    @autoreleasepool {
        std::vector<std::string> languages;
        for (NSString* language in NSLocale.preferredLanguages) {
            languages.push_back(toStd(language));
        }
        NSBundle* bundle = NSBundle.mainBundle;
        return MacTranslation::install(
            MacTranslation::folders(pathOf(bundle.resourceURL), pathOf(bundle.executableURL)), languages);
    }
}

void prepareForToolkit() {
    @autoreleasepool {
        // Else the toolkit makes an application with a Dock icon of what should only be seen in the menu bar.
        setenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM", "1", 0);
        MacApplicationDelegate::install();
    }
}

}  // namespace kestrune::ProgramStart
