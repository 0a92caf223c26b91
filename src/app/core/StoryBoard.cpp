#include "app/core/StoryBoard.h"

#include "platform/foundation/FatalError.h"
#include "platform/uikit/UIStoryboard.h"

namespace nimbrel {

std::string_view rawValue(AppStoryboard board) {
  switch (board) {
    case AppStoryboard::Main: return "Main";
  }
  return "Main";
}

void storyboardSceneNotFound(AppStoryboard board, std::string_view typeName,
                             std::string_view function, int line, std::string_view file) {
  std::string message = "ViewController with identifier ";
  message.append(typeName);
  message.append(", not found in ");
  message.append(rawValue(board));
  message.append(" Storyboard.\nFile : ");
  message.append(file);
  message.append(" \nLine Number : ");
  message.append(std::to_string(line));
  message.append(" \nFunction : ");
  message.append(function);
  fatalError(message, "Nimbrel/StoryBoard", 28);
}

std::shared_ptr<UIViewController> instantiateScene(AppStoryboard board, std::string_view identifier) {
  return UIStoryboard::storyboardWithName(std::string(rawValue(board)))
      .instantiateViewControllerWithIdentifier(std::string(identifier));
}

}  // namespace nimbrel
