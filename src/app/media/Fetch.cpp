#include "app/media/Fetch.h"

#include "app/media/AlbumSources.h"
#include "app/media/PhotoLibraryAccess.h"
#include "platform/foundation/SharedInstance.h"

namespace nimbrel {

Fetch::Album::Album()
    : options_([] { return std::make_shared<PHFetchOptions>(); }),
      fetchResults_([this] {
        auto options = this->options();
        return fetchAlbumSources(options.get());
      }) {}

std::shared_ptr<PHFetchOptions> Fetch::Album::options() { return options_.get(); }
void Fetch::Album::setOptions(std::shared_ptr<PHFetchOptions> options) { options_.set(std::move(options)); }
std::vector<PHFetchResult<PHAssetCollection>> Fetch::Album::fetchResults() { return fetchResults_.get(); }
void Fetch::Album::setFetchResults(std::vector<PHFetchResult<PHAssetCollection>> results) {
  fetchResults_.set(std::move(results));
}

Fetch::Assets::Assets()
    : supportedMediaTypes_([] { return std::set<MediaTypes>{MediaTypes::image}; }),
      options_([this] { return mediaFetchOptions(supportedMediaTypes()); }) {}

std::set<MediaTypes> Fetch::Assets::supportedMediaTypes() { return supportedMediaTypes_.get(); }
void Fetch::Assets::setSupportedMediaTypes(std::set<MediaTypes> types) { supportedMediaTypes_.set(std::move(types)); }
std::shared_ptr<PHFetchOptions> Fetch::Assets::options() { return options_.get(); }
void Fetch::Assets::setOptions(std::shared_ptr<PHFetchOptions> options) { options_.set(std::move(options)); }

Fetch::Preview::Preview()
    : photoOptions_([] {
        auto options = std::make_shared<PHImageRequestOptions>();
        options->networkAccessAllowed = true;
        options->resizeMode = 2;
        options->synchronous = true;
        options->deliveryMode = 0;
        return options;
      }),
      livePhotoOptions_([] {
        auto options = std::make_shared<PHLivePhotoRequestOptions>();
        options->networkAccessAllowed = true;
        return options;
      }),
      videoOptions_([] {
        auto options = std::make_shared<PHVideoRequestOptions>();
        options->networkAccessAllowed = true;
        return options;
      }) {}

std::shared_ptr<PHImageRequestOptions> Fetch::Preview::photoOptions() { return photoOptions_.get(); }
void Fetch::Preview::setPhotoOptions(std::shared_ptr<PHImageRequestOptions> options) {
  photoOptions_.set(std::move(options));
}
std::shared_ptr<PHLivePhotoRequestOptions> Fetch::Preview::livePhotoOptions() { return livePhotoOptions_.get(); }
void Fetch::Preview::setLivePhotoOptions(std::shared_ptr<PHLivePhotoRequestOptions> options) {
  livePhotoOptions_.set(std::move(options));
}
std::shared_ptr<PHVideoRequestOptions> Fetch::Preview::videoOptions() { return videoOptions_.get(); }
void Fetch::Preview::setVideoOptions(std::shared_ptr<PHVideoRequestOptions> options) {
  videoOptions_.set(std::move(options));
}

Fetch::Fetch()
    : album_([] { return std::make_shared<Album>(); }),
      assets_([] { return std::make_shared<Assets>(); }),
      preview_([] { return std::make_shared<Preview>(); }) {}

std::shared_ptr<Fetch> Fetch::shared() { return SharedInstance<Fetch>::get(); }

std::shared_ptr<Fetch::Album> Fetch::album() { return album_.get(); }
void Fetch::setAlbum(std::shared_ptr<Album> album) { album_.set(std::move(album)); }
std::shared_ptr<Fetch::Assets> Fetch::assets() { return assets_.get(); }
void Fetch::setAssets(std::shared_ptr<Assets> assets) { assets_.set(std::move(assets)); }
std::shared_ptr<Fetch::Preview> Fetch::preview() { return preview_.get(); }
void Fetch::setPreview(std::shared_ptr<Preview> preview) { preview_.set(std::move(preview)); }

}  // namespace nimbrel
