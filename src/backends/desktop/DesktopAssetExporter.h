#pragma once

#include "platform/av/AVAssetExportSession.h"

namespace nimbrel::desktop {

// Real exports of songs: a Core Audio file holding the song's own coded audio where the media
// libraries can write it so (MP3, ALAC, PCM), else its sound decoded to 16-bit PCM. The file appears
// whole or not at all, and an existing file is never replaced.
class DesktopAssetExporter : public AssetExporter {
 public:
  bool exportFile(const std::string& sourcePath, const std::string& outputPath, const std::string& fileType,
                  std::string& error) override;
};

}  // namespace nimbrel::desktop
