#pragma once

#include <string>

#include "app/media/BrowseScreen.h"

namespace nimbrel {

struct BrowseSceneTexts {
  std::string aboveTitle;
  std::string belowTitle;
  std::string mainFolderName;
  // The favourite button of the edit bar, or the unfavourite one.
  std::string favouriteSelector = "onFavBtn:";
  // Whether the edit bar has a delete button, and the favourite button an image view of its own.
  bool hasDelete = true;
  bool hasFavouriteImage = true;
};

// Builds the frame's outlets with the scene's initial values and wires its controls.
template <class AlbumList>
void buildBrowseScene(BrowseScreen<AlbumList>& screen, const BrowseSceneTexts& texts);

}  // namespace nimbrel
