#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "platform/foundation/PlistValue.h"
#include "platform/foundation/Result.h"
#include "platform/mediaplayer/MPMediaItemRecord.h"
#include "platform/photos/PHAssetRecord.h"

namespace nimbrel::sim {

// The simulated platform's starting point, read from a fixture file. Every key is optional; the
// defaults are those of the fixture format.
struct Fixture {
  struct Permission {
    int status = 0;
    int answer = 3;
  };
  struct Document {
    std::string name;
    std::int64_t size = 0;
    double created = 0;  // seconds since 2001
    bool hasCreationDate = true;  // false: the file's creation date cannot be read
    std::optional<std::string> contents;  // the bytes, when they matter (a preview); else sparse
  };

  // The network the reachability check sees; no value when no reference can be made.
  struct Network {
    bool reachable = true;
    bool connectionRequired = false;
  };

  // One asset of the simulated photo library, with how the library answers requests for it.
  struct PhotoAsset {
    PHAssetRecord record;
    std::string video = "url";  // "url", "composition" or "none"
    bool editingInput = true;
    bool imageData = true;
  };

  double now = 0;  // seconds since 2001
  std::string locale = "en_US";
  std::string timeZone = "UTC";
  std::string idiom = "phone";
  std::string systemVersion = "17.0";
  double screenWidth = 390, screenHeight = 844, screenScale = 3;
  std::optional<std::int64_t> volumeSize = 128'000'000'000;
  std::optional<std::int64_t> volumeFree = 40'000'000'000;
  std::optional<std::int64_t> volumeImportantAvailable = 45'000'000'000;
  Permission photos, music, tracking;
  std::string applovinInterstitial = "nofill";
  std::string applovinNative = "nofill";
  std::string applovinAppOpen = "nofill";
  std::string googleInterstitial = "nofill";
  PlistValue::Dictionary preferences;
  std::vector<Document> documents;
  std::vector<Document> picker;  // what the document picker offers
  std::vector<PhotoAsset> photoAssets;
  std::vector<PHAssetCollectionRecord> photoAlbums;
  bool confirmPhotoDeletes = true;
  std::vector<MPMediaItemRecord> songs;
  std::vector<MPMediaCollectionRecord> musicAlbums;
  std::optional<Network> network = Network{};
  // The whole file, for the sections that other pieces of the simulator read.
  nlohmann::json raw = nlohmann::json::object();

  // A clear one-line reason for anything that is not a fixture.
  static Result<Fixture> parse(const std::string& text);
  static Result<Fixture> load(const std::string& path);
};

}  // namespace nimbrel::sim
