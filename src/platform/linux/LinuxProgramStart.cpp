#include "platform/ProgramStart.h"
#include "platform/linux/LinuxTranslation.h"

namespace kestrune::ProgramStart {

std::string installTranslation() {
    return LinuxTranslation::install();
}

void prepareForToolkit() {
}

}  // namespace kestrune::ProgramStart
