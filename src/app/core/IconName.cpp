#include "app/core/IconName.h"

#include <array>
#include <utility>

namespace nimbrel {

namespace {

struct Row {
  std::string_view extension;
  std::string_view icon;
};

// Order and case matter: the first matching row wins.
constexpr std::array kTable = std::to_array<Row>({
    {"", "icon_folder"},
    {"zip", "icon_zip"},
    {"pdf", "icon_pdf"},
    {"doc", "icon_document"}, {"docx", "icon_document"},
    {"ppt", "icon_ppt"}, {"pptx", "icon_ppt"},
    {"xls", "icon_xls"}, {"xlsx", "icon_xls"},
    {"txt", "icon_document"}, {"csv", "icon_document"}, {"rtf", "icon_document"},
    {"odt", "icon_document"},
    {"jpg", "icon_images"}, {"png", "icon_images"}, {"svg", "icon_images"},
    {"bmp", "icon_images"}, {"gif", "icon_images"}, {"JPG", "icon_images"},
    {"PNG", "icon_images"}, {"SVG", "icon_images"}, {"BMP", "icon_images"},
    {"GIF", "icon_images"}, {"HEIC", "icon_images"},
    {"mp4", "icon_videofile"}, {"3gp", "icon_videofile"}, {"3gpp", "icon_videofile"},
    {"mpeg", "icon_videofile"}, {"mpegpng", "icon_videofile"}, {"mkv", "icon_videofile"},
    {"mkvpng", "icon_videofile"}, {"mov", "icon_videofile"}, {"movpng", "icon_videofile"},
    {"MOV", "icon_videofile"}, {"MP4", "icon_videofile"}, {"3GP", "icon_videofile"},
    {"3GPP", "icon_videofile"}, {"MPEG", "icon_videofile"}, {"MPEGPNG", "icon_videofile"},
    {"MKV", "icon_videofile"}, {"MKVPNG", "icon_videofile"}, {"MOVPNG", "icon_videofile"},
    {"m4v", "icon_videofile"},
    {"aac", "icon_music1"}, {"flac", "icon_music1"}, {"m4a", "icon_music1"},
    {"mp3", "icon_music1"}, {"oga", "icon_music1"}, {"wav", "icon_music1"},
    {"wma", "icon_music1"}, {"ogg", "icon_music1"}, {"caf", "icon_music1"},
});

}  // namespace

std::string iconName(std::string_view extension) {
  for (const auto& row : kTable) {
    if (row.extension == extension) return std::string(row.icon);
  }
  return "file_other";
}

}  // namespace nimbrel
