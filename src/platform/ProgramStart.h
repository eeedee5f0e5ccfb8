#pragma once

#include <string>

/// What the start of the program needs from the system before there are any services. Each operation is defined once
/// for every system. Main thread, before any other thread starts.
namespace kestrune::ProgramStart {

/// Has every later text in the user's language where there is a catalogue for it. Answers which one ("de", "pt_BR");
/// empty for English.
[[nodiscard]] std::string installTranslation();

/// Before the toolkit's application object is made; not needed where no window or status item will be shown.
void prepareForToolkit();

}  // namespace kestrune::ProgramStart
