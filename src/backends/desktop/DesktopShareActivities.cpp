#include "backends/desktop/DesktopShareActivities.h"

#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>

#include "backends/desktop/DesktopOpener.h"
#include "backends/desktop/index/FileUri.h"
#include "backends/desktop/FolderCopy.h"
#include "backends/desktop/media/ImageCodec.h"
#include "backends/desktop/media/MediaProbe.h"
#include "platform/av/MediaURL.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PhotoLibrarySource.h"
#include "platform/uikit/UserNotice.h"

namespace nimbrel::desktop {

namespace {

bool hasFiles(const std::vector<ShareItem>& items) {
  for (const auto& item : items) {
    if (auto url = std::get_if<URL>(&item); url && url->isFileURL()) return true;
    if (auto image = std::get_if<UIImage>(&item); image && image->isPixels()) return true;
  }
  return false;
}

// The photo a picture shows: its own file, or the original a shared thumbnail was made from.
std::string assetPath(const std::string& source) {
  if (!source.ends_with(".png")) return source;
  auto info = readPngInfo(source);
  if (!info) return source;
  auto uri = info->text.find("Thumb::URI");
  if (uri == info->text.end() || !uri->second.starts_with("file://")) return source;
  return unescapeUri(std::string_view(uri->second).substr(7));
}

std::vector<std::string> urisOf(const std::vector<std::string>& files) {
  std::vector<std::string> uris;
  for (const auto& f : files) uris.push_back(fileUriForPath(f));
  return uris;
}

}  // namespace

DesktopShareActivities::Options DesktopShareActivities::defaultOptions() {
  Options options;
  const char* runtime = std::getenv("XDG_RUNTIME_DIR");
  options.temporaryFolder = runtime && *runtime ? runtime : "/tmp";
  options.run = runDetached;
  options.hasProgram = programOnPath;
  return options;
}

DesktopShareActivities::DesktopShareActivities(std::shared_ptr<ShareSurface> surface, Options options)
    : surface_(std::move(surface)), options_(std::move(options)) {}

std::vector<std::string> DesktopShareActivities::names(const std::vector<ShareItem>& items) const {
  std::vector<std::string> out;
  if (surface_) out.push_back(kCopy);
  if (!hasFiles(items)) return out;
  out.insert(out.end(), {kSaveTo, kOpenWith, kShowInFolder});
  if (options_.hasProgram && options_.hasProgram("xdg-email")) out.push_back(kEmail);
  return out;
}

std::string DesktopShareActivities::pictureFile(const UIImage& image, std::string& folder) const {
  const auto* pixels = image.pixels();
  if (!pixels || pixels->width <= 0 || pixels->height <= 0) return {};
  if (folder.empty()) {
    // A folder of this share's own: the files must outlive the sheet for a paste or a drop.
    std::string pattern = options_.temporaryFolder + "/nimbrel-share-XXXXXX";
    if (!::mkdtemp(pattern.data())) return {};
    folder = pattern;
  }
  std::string stem = std::filesystem::path(assetPath(pixels->source)).stem().string();
  if (stem.empty()) stem = "Picture";
  const std::string extension = lowercaseExtension(pixels->source);
  std::string name = stem + ".jpg";
  for (int n = 2; ::access((folder + "/" + name).c_str(), F_OK) == 0; ++n) {
    name = FolderCopy::candidate(stem + ".jpg", n);  // the folder is ours: nobody races us
  }
  if (pixels->rgba.size() == static_cast<size_t>(pixels->width) * pixels->height * 4) {
    RgbaImage rgba(pixels->width, pixels->height);
    rgba.pixels = pixels->rgba;
    return writeJpeg(folder + "/" + name, rgba, 92) ? folder + "/" + name : std::string{};
  }
  // A JPEG photo goes as it is: its quality, its orientation and its metadata stay.
  if (extension == "jpg" || extension == "jpeg") {
    auto copied = FolderCopy::copyInto(folder, pixels->source, name);
    return copied.value_or(std::string{});
  }
  auto decoded = decodeAny(pixels->source, 0);
  if (!decoded) return {};
  return writeJpeg(folder + "/" + name, *decoded, 92) ? folder + "/" + name : std::string{};
}

std::vector<std::string> DesktopShareActivities::files(const std::vector<ShareItem>& items) const {
  std::vector<std::string> out;
  std::string pictures;
  for (const auto& item : items) {
    if (auto url = std::get_if<URL>(&item); url && url->isFileURL()) {
      out.push_back(url->path());
    } else if (auto image = std::get_if<UIImage>(&item)) {
      if (auto path = pictureFile(*image, pictures); !path.empty()) out.push_back(path);
    }
  }
  return out;
}

std::string DesktopShareActivities::fileBehind(const URL& url, std::string& pictures) const {
  std::string path;
  if (url.isFileURL()) {
    path = url.path();
  } else if (url.scheme() == "ipod-library") {
    path = mediaFilePath(url);
  } else if (url.scheme() == "assets-library") {
    auto found = PHAsset::fetchAssetsWithALAssetURLs({url}, nullptr).firstObject();
    const auto& record = found ? found->record() : nullptr;
    auto library = PhotoLibrarySource::current();
    if (!record || !library) return {};
    if (record->mediaType == PHAssetMediaType::video) {
      auto answer = library->video(*record);
      if (answer.kind == PhotoLibrarySource::VideoAnswer::Kind::url) path = answer.path;
    } else if (auto original = library->fullSizeImagePath(*record)) {
      path = *original;
    } else if (auto image = library->image(*record, {double(record->pixelWidth), double(record->pixelHeight)}, false)) {
      return pictureFile(*image, pictures);
    }
  }
  return !path.empty() && ::access(path.c_str(), F_OK) == 0 ? path : std::string{};
}

std::vector<std::string> DesktopShareActivities::filesBehind(const std::vector<ShareItem>& items) const {
  std::vector<std::string> out;
  std::string pictures;
  for (const auto& item : items) {
    std::string path;
    if (auto url = std::get_if<URL>(&item)) {
      path = fileBehind(*url, pictures);
    } else if (auto image = std::get_if<UIImage>(&item)) {
      path = pictureFile(*image, pictures);
    }
    if (!path.empty()) out.push_back(std::move(path));
  }
  return out;
}

ShareActivities::DraggedFiles DesktopShareActivities::handedOver(const std::vector<std::string>& files,
                                                                 std::string text) {
  if (text.empty()) {
    for (const auto& f : files) text += (text.empty() ? "" : "\n") + f;
  }
  return {urisOf(files), std::move(text)};
}

ShareActivities::DraggedFiles DesktopShareActivities::dragFiles(const std::vector<ShareItem>& items) const {
  return handedOver(filesBehind(items), {});
}

std::string DesktopShareActivities::savedMessage(int saved, int total, const std::string& folder) {
  std::string noun = total == 1 ? " item" : " items";
  if (saved == total) return "Saved " + std::to_string(saved) + noun + " to " + folder + ".";
  return "Saved " + std::to_string(saved) + " of " + std::to_string(total) + noun + " to " + folder +
         "; the others could not be copied.";
}

void DesktopShareActivities::saveInto(const std::string& folder, std::vector<std::string> files) {
  // Videos can be large: the copying leaves the main thread, the message comes back to it.
  DispatchQueue::global().async([folder, files = std::move(files)] {
    int saved = 0;
    for (const auto& file : files) {
      if (FolderCopy::copyInto(folder, file)) ++saved;
    }
    std::string message = savedMessage(saved, static_cast<int>(files.size()), folder);
    DispatchQueue::main().async([message] { UserNotice::post(message); });
  });
}

bool DesktopShareActivities::perform(const std::string& name, const std::vector<ShareItem>& items,
                                     const std::optional<std::string>& folder) {
  auto offered = names(items);
  if (std::find(offered.begin(), offered.end(), name) == offered.end()) return false;
  if (name == kCopy) {
    std::string text;
    for (const auto& item : items) {
      if (auto s = std::get_if<std::string>(&item)) text += (text.empty() ? "" : "\n") + *s;
    }
    auto copied = handedOver(files(items), std::move(text));
    surface_->putOnClipboard(copied.uris, copied.text);
    return true;
  }
  auto paths = files(items);
  if (paths.empty()) return false;
  auto run = options_.run;
  if (name == kSaveTo) {
    if (folder) {
      saveInto(*folder, std::move(paths));
    } else if (surface_) {
      surface_->chooseFolder([paths](std::optional<std::string> chosen) {
        if (chosen) saveInto(*chosen, paths);
      });
    } else {
      return false;
    }
  } else if (name == kOpenWith) {
    for (const auto& path : paths) {
      std::string uri = fileUriForPath(path);
      if (!surface_) {
        run({"xdg-open", uri});
        continue;
      }
      surface_->openWithChooser(uri, [run, uri](bool answered) {
        if (!answered) run({"xdg-open", uri});
      });
    }
  } else if (name == kShowInFolder) {
    auto openParents = [run, paths] {
      std::set<std::string> parents;
      for (const auto& p : paths) parents.insert(std::filesystem::path(p).parent_path().string());
      for (const auto& parent : parents) run({"xdg-open", fileUriForPath(parent)});
    };
    if (!surface_) {
      openParents();
    } else {
      surface_->showItems(urisOf(paths), [openParents](bool answered) {
        if (!answered) openParents();
      });
    }
  } else if (name == kEmail) {
    std::vector<std::string> argv{"xdg-email"};
    for (const auto& p : paths) argv.insert(argv.end(), {"--attach", p});
    return run(argv);
  }
  return true;
}

}  // namespace nimbrel::desktop
