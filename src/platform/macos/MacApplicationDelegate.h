#pragma once

#include <functional>

/// The program's own delegate of the application object. The toolkit puts its own in front and passes on what that
/// one does not answer. Main thread.
namespace kestrune::MacApplicationDelegate {

/// Before the toolkit's application object is made, which keeps the delegate it finds. Once.
void install();

/// Called whenever the user opens the running program again; before that is known nothing happens then.
void setReopenHandler(std::function<void()> handler);

}  // namespace kestrune::MacApplicationDelegate
