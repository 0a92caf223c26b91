#include "platform/uikit/UIActivityViewController.h"

#include <gtest/gtest.h>

#include "platform/uikit/UIDevice.h"
#include "LifeCycleJournal.h"

namespace {

class UIActivityViewControllerTest : public uikit_test::ScreenTest {
 protected:
  std::shared_ptr<UIViewController> screen = std::make_shared<UIViewController>();

  void SetUp() override { showOnScreen(screen); }
};

TEST_F(UIActivityViewControllerTest, TheShareSheetDescribesItsItemsAndIsAPopoverOnAPadOnly) {
  struct Row {
    UIUserInterfaceIdiom idiom;
    bool popover;
  };
  for (const Row& row : {Row{UIUserInterfaceIdiom::phone, false}, Row{UIUserInterfaceIdiom::pad, true},
                         Row{UIUserInterfaceIdiom::mac, false}}) {
    UIDevice::currentDevice().configure(row.idiom, "17.0");
    UIActivityViewController sheet({std::string("Look at this"), URL::fileURLWithPath("/tmp/My File.pdf", false),
                                    UIImage::named("icon_pdf"), UIImage::systemImageNamed("square.and.arrow.up"),
                                    UIImage::withPixels({4, 3, {}, ""})});
    EXPECT_EQ(sheet.popoverPresentationController() != nullptr, row.popover)
        << static_cast<int>(row.idiom);
    EXPECT_EQ(sheet.itemDescriptions(),
              (std::vector<std::string>{"Look at this", "file:///tmp/My%20File.pdf", "icon_pdf",
                                        "system:square.and.arrow.up", "pixels:4x3"}));
  }
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
