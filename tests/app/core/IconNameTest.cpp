#include "app/core/IconName.h"

#include <gtest/gtest.h>

namespace nimbrel {
namespace {

struct Row {
  const char* extension;
  const char* icon;
};

TEST(IconNameTest, ComparesCaseSensitivelyFromTheTopOfTheTable) {
  const Row rows[] = {Row{"", "icon_folder"}, Row{"zip", "icon_zip"}, Row{"pdf", "icon_pdf"},
                      Row{"PDF", "file_other"}, Row{"Pdf", "file_other"}, Row{"docx", "icon_document"},
                      Row{"pptx", "icon_ppt"}, Row{"xls", "icon_xls"}, Row{"odt", "icon_document"},
                      Row{"csv", "icon_document"}, Row{"JPG", "icon_images"}, Row{"jpg", "icon_images"},
                      Row{"jpeg", "file_other"}, Row{"JPEG", "file_other"}, Row{"tiff", "file_other"},
                      Row{"HEIC", "icon_images"}, Row{"heic", "file_other"}, Row{"m4a", "icon_music1"},
                      Row{"M4A", "file_other"}, Row{"mov", "icon_videofile"}, Row{"MOV", "icon_videofile"},
                      Row{"Mov", "file_other"}, Row{"Mp4", "file_other"}, Row{"movpng", "icon_videofile"},
                      Row{"MPEGPNG", "icon_videofile"}, Row{"m4v", "icon_videofile"}, Row{"M4V", "file_other"},
                      Row{"caf", "icon_music1"}, Row{"flac", "icon_music1"}, Row{"FLAC", "file_other"},
                      Row{"gz", "file_other"}};
  for (const auto& row : rows) EXPECT_EQ(iconName(row.extension), row.icon) << "\"" << row.extension << "\"";
}

}  // namespace
}  // namespace nimbrel
