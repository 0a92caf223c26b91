#include "platform/uikit/UIStoryboard.h"

#include <map>
#include <mutex>

#include "platform/uikit/UIViewController.h"

namespace {
struct Registry {
  std::mutex mutex;
  std::map<std::string, std::map<std::string, UIStoryboard::Factory>> scenes;
  std::map<std::string, UIStoryboard::Factory> initial;
};
Registry& registry() {
  static Registry r;
  return r;
}
}  // namespace

UIStoryboard UIStoryboard::storyboardWithName(std::string name) {
  return UIStoryboard(std::move(name));
}

std::shared_ptr<UIViewController> UIStoryboard::instantiateViewControllerWithIdentifier(
    const std::string& identifier) const {
  UIStoryboard::Factory factory;
  {
    auto& r = registry();
    std::lock_guard lock(r.mutex);
    auto board = r.scenes.find(name_);
    if (board == r.scenes.end()) return nullptr;
    auto scene = board->second.find(identifier);
    if (scene == board->second.end()) return nullptr;
    factory = scene->second;
  }
  auto controller = factory();
  if (controller && controller->storyboardIdentifier().empty()) {
    controller->setStoryboardIdentifier(identifier);
  }
  return controller;
}

std::shared_ptr<UIViewController> UIStoryboard::instantiateInitialViewController() const {
  UIStoryboard::Factory factory;
  {
    auto& r = registry();
    std::lock_guard lock(r.mutex);
    auto it = r.initial.find(name_);
    if (it == r.initial.end()) return nullptr;
    factory = it->second;
  }
  return factory();
}

bool UIStoryboard::containsIdentifier(const std::string& identifier) const {
  auto& r = registry();
  std::lock_guard lock(r.mutex);
  auto board = r.scenes.find(name_);
  return board != r.scenes.end() && board->second.count(identifier) > 0;
}

void UIStoryboard::registerScene(const std::string& storyboard, const std::string& identifier,
                                 Factory factory) {
  auto& r = registry();
  std::lock_guard lock(r.mutex);
  r.scenes[storyboard][identifier] = std::move(factory);
}

void UIStoryboard::setInitialScene(const std::string& storyboard, Factory factory) {
  auto& r = registry();
  std::lock_guard lock(r.mutex);
  r.initial[storyboard] = std::move(factory);
}

std::vector<std::string> UIStoryboard::identifiers(const std::string& storyboard) {
  auto& r = registry();
  std::lock_guard lock(r.mutex);
  std::vector<std::string> out;
  if (auto board = r.scenes.find(storyboard); board != r.scenes.end()) {
    for (const auto& [id, f] : board->second) out.push_back(id);
  }
  return out;
}

void UIStoryboard::unregisterAll() {
  auto& r = registry();
  std::lock_guard lock(r.mutex);
  r.scenes.clear();
  r.initial.clear();
}
