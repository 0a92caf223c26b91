#pragma once

#include <functional>
#include <memory>

#include "platform/mediaplayer/MPMediaLibrary.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel {

// The reaction every music-gated screen shares to the library's answer: authorised runs
// `onAuthorised` on the main queue, denied or restricted shows the refusal alert on `screen` (if it
// is still alive), anything else does nothing.
void handleMusicAuthorization(MPMediaLibraryAuthorizationStatus status, std::function<void()> onAuthorised,
                              std::weak_ptr<UIViewController> screen);

// Asks the music library and hands its answer to handleMusicAuthorization.
void requestMusicAccess(std::weak_ptr<UIViewController> screen, std::function<void()> onAuthorised);

}  // namespace nimbrel
