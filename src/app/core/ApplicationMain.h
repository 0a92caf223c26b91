#pragma once

namespace nimbrel {

// Starts the program on whichever platform is installed: registers the storyboard and runs the
// platform's launch with the application's delegate.
void NimbrelApplicationMain();

}  // namespace nimbrel
