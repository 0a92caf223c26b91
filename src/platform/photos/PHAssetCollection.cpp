#include "platform/photos/PHAssetCollection.h"

#include <algorithm>

#include "platform/photos/PhotoLibrarySource.h"

namespace {

bool matches(const PHAssetCollectionRecord& r, const PHPredicate& predicate) {
  if (auto t = std::get_if<PHPredicateTitleEquals>(&predicate)) return r.title == t->title;
  if (auto t = std::get_if<PHPredicateNonEmptyWithLocalizedTitle>(&predicate)) {
    return !r.assetIdentifiers.empty() && r.title == t->title;
  }
  return true;  // a media-type predicate says nothing about albums
}

PHFetchResult<PHAssetCollection> finish(std::vector<std::shared_ptr<const PHAssetCollectionRecord>> records,
                                        const PHFetchOptions* options) {
  if (options) {
    std::erase_if(records, [&](const auto& r) { return !matches(*r, options->predicate); });
    for (auto it = options->sortDescriptors.rbegin(); it != options->sortDescriptors.rend(); ++it) {
      if (it->key != "localizedTitle" && it->key != "title") continue;
      bool ascending = it->ascending;
      std::stable_sort(records.begin(), records.end(), [ascending](const auto& a, const auto& b) {
        auto ta = a->title.value_or(std::string());
        auto tb = b->title.value_or(std::string());
        return ascending ? ta < tb : tb < ta;
      });
    }
    if (options->fetchLimit > 0 && records.size() > options->fetchLimit) records.resize(options->fetchLimit);
  }
  std::vector<std::shared_ptr<PHAssetCollection>> out;
  out.reserve(records.size());
  for (auto& r : records) out.push_back(std::make_shared<PHAssetCollection>(std::move(r)));
  return PHFetchResult<PHAssetCollection>(std::move(out));
}

}  // namespace

PHFetchResult<PHAssetCollection> PHAssetCollection::fetchAssetCollectionsWithType(
    PHAssetCollectionType type, PHAssetCollectionSubtype subtype, const PHFetchOptions* options) {
  auto all = PhotoLibrarySource::current()->collections();
  std::erase_if(all, [&](const auto& r) {
    return r->type != type || (subtype != PHAssetCollectionSubtypeAny && r->subtype != subtype);
  });
  return finish(std::move(all), options);
}

PHFetchResult<PHAssetCollection> PHAssetCollection::fetchAssetCollectionsWithLocalIdentifiers(
    const std::vector<std::string>& identifiers, const PHFetchOptions* options) {
  auto all = PhotoLibrarySource::current()->collections();
  std::vector<std::shared_ptr<const PHAssetCollectionRecord>> picked;
  for (const auto& id : identifiers) {
    for (const auto& r : all) {
      if (r->localIdentifier == id) picked.push_back(r);
    }
  }
  return finish(std::move(picked), options);
}
