#include "platform/uikit/UIGestureRecognizer.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/uikit/UIView.h"

namespace {

class Target : public UIResponder {
 public:
  bool performAction(std::string_view selector, const std::shared_ptr<NSObject>& sender) override {
    auto recognizer = std::dynamic_pointer_cast<UIGestureRecognizer>(sender);
    received.push_back(std::string(selector) + "@" +
                       std::to_string(static_cast<int>(recognizer->state())));
    return true;
  }
  std::vector<std::string> received;
};

TEST(UIGestureRecognizerTest, RecognitionSendsActionsToEveryTargetOnlyWhenEnabledAndAttached) {
  enum class Attachment { kept, never, removed, viewGone, moved };
  struct Row {
    const char* name;
    Attachment attachment;
    bool enabled, sends;
  };
  for (const Row& row : {Row{"attached and enabled", Attachment::kept, true, true},
                         Row{"disabled", Attachment::kept, false, false},
                         Row{"never attached", Attachment::never, true, false},
                         Row{"removed from its view", Attachment::removed, true, false},
                         Row{"its view destroyed", Attachment::viewGone, true, false},
                         Row{"moved to another view", Attachment::moved, true, true}}) {
    auto target = std::make_shared<Target>();
    auto view = std::make_shared<UIView>();
    auto tap = std::make_shared<UITapGestureRecognizer>(target, "onTap:");
    if (row.attachment != Attachment::never) {
      view->addGestureRecognizer(tap);
      view->addGestureRecognizer(tap);
      EXPECT_EQ(view->gestureRecognizers().size(), 1u) << row.name;
    }
    if (row.attachment == Attachment::moved) {
      auto other = std::make_shared<UIView>();
      other->addGestureRecognizer(tap);
      EXPECT_TRUE(view->gestureRecognizers().empty()) << "a recognizer belongs to one view at a time";
      EXPECT_EQ(tap->view(), other);
      view = other;
    }
    if (row.attachment == Attachment::removed) {
      view->removeGestureRecognizer(tap);
      EXPECT_EQ(tap->view(), nullptr);
      EXPECT_TRUE(view->gestureRecognizers().empty());
    }
    if (row.attachment == Attachment::viewGone) view.reset();
    tap->setEnabled(row.enabled);

    bool sent = tap->recognize(UIGestureRecognizerState::ended, {12, 34});

    EXPECT_EQ(sent, row.sends) << row.name;
    EXPECT_EQ(target->received.size(), row.sends ? 1u : 0u) << row.name;
    if (row.sends) {
      EXPECT_EQ(target->received[0], "onTap:@3");
      EXPECT_EQ(tap->locationInView(view.get()), (CGPoint{12, 34}));
    }
  }

  // Every target hears each state of a continuous gesture.
  auto first = std::make_shared<Target>();
  auto second = std::make_shared<Target>();
  auto view = std::make_shared<UIView>();
  auto pinch = std::make_shared<UIPinchGestureRecognizer>(first, "onPinch:");
  pinch->addTarget(second, "zoom:");
  view->addGestureRecognizer(pinch);
  for (auto state : {UIGestureRecognizerState::began, UIGestureRecognizerState::changed,
                     UIGestureRecognizerState::ended}) {
    pinch->recognize(state, {});
  }
  EXPECT_EQ(first->received, (std::vector<std::string>{"onPinch:@1", "onPinch:@2", "onPinch:@3"}));
  EXPECT_EQ(second->received, (std::vector<std::string>{"zoom:@1", "zoom:@2", "zoom:@3"}));
}

}  // namespace
