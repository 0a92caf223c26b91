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

TEST(UIGestureRecognizerTest, RecognitionSendsActionsOnlyWhenEnabledAndAttached) {
  struct Row {
    const char* name;
    bool attached, enabled, sends;
  };
  for (const Row& row : {Row{"attached and enabled", true, true, true},
                         Row{"disabled", true, false, false}, Row{"never attached", false, true, false}}) {
    auto target = std::make_shared<Target>();
    auto view = std::make_shared<UIView>();
    auto tap = std::make_shared<UITapGestureRecognizer>(target, "onTap:");
    if (row.attached) view->addGestureRecognizer(tap);
    tap->setEnabled(row.enabled);

    bool sent = tap->recognize(UIGestureRecognizerState::ended, {12, 34});

    EXPECT_EQ(sent, row.sends) << row.name;
    EXPECT_EQ(target->received.size(), row.sends ? 1u : 0u) << row.name;
    if (row.sends) {
      EXPECT_EQ(target->received[0], "onTap:@3");
      EXPECT_EQ(tap->locationInView(view.get()), (CGPoint{12, 34}));
    }
  }
}

TEST(UIGestureRecognizerTest, RemovingTheRecognizerFromItsViewDetachesIt) {
  auto target = std::make_shared<Target>();
  auto view = std::make_shared<UIView>();
  auto press = std::make_shared<UILongPressGestureRecognizer>(target, "onPress:");
  view->addGestureRecognizer(press);

  view->removeGestureRecognizer(press);

  EXPECT_EQ(press->view(), nullptr);
  EXPECT_TRUE(view->gestureRecognizers().empty());
  EXPECT_FALSE(press->recognize(UIGestureRecognizerState::began, {}));
  EXPECT_TRUE(target->received.empty());
}

TEST(UIGestureRecognizerTest, ARecognizerBelongsToOneViewAtATime) {
  auto target = std::make_shared<Target>();
  auto first = std::make_shared<UIView>();
  auto second = std::make_shared<UIView>();
  auto tap = std::make_shared<UITapGestureRecognizer>(target, "onTap:");
  first->addGestureRecognizer(tap);
  first->addGestureRecognizer(tap);

  second->addGestureRecognizer(tap);

  EXPECT_TRUE(first->gestureRecognizers().empty());
  EXPECT_EQ(second->gestureRecognizers().size(), 1u);
  EXPECT_EQ(tap->view(), second);
}

TEST(UIGestureRecognizerTest, ARecognizerOfADestroyedViewSendsNothing) {
  auto target = std::make_shared<Target>();
  auto tap = std::make_shared<UITapGestureRecognizer>(target, "onTap:");
  {
    auto view = std::make_shared<UIView>();
    view->addGestureRecognizer(tap);
  }
  EXPECT_FALSE(tap->recognize(UIGestureRecognizerState::ended, {}));
  EXPECT_TRUE(target->received.empty());
}

TEST(UIGestureRecognizerTest, EveryTargetHearsEachStateOfAContinuousGesture) {
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
