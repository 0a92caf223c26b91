#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "app/media/Fetch.h"
#include "app/media/Lazy.h"
#include "platform/photos/PHImageRequestOptions.h"
#include "platform/uikit/CGGeometry.h"
#include "platform/uikit/UIColor.h"

namespace nimbrel {

// The platform's size-class numbers.
enum class UIUserInterfaceSizeClass : int { unspecified = 0, compact = 1, regular = 2 };

// How the picker screens look and behave. Every part, and every field of a part, is made at its
// first read and kept; a write replaces it. Nothing touches the photo library until
// `fetch()->album()->fetchResults()` is read. Main thread.
class Settings {
 public:
  class Theme {
   public:
    Theme();
    UIColor backgroundColor();
    void setBackgroundColor(UIColor color);
    // The tint a new view gets.
    UIColor selectionFillColor();
    void setSelectionFillColor(UIColor color);
    UIColor selectionStrokeColor();
    void setSelectionStrokeColor(UIColor color);
    UIColor selectionShadowColor();
    void setSelectionShadowColor(UIColor color);

   private:
    Lazy<UIColor> backgroundColor_, selectionFillColor_, selectionStrokeColor_, selectionShadowColor_;
  };

  class Selection {
   public:
    Selection();
    std::int64_t max();
    void setMax(std::int64_t value);
    std::int64_t min();
    void setMin(std::int64_t value);

   private:
    Lazy<std::int64_t> max_, min_;
  };

  class List {
   public:
    // Cells per row for the vertical and horizontal size classes.
    using CellsPerRow = std::function<int(UIUserInterfaceSizeClass verticalSize,
                                          UIUserInterfaceSizeClass horizontalSize)>;
    List();
    CGFloat spacing();
    void setSpacing(CGFloat value);
    CellsPerRow cellsPerRow();
    void setCellsPerRow(CellsPerRow closure);

   private:
    Lazy<CGFloat> spacing_;
    Lazy<CellsPerRow> cellsPerRow_;
  };

  // The shape of the shared Fetch, with preview options that only allow the network.
  class Fetch {
   public:
    using Album = nimbrel::Fetch::Album;
    using Assets = nimbrel::Fetch::Assets;
    class Preview {
     public:
      Preview();
      std::shared_ptr<PHImageRequestOptions> photoOptions();
      void setPhotoOptions(std::shared_ptr<PHImageRequestOptions> options);
      std::shared_ptr<PHLivePhotoRequestOptions> livePhotoOptions();
      void setLivePhotoOptions(std::shared_ptr<PHLivePhotoRequestOptions> options);
      std::shared_ptr<PHVideoRequestOptions> videoOptions();
      void setVideoOptions(std::shared_ptr<PHVideoRequestOptions> options);

     private:
      Lazy<std::shared_ptr<PHImageRequestOptions>> photoOptions_;
      Lazy<std::shared_ptr<PHLivePhotoRequestOptions>> livePhotoOptions_;
      Lazy<std::shared_ptr<PHVideoRequestOptions>> videoOptions_;
    };

    Fetch();
    std::shared_ptr<Album> album();
    void setAlbum(std::shared_ptr<Album> album);
    std::shared_ptr<Assets> assets();
    void setAssets(std::shared_ptr<Assets> assets);
    std::shared_ptr<Preview> preview();
    void setPreview(std::shared_ptr<Preview> preview);

   private:
    Lazy<std::shared_ptr<Album>> album_;
    Lazy<std::shared_ptr<Assets>> assets_;
    Lazy<std::shared_ptr<Preview>> preview_;
  };

  class Dismiss {
   public:
    Dismiss();
    bool enabled();
    void setEnabled(bool value);

   private:
    Lazy<bool> enabled_;
  };

  class Preview {
   public:
    Preview();
    bool enabled();
    void setEnabled(bool value);

   private:
    Lazy<bool> enabled_;
  };

  Settings();
  std::shared_ptr<Theme> theme();
  void setTheme(std::shared_ptr<Theme> theme);
  std::shared_ptr<Selection> selection();
  void setSelection(std::shared_ptr<Selection> selection);
  std::shared_ptr<List> list();
  void setList(std::shared_ptr<List> list);
  std::shared_ptr<Fetch> fetch();
  void setFetch(std::shared_ptr<Fetch> fetch);
  std::shared_ptr<Dismiss> dismiss();
  void setDismiss(std::shared_ptr<Dismiss> dismiss);
  std::shared_ptr<Preview> preview();
  void setPreview(std::shared_ptr<Preview> preview);

 private:
  Lazy<std::shared_ptr<Theme>> theme_;
  Lazy<std::shared_ptr<Selection>> selection_;
  Lazy<std::shared_ptr<List>> list_;
  Lazy<std::shared_ptr<Fetch>> fetch_;
  Lazy<std::shared_ptr<Dismiss>> dismiss_;
  Lazy<std::shared_ptr<Preview>> preview_;
};

}  // namespace nimbrel
