#include "platform/photos/PHPhotoLibrary.h"

#include <cstdio>
#include <mutex>
#include <random>

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/photos/PhotoLibrarySource.h"
#include "platform/services/PermissionAuthority.h"

namespace {

// The changes named by the block that is running on this thread.
thread_local PhotoLibrarySource::Changes* tCurrentChanges = nullptr;

PhotoLibrarySource::Changes& currentChanges(const char* request) {
  if (!tCurrentChanges) {
    fatalError(std::string("-[") + request + "] can only be called from inside of -[PHPhotoLibrary performChanges:]",
               "PHPhotoLibrary", 0);
  }
  return *tCurrentChanges;
}

}  // namespace

std::string makeLocalIdentifier(const char* suffix) {
  static std::mutex mutex;
  static std::mt19937_64 random{std::random_device{}()};
  std::uint64_t a, b;
  {
    std::lock_guard lock(mutex);
    a = random();
    b = random();
  }
  char text[64];
  std::snprintf(text, sizeof text, "%08X-%04X-4%03X-%04X-%012llX/%s", static_cast<unsigned>(a >> 32),
                static_cast<unsigned>((a >> 16) & 0xFFFF), static_cast<unsigned>(a & 0xFFF),
                static_cast<unsigned>(0x8000 | ((b >> 48) & 0x3FFF)),
                static_cast<unsigned long long>(b & 0xFFFFFFFFFFFFull), suffix);
  return text;
}

PHPhotoLibrary& PHPhotoLibrary::sharedPhotoLibrary() {
  static PHPhotoLibrary library;
  return library;
}

PHAuthorizationStatus PHPhotoLibrary::authorizationStatus() {
  return static_cast<PHAuthorizationStatus>(
      PermissionAuthority::current()->status(PermissionAuthority::Kind::photos));
}

void PHPhotoLibrary::requestAuthorization(std::function<void(PHAuthorizationStatus)> handler) {
  PermissionAuthority::current()->request(PermissionAuthority::Kind::photos,
                                          [handler = std::move(handler)](int status) {
                                            handler(static_cast<PHAuthorizationStatus>(status));
                                          });
}

void PHPhotoLibrary::performChanges(std::function<void()> changeBlock,
                                    std::function<void(bool, std::optional<NSError>)> completion) {
  DispatchQueue::global().async([changeBlock = std::move(changeBlock), completion = std::move(completion)] {
    PhotoLibrarySource::Changes changes;
    tCurrentChanges = &changes;
    changeBlock();
    tCurrentChanges = nullptr;
    PhotoLibrarySource::current()->performChanges(
        std::move(changes), [completion](bool success, std::optional<NSError> error) {
          if (completion) completion(success, std::move(error));
        });
  });
}

void PHAssetChangeRequest::deleteAssets(const std::vector<std::shared_ptr<PHAsset>>& assets) {
  auto& changes = currentChanges("PHAssetChangeRequest deleteAssets:");
  for (const auto& a : assets) changes.deleteAssets.push_back(a->localIdentifier());
}

PHAssetChangeRequest PHAssetChangeRequest::creationRequestForAssetFromImage(const UIImage& image) {
  auto& changes = currentChanges("PHAssetChangeRequest creationRequestForAssetFromImage:");
  PHAssetChangeRequest request;
  request.placeholder_.localIdentifier = makeLocalIdentifier();
  changes.createAssets.push_back({request.placeholder_.localIdentifier, image});
  return request;
}

void PHAssetCollectionChangeRequest::deleteAssetCollections(const PHFetchResult<PHAssetCollection>& collections) {
  deleteAssetCollections(collections.objects());
}

void PHAssetCollectionChangeRequest::deleteAssetCollections(
    const std::vector<std::shared_ptr<PHAssetCollection>>& collections) {
  auto& changes = currentChanges("PHAssetCollectionChangeRequest deleteAssetCollections:");
  for (const auto& c : collections) changes.deleteCollections.push_back(c->localIdentifier());
}

PHAssetCollectionChangeRequest PHAssetCollectionChangeRequest::creationRequestForAssetCollectionWithTitle(
    const std::string& title) {
  auto& changes = currentChanges("PHAssetCollectionChangeRequest creationRequestForAssetCollectionWithTitle:");
  PHAssetCollectionChangeRequest request;
  request.placeholder_.localIdentifier = makeLocalIdentifier("L0/040");
  changes.createCollections.push_back({request.placeholder_.localIdentifier, title});
  return request;
}

PHAssetCollectionChangeRequest PHAssetCollectionChangeRequest::changeRequestForAssetCollection(
    const PHAssetCollection& collection) {
  currentChanges("PHAssetCollectionChangeRequest changeRequestForAssetCollection:");
  PHAssetCollectionChangeRequest request;
  request.placeholder_.localIdentifier = collection.localIdentifier();
  return request;
}

void PHAssetCollectionChangeRequest::addAssets(const std::vector<PHObjectPlaceholder>& assets) {
  auto& changes = currentChanges("PHAssetCollectionChangeRequest addAssets:");
  std::vector<std::string> ids;
  for (const auto& a : assets) ids.push_back(a.localIdentifier);
  changes.addAssets.emplace_back(placeholder_.localIdentifier, std::move(ids));
}
