#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "platform/av/AVAsset.h"
#include "platform/foundation/NSObject.h"
#include "platform/foundation/URL.h"

inline constexpr const char* AVAssetExportPresetPassthrough = "AVAssetExportPresetPassthrough";
inline constexpr const char* AVFileTypeCoreAudioFormat = "com.apple.coreaudio-format";

enum class AVAssetExportSessionStatus : int { unknown = 0, waiting = 1, exporting = 2, completed = 3, failed = 4, cancelled = 5 };

// Writes a copy of timed media into another container. The simulated platform copies the file;
// the desktop remuxes (or decodes) with the media libraries.
class AssetExporter {
 public:
  virtual ~AssetExporter() = default;
  // Writes `outputPath` from `sourcePath`; false with a reason when it cannot. An existing output
  // is never replaced.
  virtual bool exportFile(const std::string& sourcePath, const std::string& outputPath, const std::string& fileType,
                          std::string& error) = 0;

  static std::shared_ptr<AssetExporter> current();
  static void install(std::shared_ptr<AssetExporter> exporter);
};

// One export of an asset to `outputURL`; runs on a background queue, whose thread also runs the
// completion handler.
class AVAssetExportSession : public NSObject {
 public:
  AVAssetExportSession(std::shared_ptr<AVAsset> asset, std::string presetName)
      : asset_(std::move(asset)), presetName_(std::move(presetName)) {}

  bool shouldOptimizeForNetworkUse = false;
  std::string outputFileType;
  std::optional<URL> outputURL;

  void exportAsynchronouslyWithCompletionHandler(std::function<void()> handler);
  AVAssetExportSessionStatus status() const { return status_.load(); }
  // Why a failed export failed.
  std::string errorDescription() const;
  const std::string& presetName() const { return presetName_; }

 private:
  std::shared_ptr<AVAsset> asset_;
  std::string presetName_;
  std::atomic<AVAssetExportSessionStatus> status_{AVAssetExportSessionStatus::unknown};
  mutable std::mutex errorMutex_;
  std::string error_;
};
