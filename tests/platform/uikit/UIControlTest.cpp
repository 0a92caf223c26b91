#include "platform/uikit/UIControl.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/uikit/UIButton.h"

namespace {

class Target : public UIResponder {
 public:
  bool performAction(std::string_view selector, const std::shared_ptr<NSObject>& sender) override {
    if (selector == "unknown:") return false;
    received.emplace_back(selector);
    senders.push_back(sender);
    return true;
  }
  std::vector<std::string> received;
  std::vector<std::shared_ptr<NSObject>> senders;
};

TEST(UIControlTest, EventsSendTheirActionsToLiveTargetsInOrderWhileTheControlIsEnabled) {
  auto button = std::make_shared<UIButton>();
  auto first = std::make_shared<Target>();
  auto second = std::make_shared<Target>();
  button->addTarget(first, "onTap:", UIControlEvents::touchUpInside);
  button->addTarget(second, "onChange:", UIControlEvents::valueChanged);
  button->addTarget(first, "onTapAgain:", UIControlEvents::touchUpInside);
  {
    auto gone = std::make_shared<Target>();
    button->addTarget(gone, "onTap:", UIControlEvents::touchUpInside);
  }

  button->sendActionsForControlEvents(UIControlEvents::touchUpInside);

  EXPECT_EQ(first->received, (std::vector<std::string>{"onTap:", "onTapAgain:"}));
  EXPECT_TRUE(second->received.empty());
  ASSERT_EQ(first->senders.size(), 2u);
  EXPECT_EQ(first->senders[0], button);
  EXPECT_EQ(button->actionsForControlEvent(UIControlEvents::touchUpInside),
            (std::vector<std::string>{"onTap:", "onTapAgain:", "onTap:"}));

  button->setEnabled(false);
  button->sendActionsForControlEvents(UIControlEvents::touchUpInside);
  EXPECT_EQ(first->received.size(), 2u) << "a disabled control sends nothing";
  button->setEnabled(true);
  button->sendActionsForControlEvents(UIControlEvents::touchUpInside);
  EXPECT_EQ(first->received.size(), 4u);
}

TEST(UIControlTest, AnActionMayWireMoreTargetsWhileItRuns) {
  auto button = std::make_shared<UIButton>();
  struct Rewiring : UIResponder {
    std::weak_ptr<UIButton> button;
    int calls = 0;
    bool performAction(std::string_view, const std::shared_ptr<NSObject>&) override {
      ++calls;
      if (auto b = button.lock()) {
        for (int i = 0; i < 16; ++i) b->addTarget(b, "ignored:", UIControlEvents::valueChanged);
      }
      return true;
    }
  };
  auto target = std::make_shared<Rewiring>();
  target->button = button;
  button->addTarget(target, "onTap:", UIControlEvents::touchUpInside);
  button->sendActionsForControlEvents(UIControlEvents::touchUpInside);
  EXPECT_EQ(target->calls, 1);
}

}  // namespace
