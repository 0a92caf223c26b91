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

TEST_F(NSUserDefaultsTest, BoolForKeyReadsBooleansNumbersAndWords) {
  struct Row {
    const char* name;
    std::optional<PlistValue> value;
    bool expected;
  };
  const Row rows[] = {
      {"true", PlistValue(true), true},
      {"false", PlistValue(false), false},
      {"one", PlistValue(1), true},
      {"zero", PlistValue(0), false},
      {"negative", PlistValue(-3), true},
      {"half", PlistValue(0.5), true},
      {"real zero", PlistValue(0.0), false},
      {"YES", PlistValue("YES"), true},
      {"yes", PlistValue("yes"), true},
      {"true word", PlistValue("true"), true},
      {"TRUE word", PlistValue("TRUE"), true},
      {"1 word", PlistValue("1"), true},
      {"2 word", PlistValue("2"), true},
      {"-1 word", PlistValue("-1"), true},
      {"0 word", PlistValue("0"), false},
      {"NO word", PlistValue("NO"), false},
      {"false word", PlistValue("false"), false},
      {"other word", PlistValue("maybe"), false},
      {"empty word", PlistValue(""), false},
      {"data", PlistValue(Data{1}), false},
      {"array", PlistValue(PlistValue::Array{PlistValue(true)}), false},
      {"absent", std::nullopt, false},
  };
  for (const auto& row : rows) {
    defaults.setObject(row.value, "key");
    EXPECT_EQ(defaults.boolForKey("key"), row.expected) << row.name;
  }
}

TEST_F(NSUserDefaultsTest, DataForKeyGivesOnlyData) {
  Data bytes{0xCA, 0xFE};
  defaults.setObject(PlistValue(bytes), "data");
  defaults.setObject(PlistValue("CAFE"), "text");
  ASSERT_TRUE(defaults.dataForKey("data").has_value());
  EXPECT_EQ(*defaults.dataForKey("data"), bytes);
  EXPECT_EQ(defaults.dataForKey("text"), std::nullopt);
  EXPECT_EQ(defaults.dataForKey("absent"), std::nullopt);
}

TEST_F(NSUserDefaultsTest, SettingNoValueRemovesTheKey) {
  defaults.setObject(PlistValue(3), "count");
  ASSERT_EQ(defaults.valueForKey("count"), PlistValue(3));
  defaults.setObject(std::nullopt, "count");
  EXPECT_EQ(defaults.valueForKey("count"), std::nullopt);
  defaults.setValue(PlistValue("x"), "name");
  defaults.removeObjectForKey("name");
  EXPECT_EQ(defaults.objectForKey("name"), std::nullopt);
  EXPECT_TRUE(defaults.dictionaryRepresentation().empty());
}

TEST_F(NSUserDefaultsTest, RemovingAnAbsentKeyChangesNothing) {
  defaults.removeObjectForKey("never set");
  EXPECT_FALSE(defaults.hasPendingChanges());
  loop.advance(kDebounce);
  EXPECT_EQ(store->attempts, 0);
}

TEST_F(NSUserDefaultsTest, ValuesReachTheStoreOnlyAfterTheDebounce) {
  defaults.setBool(true, "isFirstTime");
  loop.advance(kDebounce - 0.001);
  EXPECT_EQ(store->attempts, 0);
  EXPECT_TRUE(defaults.hasPendingChanges());

  loop.advance(0.001);

  EXPECT_EQ(store->saves, 1);
  ASSERT_NE(store->find("isFirstTime"), nullptr);
  EXPECT_EQ(*store->find("isFirstTime"), PlistValue(true));
  EXPECT_FALSE(defaults.hasPendingChanges());
}

TEST_F(NSUserDefaultsTest, ManySetsWithinTheDebounceMakeOneWrite) {
  for (int i = 0; i < 50; ++i) {
    defaults.setObject(PlistValue(i), "counter");
    loop.advance(0.01);
  }
  loop.advance(kDebounce);
  EXPECT_EQ(store->saves, 1);
  EXPECT_EQ(*store->find("counter"), PlistValue(49));
}

TEST_F(NSUserDefaultsTest, SynchronizeWritesAtOnceAndOnlyWhenSomethingIsPending) {
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
}

TEST_F(NSUserDefaultsTest, AValueSetAfterASynchronizeWaitsForItsOwnDebounce) {
  defaults.setObject(PlistValue(1), "a");
  defaults.synchronize();
  loop.advance(kDebounce / 2);

  defaults.setObject(PlistValue(2), "b");
  loop.advance(kDebounce / 2 + 0.1);

  EXPECT_EQ(store->find("b"), nullptr) << "written before its debounce";
  loop.advance(kDebounce / 2);
  ASSERT_NE(store->find("b"), nullptr);
  EXPECT_EQ(store->saves, 2);
}

TEST_F(NSUserDefaultsTest, ARefusingStoreKeepsTheValuesPending) {
  store->refuse = true;
  defaults.setObject(PlistValue("kept"), "key");

  EXPECT_FALSE(defaults.synchronize());
  EXPECT_TRUE(defaults.hasPendingChanges());
  loop.advance(kDebounce);
  EXPECT_TRUE(defaults.hasPendingChanges());
  EXPECT_EQ(defaults.valueForKey("key"), PlistValue("kept"));

  store->refuse = false;
  EXPECT_TRUE(defaults.synchronize());
  EXPECT_FALSE(defaults.hasPendingChanges());
  EXPECT_EQ(*store->find("key"), PlistValue("kept"));
}

TEST_F(NSUserDefaultsTest, ARefusedDebouncedWriteIsRetriedByTheNextSet) {
  store->refuse = true;
  defaults.setObject(PlistValue(1), "a");
  loop.advance(kDebounce);
  ASSERT_EQ(store->attempts, 1);
  store->refuse = false;

  defaults.setObject(PlistValue(2), "b");
  loop.advance(kDebounce);

  EXPECT_EQ(store->saves, 1);
  EXPECT_NE(store->find("a"), nullptr);
  EXPECT_NE(store->find("b"), nullptr);
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
  NSUserDefaults::installStandard(std::make_shared<InMemoryPreferencesStore>());
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
