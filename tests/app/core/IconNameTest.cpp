#include "app/core/IconName.h"

#include <gtest/gtest.h>

namespace nimbrel {
namespace {

TEST(IconNameTest, ComparesCaseSensitivelyFromTheTopOfTheTable) {
  const std::pair<const char*, const char*> rows[] = {
      {"", "icon_folder"}, {"zip", "icon_zip"}, {"pdf", "icon_pdf"}, {"PDF", "file_other"}, {"Pdf", "file_other"},
      {"docx", "icon_document"}, {"pptx", "icon_ppt"}, {"xls", "icon_xls"}, {"odt", "icon_document"},
      {"csv", "icon_document"}, {"JPG", "icon_images"}, {"jpg", "icon_images"}, {"jpeg", "file_other"},
      {"JPEG", "file_other"}, {"tiff", "file_other"}, {"HEIC", "icon_images"}, {"heic", "file_other"},
      {"m4a", "icon_music1"}, {"M4A", "file_other"}, {"mov", "icon_videofile"}, {"MOV", "icon_videofile"},
      {"Mov", "file_other"}, {"Mp4", "file_other"}, {"movpng", "icon_videofile"}, {"MPEGPNG", "icon_videofile"},
      {"m4v", "icon_videofile"}, {"M4V", "file_other"}, {"caf", "icon_music1"}, {"flac", "icon_music1"},
      {"FLAC", "file_other"}, {"gz", "file_other"}};
  for (auto [extension, icon] : rows) EXPECT_EQ(iconName(extension), icon) << "\"" << extension << "\"";
}

}  // namespace
}  // namespace nimbrel
