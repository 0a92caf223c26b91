#pragma once

#include <string>

#include "platform/uikit/UIViewController.h"

namespace nimbrel {

// The alert a refused library permission shows: "Cancel", and "Setting", which opens the
// program's page of the system settings.
void presentSettingsRefusalAlert(UIViewController& screen, const std::string& title, const std::string& message);

}  // namespace nimbrel
