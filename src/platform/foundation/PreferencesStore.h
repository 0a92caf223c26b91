#pragma once

#include <memory>

#include "platform/foundation/PlistValue.h"

// Where the standard preferences live between runs.
class PreferencesStore {
 public:
  virtual ~PreferencesStore() = default;
  // What was stored; an empty dictionary when nothing was.
  virtual PlistValue::Dictionary load() = 0;
  // Replaces what is stored with `values`, whole. False when it could not be written.
  virtual bool save(const PlistValue::Dictionary& values) = 0;
};

// Keeps the values in memory: tests and the simulated platform.
class InMemoryPreferencesStore final : public PreferencesStore {
 public:
  explicit InMemoryPreferencesStore(PlistValue::Dictionary initial = {}) : values_(std::move(initial)) {}
  PlistValue::Dictionary load() override { return values_; }
  bool save(const PlistValue::Dictionary& values) override {
    values_ = values;
    ++saves_;
    return true;
  }
  const PlistValue::Dictionary& stored() const { return values_; }
  int saveCount() const { return saves_; }

 private:
  PlistValue::Dictionary values_;
  int saves_ = 0;
};
