#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

class UIViewController;

// A storyboard as code: per identifier, a factory that makes the controller with its scene. The
// application registers its scenes at start; instantiation goes through here.
class UIStoryboard {
 public:
  using Factory = std::function<std::shared_ptr<UIViewController>()>;

  static UIStoryboard storyboardWithName(std::string name);
  // No value for an identifier the storyboard does not have.
  std::shared_ptr<UIViewController> instantiateViewControllerWithIdentifier(
      const std::string& identifier) const;
  std::shared_ptr<UIViewController> instantiateInitialViewController() const;
  bool containsIdentifier(const std::string& identifier) const;
  const std::string& name() const { return name_; }

  static void registerScene(const std::string& storyboard, const std::string& identifier,
                            Factory factory);
  static void setInitialScene(const std::string& storyboard, Factory factory);
  static std::vector<std::string> identifiers(const std::string& storyboard);
  static void unregisterAll();

 private:
  explicit UIStoryboard(std::string name) : name_(std::move(name)) {}
  std::string name_;
};
