#include "platform/uikit/UIActivityViewController.h"

#include <gtest/gtest.h>

#include "platform/PlatformState.h"
#include "platform/foundation/ManualRunLoop.h"
#include "platform/uikit/UIDevice.h"
#include "platform/uikit/UIWindow.h"

namespace {

class UIActivityViewControllerTest : public ::testing::Test {
 protected:
  ManualRunLoop loop;
  std::shared_ptr<UIViewController> screen = std::make_shared<UIViewController>();
  std::shared_ptr<UIWindow> window;

  void SetUp() override {
    resetPlatformState();
    window = std::make_shared<UIWindow>(CGRectMake(0, 0, 390, 844));
    window->setRootViewController(screen);
    window->makeKeyAndVisible();
    loop.runUntilIdle();
  }
  void TearDown() override { resetPlatformState(); }
};

TEST_F(UIActivityViewControllerTest, TheShareSheetIsAPopoverOnAPadOnly) {
  struct Row {
    UIUserInterfaceIdiom idiom;
    bool popover;
  };
  for (const Row& row : {Row{UIUserInterfaceIdiom::phone, false}, Row{UIUserInterfaceIdiom::pad, true},
                         Row{UIUserInterfaceIdiom::mac, false}}) {
    UIDevice::currentDevice().configure(row.idiom, "17.0");
    UIActivityViewController sheet({std::string("text")});
    EXPECT_EQ(sheet.popoverPresentationController() != nullptr, row.popover)
        << static_cast<int>(row.idiom);
  }
}

TEST_F(UIActivityViewControllerTest, TheShareSheetDescribesItsItems) {
  auto url = URL::fileURLWithPath("/tmp/My File.pdf", false);
  UIActivityViewController sheet({std::string("Look at this"), url, UIImage::named("icon_pdf"),
                                  UIImage::systemImageNamed("square.and.arrow.up"),
                                  UIImage::withPixels({4, 3, {}, ""})});
  EXPECT_EQ(sheet.itemDescriptions(),
            (std::vector<std::string>{"Look at this", "file:///tmp/My%20File.pdf", "icon_pdf",
                                      "system:square.and.arrow.up", "pixels:4x3"}));
}

TEST_F(UIActivityViewControllerTest, ClosingTheShareSheetReportsAfterItLeft) {
  auto sheet = std::make_shared<UIActivityViewController>(std::vector<UIActivityViewController::Item>{
      std::string("x")});
  std::vector<std::string> heard;
  sheet->completionWithItemsHandler = [&](bool completed) {
    heard.push_back(std::string(completed ? "completed" : "cancelled") +
                    (screen->presentedViewController() ? " while presented" : " after dismissal"));
  };
  screen->presentViewController(sheet, true, nullptr);
  loop.runUntilIdle();

  sheet->close(true);

  EXPECT_TRUE(heard.empty());
  loop.runUntilIdle();
  EXPECT_EQ(heard, (std::vector<std::string>{"completed after dismissal"}));
}

}  // namespace
