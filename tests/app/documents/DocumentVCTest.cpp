#include "app/documents/DocumentVC.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "app/SimTest.h"
#include "app/VC/PopupMenu.h"
#include "app/core/AppData.h"
#include "app/viewers/InfoViewController.h"
#include "app/viewers/PhotosInfoVC.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/uikit/UIActivityViewController.h"
#include "platform/uikit/UIApplication.h"

namespace nimbrel {
namespace {

namespace fs = std::filesystem;

class DocumentVCTest : public testing::SimTest {
 protected:
  // Home's "Documents" button, as a person presses it.
  std::shared_ptr<DocumentVC> open(const std::string& fixture) {
    launchToHome(fixture);
    return pushedBy<DocumentVC>("onDocumentBtn:");
  }
  std::string imported(const std::string& name) {
    return platform->home() + "/Documents/Nimbrel/importedFiles/" + name;
  }
  std::shared_ptr<UIDocumentPickerViewController> openPicker(DocumentVC& screen) {
    press(screen, "onOpenDocumentOicker:");
    return std::dynamic_pointer_cast<UIDocumentPickerViewController>(nav()->presentedViewController());
  }
  std::string cellText(DocumentVC& screen, long row) {
    auto cell = std::dynamic_pointer_cast<albumsCollectionViewCell>(
        screen.collectionViewCellForItemAtIndexPath(*screen.albumsCollectionView, {0, row}));
    return cell->lblNoOfItems->text().value_or("") + " | " + cell->albumImg->image()->name();
  }
  std::string hudText() { return SVProgressHUD::state().status.value_or(""); }
  // Rows follow the file system's order, which a test does not choose.
  long rowOf(DocumentVC& screen, const std::string& name) {
    for (size_t i = 0; i < screen.viewModel->items.size(); ++i) {
      if (URL::withString(screen.viewModel->items[i]->item.identifier)->lastPathComponent() == name) return long(i);
    }
    ADD_FAILURE() << "no row " << name;
    return 0;
  }
};

// The picker's types, the refusal's message and an import listed are the e2e
// documents_import_open_delete scenario's, as are the list cell's date, opening, the recent record,
// the way back and a plain delete.
TEST_F(DocumentVCTest, AnImportMovesThePickedFileAndATakenNameIsRefusedWithBothFilesKept) {
  auto screen = open(R"({"picker": [{"name": "notes.txt", "size": 10}]})");
  auto picker = openPicker(*screen);
  ASSERT_TRUE(picker);
  EXPECT_EQ(picker->modalPresentationStyle(), UIModalPresentationStyle::fullScreen);

  // Given an empty list, when notes.txt is picked, then it is moved in and listed.
  auto first = picker->pickNamed("notes.txt");
  ASSERT_TRUE(first);
  settle();
  EXPECT_FALSE(fs::exists(first->path())) << "moved, not copied";
  EXPECT_EQ(fs::file_size(imported("notes.txt")), 10u);
  ASSERT_EQ(screen->viewModel->items.size(), 1u);

  // When a second notes.txt is picked, then it is refused and both files stay.
  fs::resize_file(imported("notes.txt"), 3);
  auto second = openPicker(*screen)->pickNamed("notes.txt");
  settle();
  EXPECT_EQ(hudText(), "Enable to Move At FilesPath(Already Exists.)...");
  EXPECT_EQ(fs::file_size(imported("notes.txt")), 3u) << "the file already there is kept";
  EXPECT_TRUE(fs::exists(second->path())) << "the picked file stays where it was";
  EXPECT_EQ(screen->viewModel->items.size(), 1u);

  // A cancel only dismisses the picker.
  openPicker(*screen)->cancel();
  settle();
  EXPECT_FALSE(nav()->presentedViewController());
}

TEST_F(DocumentVCTest, GridCellsShowIconAndSize) {
  const std::string docs = R"("documents": [{"name": "report.pdf", "size": 1234, "created": "2026-02-02T08:00:00Z"},
      {"name": "README", "size": 5}, {"name": "SCAN.PDF", "size": 2048}])";
  auto grid = open(R"({"preferences": {"isFirstTime": false, "kIsListView": false}, )" + docs + "}");
  EXPECT_EQ(cellText(*grid, 0), "1.21 KB | icon_pdf");
  EXPECT_EQ(cellText(*grid, 1), "5 bytes | icon_folder");
  EXPECT_EQ(cellText(*grid, 2), "2.00 KB | file_other");
}

using DocumentVCDeathTest = DocumentVCTest;
TEST_F(DocumentVCDeathTest, AListCellOfAFileWithoutACreationDateEndsTheProcess) {
  EXPECT_DEATH(
      {
        auto screen = open(R"({"preferences": {"kIsListView": true}, "documents": [{"name": "a.txt", "created": null}]})");
        cellText(*screen, 0);
      },
      "Fatal error: Unexpectedly found nil while unwrapping an Optional value: file Nimbrel/DocumentVC");
}

TEST_F(DocumentVCTest, ElevenDocumentsAreSharedAtOnce) {
  std::string docs;
  for (int i = 0; i < 11; ++i) docs += std::string(i ? "," : "") + R"({"name": "d)" + std::to_string(i) + R"(.txt"})";
  auto screen = open(R"({"documents": [)" + docs + "]}");
  longPressRow(*screen, 0);
  for (long row = 1; row < 11; ++row) tapRow(*screen, row);
  ASSERT_EQ(screen->viewModel->selectedItems().size(), 11u);
  press(*screen, "onShareBtn:");
  auto sheet = std::dynamic_pointer_cast<UIActivityViewController>(nav()->presentedViewController());
  ASSERT_TRUE(sheet);
  EXPECT_EQ(sheet->activityItems().size(), 11u);
  advance(1);
  EXPECT_FALSE(SVProgressHUD::state().visible) << "the overlay goes once the sheet is made";
  EXPECT_EQ(screen->albumsCollectionView->tag(), 0) << "selection mode ends while the sheet is up";
}

TEST_F(DocumentVCTest, EditWorksOncePerScreenObjectWhileALongPressKeepsWorking) {
  auto screen = open(R"({"documents": [{"name": "a.txt"}, {"name": "b.txt"}]})");
  auto edit = [&] {
    press(*screen, "onMenuBtn:");
    ASSERT_EQ(popupMenuEntries(), (std::vector<std::string>{"Edit", "Storage analysis", "Settings"}));
    pressPopupMenuEntry(0);
    settle();
  };
  edit();
  EXPECT_EQ(screen->albumsCollectionView->tag(), 1);
  EXPECT_FALSE(screen->closeBtnView->isHidden());
  EXPECT_TRUE(screen->SelectEditView->isHidden()) << "nothing is picked yet";
  tapRow(*screen, 1);
  EXPECT_EQ(screen->viewModel->selectedItems().size(), 1u) << "the next tap selects through the callbacks";
  press(*screen, "onCloseBtn:");
  edit();
  EXPECT_EQ(screen->albumsCollectionView->tag(), 0) << "the second Edit does nothing";
  longPressRow(*screen, 0);
  EXPECT_EQ(screen->albumsCollectionView->tag(), 1);
}

TEST_F(DocumentVCTest, DeletingAFavouriteCleansTheFavouritesKeepsTheRecentsAndReportsEachFailure) {
  auto screen = open(R"({"documents": [{"name": "a.pdf"}, {"name": "b.txt"}, {"name": "c.txt"}]})");
  URL a = URL::fileURLWithPath(imported("a.pdf"));
  longPressRow(*screen, rowOf(*screen, "a.pdf"));
  press(*screen, "onFavBtn:");
  tapRow(*screen, rowOf(*screen, "a.pdf"));
  auto preview = std::dynamic_pointer_cast<QLPreviewController>(nav()->topViewController());
  ASSERT_TRUE(preview);
  EXPECT_EQ(preview->currentPreviewItem(), a);
  EXPECT_TRUE(preview->openLink(*URL::withString("https://example.org/"))) << "links inside are followed";
  press(*preview, "backButtonPressed:");
  ASSERT_EQ(AppData::shared()->FavouriteFiles.size(), 1u);

  // Given c.txt gone behind the screen's back, when a.pdf and c.txt are deleted,
  // then c.txt's failure is reported and, being the last, leaves the favourites alone.
  fs::remove(imported("c.txt"));
  longPressRow(*screen, rowOf(*screen, "a.pdf"));
  tapRow(*screen, rowOf(*screen, "c.txt"));
  press(*screen, "onDeletBtn:");
  EXPECT_EQ(hudText(), "Something Wrong.Please try again later....");
  EXPECT_FALSE(fs::exists(imported("a.pdf")));
  EXPECT_EQ(AppData::shared()->FavouriteFiles.size(), 1u);

  // When the favourite is the last deleted, then its record goes and the recent stays.
  fs::copy_file(imported("b.txt"), imported("a.pdf"));
  screen->reloadDocuments();
  settle();
  longPressRow(*screen, rowOf(*screen, "a.pdf"));
  press(*screen, "onDeletBtn:");
  EXPECT_TRUE(AppData::shared()->FavouriteFiles.empty());
  EXPECT_EQ(AppData::shared()->recentFiles.front().url, a);
}

TEST_F(DocumentVCTest, InfoShowsTheDocumentPanelForOneAndTheSelectionPanelForTwo) {
  auto screen = open(R"({"documents": [{"name": "a.pdf", "size": 1024}, {"name": "b.txt", "size": 1024}]})");
  longPressRow(*screen, 0);
  press(*screen, "onInfoBtn:");
  auto one = std::dynamic_pointer_cast<InfoViewController>(nav()->presentedViewController());
  ASSERT_TRUE(one && one->isDocumentURL);
  EXPECT_EQ(one->documentURL, URL::fileURLWithPath(imported("a.pdf")));
  one->dismissViewControllerAnimated(false, nullptr);
  settle();
  tapRow(*screen, 1);
  press(*screen, "onInfoBtn:");
  auto two = std::dynamic_pointer_cast<PhotosInfoVC>(nav()->presentedViewController());
  ASSERT_TRUE(two);
  EXPECT_EQ(two->models.size(), 2u);
  EXPECT_EQ(two->models[1].size.bytes, 1024);
  EXPECT_EQ(screen->albumsCollectionView->tag(), 1) << "selection mode stays on";
}

}  // namespace
}  // namespace nimbrel
