#include "platform/foundation/NSUserDefaults.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

#include "platform/foundation/DispatchQueue.h"

namespace {
std::mutex gStandardMutex;
std::unique_ptr<NSUserDefaults>& standardSlot() {
  static std::unique_ptr<NSUserDefaults> s;
  return s;
}

bool stringMeansTrue(const std::string& s) {
  std::string lower(s);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (lower == "yes" || lower == "true") return true;
  return std::strtol(s.c_str(), nullptr, 10) != 0;
}
}  // namespace

NSUserDefaults::NSUserDefaults(std::shared_ptr<PreferencesStore> store, double debounceSeconds)
    : store_(std::move(store)), debounce_(debounceSeconds) {
  values_ = PlistValue(store_->load());
}

NSUserDefaults& NSUserDefaults::standardUserDefaults() {
  std::lock_guard lock(gStandardMutex);
  auto& slot = standardSlot();
  if (!slot) slot = std::make_unique<NSUserDefaults>(std::make_shared<InMemoryPreferencesStore>());
  return *slot;
}

void NSUserDefaults::installStandard(std::shared_ptr<PreferencesStore> store, double debounceSeconds) {
  std::lock_guard lock(gStandardMutex);
  standardSlot() = std::make_unique<NSUserDefaults>(std::move(store), debounceSeconds);
}

std::optional<PlistValue> NSUserDefaults::valueForKey(std::string_view key) const {
  std::lock_guard lock(mutex_);
  if (const PlistValue* v = values_.find(key)) return *v;
  return std::nullopt;
}

bool NSUserDefaults::boolForKey(std::string_view key) const {
  auto v = valueForKey(key);
  if (!v) return false;
  switch (v->type()) {
    case PlistValue::Type::boolean: return v->boolean();
    case PlistValue::Type::integer: return v->integer() != 0;
    case PlistValue::Type::real: return v->real() != 0;
    case PlistValue::Type::string: return stringMeansTrue(v->string());
    default: return false;
  }
}

std::optional<Data> NSUserDefaults::dataForKey(std::string_view key) const {
  auto v = valueForKey(key);
  if (!v || !v->isData()) return std::nullopt;
  return v->data();
}

void NSUserDefaults::setObject(std::optional<PlistValue> value, std::string_view key) {
  {
    std::lock_guard lock(mutex_);
    if (value) {
      values_.set(std::string(key), std::move(*value));
    } else if (!values_.erase(key)) {
      return;
    }
    dirty_ = true;
  }
  scheduleDebouncedWrite();
}

void NSUserDefaults::scheduleDebouncedWrite() {
  std::uint64_t generation;
  {
    std::lock_guard lock(mutex_);
    if (writeScheduled_) return;
    writeScheduled_ = true;
    generation = writeGeneration_;
  }
  if (!RunLoop::hasCurrent()) return;  // written at the next synchronize or flush
  std::weak_ptr<int> alive = alive_;
  DispatchQueue::main().asyncAfter(debounce_, [this, alive, generation] {
    if (alive.expired()) return;
    {
      // A synchronize since then wrote these values; later ones wait for their own debounce.
      std::lock_guard lock(mutex_);
      if (generation != writeGeneration_) return;
    }
    synchronize();
  });
}

bool NSUserDefaults::synchronize() {
  std::lock_guard lock(mutex_);
  writeScheduled_ = false;
  ++writeGeneration_;
  if (!dirty_) return true;
  if (!store_->save(values_.dictionary())) return false;
  dirty_ = false;
  return true;
}

PlistValue::Dictionary NSUserDefaults::dictionaryRepresentation() const {
  std::lock_guard lock(mutex_);
  return values_.dictionary();
}

bool NSUserDefaults::hasPendingChanges() const {
  std::lock_guard lock(mutex_);
  return dirty_;
}
