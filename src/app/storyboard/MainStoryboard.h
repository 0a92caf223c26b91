#pragma once

namespace nimbrel {

// Registers the storyboard "Main" (its initial navigation stack and every scene by identifier)
// and the program's nibs. Called once at start, before the launch.
void registerMainStoryboard();

}  // namespace nimbrel
