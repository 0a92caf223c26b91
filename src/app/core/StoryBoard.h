#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/uikit/UIViewController.h"

namespace nimbrel {

// The application's storyboards; there is one.
enum class AppStoryboard { Main };

std::string_view rawValue(AppStoryboard board);

// Ends the process with the storyboard helper's message for a screen that could not be made.
[[noreturn]] void storyboardSceneNotFound(AppStoryboard board, std::string_view typeName,
                                         std::string_view function, int line,
                                         std::string_view file);

std::shared_ptr<UIViewController> instantiateScene(AppStoryboard board, std::string_view identifier);

// Makes the screen of class T, whose storyboard identifier is its type name (T::kTypeName). A
// scene that is missing or of another class ends the process, naming the caller.
template <class T>
std::shared_ptr<T> viewController(AppStoryboard board, std::string_view function, int line,
                                  std::string_view file) {
  auto controller = std::dynamic_pointer_cast<T>(instantiateScene(board, T::kTypeName));
  if (!controller) storyboardSceneNotFound(board, T::kTypeName, function, line, file);
  return controller;
}

}  // namespace nimbrel
