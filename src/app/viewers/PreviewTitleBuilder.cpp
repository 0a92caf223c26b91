#include "app/viewers/PreviewTitleBuilder.h"

#include "platform/corelocation/CLGeocoder.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/NSDateFormatter.h"

namespace nimbrel {

namespace {

std::string formatted(Date date, NSDateFormatterStyle dateStyle, NSDateFormatterStyle timeStyle) {
  NSDateFormatter formatter;
  formatter.setDateStyle(dateStyle);
  formatter.setTimeStyle(timeStyle);
  return formatter.stringFromDate(date);
}

NSAttributedString::Run run(std::string text, double size) {
  return {std::move(text), UIFont::systemFontOfSize(size), UIColor::blackColor()};
}

}  // namespace

NSAttributedString PreviewTitleBuilder::dateTitle(Date date) {
  NSAttributedString title;
  title.runs.push_back(run(formatted(date, NSDateFormatterStyle::long_, NSDateFormatterStyle::none), 16));
  title.runs.push_back(run("\n" + formatted(date, NSDateFormatterStyle::none, NSDateFormatterStyle::short_), 12));
  return title;
}

void PreviewTitleBuilder::build(const std::shared_ptr<PHAsset>& asset,
                                std::function<void(NSAttributedString)> completion) {
  auto created = asset->creationDate();
  auto fallback = [created, completion] {
    if (created) completion(dateTitle(*created));
  };
  auto location = asset->location();
  if (!location) {
    // Asynchronous like the geocoder's answer, so that callers see one order in every case.
    DispatchQueue::main().async(fallback);
    return;
  }
  auto geocoder = std::make_shared<CLGeocoder>();
  geocoder->reverseGeocodeLocation(*location, [geocoder, created, completion, fallback](
                                                  std::vector<CLPlacemark> places, std::optional<NSError> error) {
    if (!error && !places.empty() && places.front().locality) {
      NSAttributedString title;
      title.runs.push_back(run(*places.front().locality, 16));
      if (created) {
        title.runs.push_back(
            run("\n" + formatted(*created, NSDateFormatterStyle::long_, NSDateFormatterStyle::short_), 12));
      }
      completion(std::move(title));
      return;
    }
    fallback();
  });
}

}  // namespace nimbrel
