#include "platform/foundation/NSUserDefaults.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/foundation/ManualRunLoop.h"

namespace {

// A store that can refuse to write, and counts what it was asked.
class FlakyStore : public PreferencesStore {
 public:
  bool refuse = false;
  int attempts = 0;
  int saves = 0;
  PlistValue::Dictionary stored;

  PlistValue::Dictionary load() override { return stored; }
  bool save(const PlistValue::Dictionary& values) override {
    ++attempts;
    if (refuse) return false;
    stored = values;
    ++saves;
    return true;
  }
  const PlistValue* find(std::string_view key) const {
    for (const auto& [k, v] : stored) {
      if (k == key) return &v;
    }
    return nullptr;
  }
};

class NSUserDefaultsTest : public ::testing::Test {
 protected:
  static constexpr double kDebounce = 1.0;
  ManualRunLoop loop;
  std::shared_ptr<FlakyStore> store = std::make_shared<FlakyStore>();
  NSUserDefaults defaults{store, kDebounce};
};

TEST_F(NSUserDefaultsTest, BoolsReadNumbersAndWordsDataOnlyDataAndNoValueRemovesTheKey) {
  const std::pair<std::optional<PlistValue>, bool> rows[] = {
      {PlistValue(true), true}, {PlistValue(false), false}, {PlistValue(1), true}, {PlistValue(0), false},
      {PlistValue(-3), true}, {PlistValue(0.5), true}, {PlistValue(0.0), false}, {PlistValue("YES"), true},
      {PlistValue("yes"), true}, {PlistValue("true"), true}, {PlistValue("TRUE"), true}, {PlistValue("1"), true},
      {PlistValue("2"), true}, {PlistValue("-1"), true}, {PlistValue("0"), false}, {PlistValue("NO"), false},
      {PlistValue("false"), false}, {PlistValue("maybe"), false}, {PlistValue(""), false},
      {PlistValue(Data{1}), false}, {PlistValue(PlistValue::Array{PlistValue(true)}), false}, {std::nullopt, false},
  };
  for (size_t i = 0; i < std::size(rows); ++i) {
    defaults.setObject(rows[i].first, "key");
    EXPECT_EQ(defaults.boolForKey("key"), rows[i].second) << "row " << i;
  }

  Data bytes{0xCA, 0xFE};
  defaults.setObject(PlistValue(bytes), "data");
  defaults.setObject(PlistValue("CAFE"), "text");
  EXPECT_EQ(defaults.dataForKey("data"), std::optional<Data>(bytes));
  EXPECT_EQ(defaults.dataForKey("text"), std::nullopt);
  EXPECT_EQ(defaults.dataForKey("absent"), std::nullopt);
  defaults.setObject(std::nullopt, "data");
  EXPECT_EQ(defaults.valueForKey("data"), std::nullopt);
  defaults.removeObjectForKey("text");
  EXPECT_TRUE(defaults.dictionaryRepresentation().empty());
}

TEST_F(NSUserDefaultsTest, ValuesReachTheStoreAfterTheDebounceAndManySetsMakeOneWrite) {
  defaults.setBool(true, "isFirstTime");
  loop.advance(kDebounce - 0.001);
  EXPECT_EQ(store->attempts, 0);
  EXPECT_TRUE(defaults.hasPendingChanges());
  loop.advance(0.001);
  EXPECT_EQ(store->saves, 1);
  EXPECT_EQ(*store->find("isFirstTime"), PlistValue(true));
  EXPECT_FALSE(defaults.hasPendingChanges());

  for (int i = 0; i < 50; ++i) {
    defaults.setObject(PlistValue(i), "counter");
    loop.advance(0.01);
  }
  loop.advance(kDebounce);
  EXPECT_EQ(store->saves, 2);
  EXPECT_EQ(*store->find("counter"), PlistValue(49));
}

TEST_F(NSUserDefaultsTest, SynchronizeWritesAtOnceAndOnlyWhenSomethingIsPending) {
  defaults.removeObjectForKey("never set");
  EXPECT_FALSE(defaults.hasPendingChanges()) << "removing an absent key changes nothing";
  EXPECT_TRUE(defaults.synchronize());
  EXPECT_EQ(store->attempts, 0);

  defaults.setObject(PlistValue("list"), "mode");
  EXPECT_TRUE(defaults.synchronize());
  EXPECT_EQ(store->saves, 1);
  EXPECT_EQ(*store->find("mode"), PlistValue("list"));

  EXPECT_TRUE(defaults.synchronize());
  defaults.flush();
  loop.advance(kDebounce * 2);
  EXPECT_EQ(store->attempts, 1);

  // A value set after a synchronize waits for its own debounce, not the one the synchronize ended.
  defaults.setObject(PlistValue(1), "a");
  defaults.synchronize();
  loop.advance(kDebounce / 2);
  defaults.setObject(PlistValue(2), "b");
  loop.advance(kDebounce / 2 + 0.1);
  EXPECT_EQ(store->find("b"), nullptr) << "written before its debounce";
  loop.advance(kDebounce / 2);
  EXPECT_NE(store->find("b"), nullptr);
  EXPECT_EQ(store->saves, 3);
}

TEST_F(NSUserDefaultsTest, ARefusingStoreKeepsTheValuesPendingForTheNextWrite) {
  store->refuse = true;
  defaults.setObject(PlistValue("kept"), "key");
  EXPECT_FALSE(defaults.synchronize());
  loop.advance(kDebounce);
  EXPECT_TRUE(defaults.hasPendingChanges());
  EXPECT_EQ(defaults.valueForKey("key"), PlistValue("kept"));

  store->refuse = false;
  defaults.setObject(PlistValue(2), "b");
  loop.advance(kDebounce);
  EXPECT_EQ(store->saves, 1);
  EXPECT_EQ(*store->find("key"), PlistValue("kept"));
  EXPECT_NE(store->find("b"), nullptr);
  EXPECT_FALSE(defaults.hasPendingChanges());
}

TEST_F(NSUserDefaultsTest, WhatTheStoreHeldIsReadAtTheStart) {
  auto filled = std::make_shared<FlakyStore>();
  filled->stored = {{"kIsListView", PlistValue(true)}, {"name", PlistValue("x")}};
  NSUserDefaults reopened(filled);
  EXPECT_TRUE(reopened.boolForKey("kIsListView"));
  EXPECT_EQ(reopened.valueForKey("name"), PlistValue("x"));
  EXPECT_FALSE(reopened.hasPendingChanges());
}

TEST_F(NSUserDefaultsTest, ReplacingTheStandardDefaultsLeavesNoWriteBehind) {
  auto first = std::make_shared<FlakyStore>();
  auto second = std::make_shared<FlakyStore>();
  NSUserDefaults::installStandard(first, kDebounce);
  NSUserDefaults::standardUserDefaults().setBool(true, "a");

  NSUserDefaults::installStandard(second, kDebounce);
  loop.advance(kDebounce);

  EXPECT_EQ(second->attempts, 0);
  EXPECT_FALSE(NSUserDefaults::standardUserDefaults().boolForKey("a"));
}

TEST_F(NSUserDefaultsTest, SetsFromManyThreadsAllLand) {
  constexpr int kThreads = 4, kKeysEach = 50;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([this, t] {
      for (int k = 0; k < kKeysEach; ++k) {
        std::string key = "t" + std::to_string(t) + "k" + std::to_string(k);
        defaults.setObject(PlistValue(k), key);
        EXPECT_EQ(defaults.valueForKey(key), PlistValue(k));
      }
    });
  }
  for (auto& th : threads) th.join();
  loop.advance(kDebounce);
  EXPECT_EQ(store->saves, 1);
  EXPECT_EQ(store->stored.size(), static_cast<size_t>(kThreads * kKeysEach));
}

}  // namespace
