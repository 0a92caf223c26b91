#include "platform/av/AVAssetExportSession.h"

#include <filesystem>
#include <mutex>

#include "platform/av/MediaURL.h"
#include "platform/foundation/DispatchQueue.h"

namespace {

namespace fs = std::filesystem;

// Passthrough into a file of the same bytes: what a platform without media libraries can do.
class CopyingExporter : public AssetExporter {
 public:
  bool exportFile(const std::string& sourcePath, const std::string& outputPath, const std::string&,
                  std::string& error) override {
    std::error_code ec;
    if (fs::exists(outputPath, ec)) {
      error = "Cannot Save: the file " + outputPath + " already exists";
      return false;
    }
    if (sourcePath.empty() || !fs::copy_file(sourcePath, outputPath, fs::copy_options::none, ec)) {
      error = "Cannot Open: " + (ec ? ec.message() : std::string("no media file"));
      return false;
    }
    return true;
  }
};

std::mutex gMutex;
std::shared_ptr<AssetExporter>& slot() {
  static std::shared_ptr<AssetExporter> s;
  return s;
}

}  // namespace

std::shared_ptr<AssetExporter> AssetExporter::current() {
  std::lock_guard lock(gMutex);
  if (!slot()) slot() = std::make_shared<CopyingExporter>();
  return slot();
}

void AssetExporter::install(std::shared_ptr<AssetExporter> exporter) {
  std::lock_guard lock(gMutex);
  slot() = std::move(exporter);
}

std::string AVAssetExportSession::errorDescription() const {
  std::lock_guard lock(errorMutex_);
  return error_;
}

void AVAssetExportSession::exportAsynchronouslyWithCompletionHandler(std::function<void()> handler) {
  status_ = AVAssetExportSessionStatus::waiting;
  auto self = strongSelf<AVAssetExportSession>();
  DispatchQueue::global(QualityOfService::utility).async([self, handler = std::move(handler)] {
    self->status_ = AVAssetExportSessionStatus::exporting;
    std::string source;
    if (auto urlAsset = std::dynamic_pointer_cast<AVURLAsset>(self->asset_)) source = mediaFilePath(urlAsset->url());
    std::string error;
    bool done = false;
    if (!self->outputURL || !self->outputURL->isFileURL()) {
      error = "no output file";
    } else {
      done = AssetExporter::current()->exportFile(source, self->outputURL->path(), self->outputFileType, error);
    }
    {
      std::lock_guard lock(self->errorMutex_);
      self->error_ = error;
    }
    self->status_ = done ? AVAssetExportSessionStatus::completed : AVAssetExportSessionStatus::failed;
    if (handler) handler();
  });
}
