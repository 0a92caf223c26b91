// The codec-backed file reader as a module nimbrel-library loads when a scan first reads a file.
#include "backends/desktop/media/FileMediaReader.h"

extern "C" __attribute__((visibility("default"))) const nimbrel::desktop::MediaReader* nimbrel_media_reader() {
  return nimbrel::desktop::FileMediaReader::shared().get();
}
