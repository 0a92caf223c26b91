#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/Data.h"
#include "platform/foundation/PlistValue.h"
#include "platform/foundation/PreferencesStore.h"

// The preferences store of the platform. Values set without `synchronize` are written at a short
// debounce (and by `flush` at exit); `synchronize` writes at once. Safe from any thread.
class NSUserDefaults {
 public:
  static constexpr double kDefaultDebounceSeconds = 1.0;

  explicit NSUserDefaults(std::shared_ptr<PreferencesStore> store,
                          double debounceSeconds = kDefaultDebounceSeconds);

  // The process's store. Until a backend installs one, an empty in-memory store.
  static NSUserDefaults& standardUserDefaults();
  static void installStandard(std::shared_ptr<PreferencesStore> store,
                              double debounceSeconds = kDefaultDebounceSeconds);

  std::optional<PlistValue> valueForKey(std::string_view key) const;
  std::optional<PlistValue> objectForKey(std::string_view key) const { return valueForKey(key); }
  // True for a true boolean, a non-zero number, or a string saying "YES", "true" or a non-zero
  // number; false for anything else, absence included.
  bool boolForKey(std::string_view key) const;
  // Only a data value; anything else gives no value.
  std::optional<Data> dataForKey(std::string_view key) const;

  // No value removes the key.
  void setObject(std::optional<PlistValue> value, std::string_view key);
  void setValue(std::optional<PlistValue> value, std::string_view key) { setObject(std::move(value), key); }
  void setBool(bool value, std::string_view key) { setObject(PlistValue(value), key); }
  void removeObjectForKey(std::string_view key) { setObject(std::nullopt, key); }

  // Writes pending changes now; false when the store refused them.
  bool synchronize();
  // Writes pending changes if any (at exit).
  void flush() { synchronize(); }

  PlistValue::Dictionary dictionaryRepresentation() const;
  bool hasPendingChanges() const;

 private:
  void scheduleDebouncedWrite();

  mutable std::mutex mutex_;
  std::shared_ptr<PreferencesStore> store_;
  double debounce_;
  PlistValue values_{PlistValue::Dictionary{}};
  bool dirty_ = false;
  bool writeScheduled_ = false;
  std::uint64_t writeGeneration_ = 0;  // bumped by every write, so a stale debounce stands down
  std::shared_ptr<int> alive_ = std::make_shared<int>(0);
};
