#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "app/core/File.h"
#include "app/media/Units.h"

class UIStoryboard;

namespace nimbrel {

class AppDelegate;

// The one shared state of the process: the space totals and the two remembered lists. Main thread.
class AppData {
 public:
  static std::shared_ptr<AppData> shared();

  // Declared for the whole application; nothing reads or writes them.
  std::shared_ptr<UIStoryboard> storyboard;
  std::shared_ptr<AppDelegate> appDelegate;
  bool checkRateUs = false;

  std::int64_t usedSpace = 0;
  std::int64_t videoSpace = 0;
  std::int64_t audioSpace = 0;
  Units imagesSpace;
  std::int64_t otherSpace = 0;
  // Nothing writes it.
  std::int64_t freeSpace = 0;

  // Newest first.
  std::vector<File> recentFiles;
  std::vector<File> FavouriteFiles;
};

}  // namespace nimbrel
