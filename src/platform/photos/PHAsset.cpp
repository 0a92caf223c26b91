#include "platform/photos/PHAsset.h"

#include <algorithm>
#include <atomic>

#include "platform/foundation/DispatchQueue.h"
#include "platform/photos/PHAssetCollection.h"
#include "platform/photos/PHFetchOptions.h"
#include "platform/photos/PhotoLibrarySource.h"

namespace {

std::vector<std::shared_ptr<PHAsset>> wrap(std::vector<std::shared_ptr<const PHAssetRecord>> records) {
  std::vector<std::shared_ptr<PHAsset>> out;
  out.reserve(records.size());
  for (auto& r : records) out.push_back(std::make_shared<PHAsset>(std::move(r)));
  return out;
}

// The value of `id` in a query such as "id=ABC&extJPG".
std::string idFromQuery(const std::string& query) {
  size_t start = 0;
  while (start <= query.size()) {
    size_t end = query.find('&', start);
    if (end == std::string::npos) end = query.size();
    std::string_view item(query.data() + start, end - start);
    if (item.rfind("id=", 0) == 0) return std::string(item.substr(3));
    start = end + 1;
  }
  return {};
}


}  // namespace

std::optional<PlistValue> PHAsset::valueForKey(std::string_view key) const {
  if (!record_) return std::nullopt;
  if (key == "filename") return PlistValue(record_->filename);
  return std::nullopt;
}

std::vector<std::shared_ptr<PHAsset>> applyFetchOptions(std::vector<std::shared_ptr<PHAsset>> assets,
                                                        const PHFetchOptions* options) {
  if (!options) return assets;
  if (auto m = std::get_if<PHPredicateMediaTypeIn>(&options->predicate)) {
    std::erase_if(assets, [&](const auto& a) {
      int type = static_cast<int>(a->mediaType());
      return std::find(m->mediaTypes.begin(), m->mediaTypes.end(), type) == m->mediaTypes.end();
    });
  }
  // The last descriptor sorts first so that the first one decides, as with several descriptors.
  for (auto it = options->sortDescriptors.rbegin(); it != options->sortDescriptors.rend(); ++it) {
    if (it->key != "creationDate") continue;
    bool ascending = it->ascending;
    // An asset without a date counts as the earliest.
    std::stable_sort(assets.begin(), assets.end(), [ascending](const auto& a, const auto& b) {
      auto da = a->creationDate();
      auto db = b->creationDate();
      double va = da ? da->timeIntervalSinceReferenceDate : -1e300;
      double vb = db ? db->timeIntervalSinceReferenceDate : -1e300;
      return ascending ? va < vb : vb < va;
    });
  }
  if (options->fetchLimit > 0 && assets.size() > options->fetchLimit) assets.resize(options->fetchLimit);
  return assets;
}

PHFetchResult<PHAsset> PHAsset::fetchAssetsInAssetCollection(const PHAssetCollection& collection,
                                                             const PHFetchOptions* options) {
  std::vector<std::shared_ptr<const PHAssetRecord>> records;
  if (const auto& album = collection.record()) {
    auto source = PhotoLibrarySource::current();
    // The album's current contents: an album record may predate a deletion.
    std::shared_ptr<const PHAssetCollectionRecord> current;
    for (const auto& c : source->collections()) {
      if (c->localIdentifier == album->localIdentifier) current = c;
    }
    if (current) {
      records.reserve(current->assetIdentifiers.size());
      for (const auto& id : current->assetIdentifiers) {
        if (auto r = source->asset(id)) records.push_back(std::move(r));
      }
    }
  }
  return PHFetchResult<PHAsset>(applyFetchOptions(wrap(std::move(records)), options));
}

PHFetchResult<PHAsset> PHAsset::fetchAssetsWithALAssetURLs(const std::vector<URL>& urls,
                                                           const PHFetchOptions* options) {
  auto source = PhotoLibrarySource::current();
  std::vector<std::shared_ptr<const PHAssetRecord>> picked;
  for (const auto& url : urls) {
    std::string id = idFromQuery(url.query().value_or(std::string()));
    if (id.empty()) continue;
    if (auto r = source->assetWithIdentifierHead(id)) picked.push_back(std::move(r));
  }
  return PHFetchResult<PHAsset>(applyFetchOptions(wrap(std::move(picked)), options));
}

PHFetchResult<PHAsset> PHAsset::fetchAssetsWithLocalIdentifiers(const std::vector<std::string>& ids,
                                                                const PHFetchOptions* options) {
  auto source = PhotoLibrarySource::current();
  std::vector<std::shared_ptr<const PHAssetRecord>> picked;
  for (const auto& id : ids) {
    if (auto r = source->asset(id)) picked.push_back(std::move(r));
  }
  return PHFetchResult<PHAsset>(applyFetchOptions(wrap(std::move(picked)), options));
}

PHFetchResult<PHAsset> PHAsset::fetchAssetsWithOptions(const PHFetchOptions* options) {
  return PHFetchResult<PHAsset>(applyFetchOptions(wrap(PhotoLibrarySource::current()->assets()), options));
}

PHFetchResult<PHAsset> PHAsset::fetchAssetsWithMediaType(PHAssetMediaType type, const PHFetchOptions* options) {
  auto all = wrap(PhotoLibrarySource::current()->assets());
  std::erase_if(all, [type](const auto& a) { return a->mediaType() != type; });
  return PHFetchResult<PHAsset>(applyFetchOptions(std::move(all), options));
}

PHImageRequestID PHAsset::requestContentEditingInputWithOptions(const PHContentEditingInputRequestOptions&,
                                                                EditingInputHandler handler) const {
  static std::atomic<PHImageRequestID> next{1};
  PHImageRequestID id = next++;
  auto record = record_;
  DispatchQueue::main().async([record, handler = std::move(handler)] {
    if (!record) {
      handler(nullptr);
      return;
    }
    auto path = PhotoLibrarySource::current()->fullSizeImagePath(*record);
    if (!path) {
      handler(nullptr);
      return;
    }
    handler(std::make_shared<PHContentEditingInput>(URL::fileURLWithPath(*path, false)));
  });
  return id;
}
