#pragma once

#include <functional>
#include <map>
#include <string>

#include "platform/cloud_key_value_store.h"
#include "platform/observer_list.h"
#include "platform/user_defaults.h"

namespace lunevra {

/// Keys and values in memory; `onChange` runs after each write that changed something.
class ValueMap {
 public:
  explicit ValueMap(std::function<void()> onChange) : onChange_(std::move(onChange)) {}

  [[nodiscard]] std::optional<StoredValue> find(std::string_view key) const;
  void set(std::string_view key, const StoredValue& value);
  void remove(std::string_view key);

 private:
  std::function<void()> onChange_;
  std::map<std::string, StoredValue, std::less<>> values_;
};

class SimulatedUserDefaults final : public UserDefaults {
 public:
  explicit SimulatedUserDefaults(std::function<void()> onChange) : values_(std::move(onChange)) {}

  [[nodiscard]] std::optional<StoredValue> object(std::string_view key) const override {
    return values_.find(key);
  }
  void set(std::string_view key, const StoredValue& value) override { values_.set(key, value); }
  void remove(std::string_view key) override { values_.remove(key); }

 private:
  ValueMap values_;
};

/// The standard domain and one app group's, which the computer may refuse to open.
class SimulatedUserDefaultsDomains final : public UserDefaultsDomains {
 public:
  explicit SimulatedUserDefaultsDomains(const std::function<void()>& onChange)
      : standard_(onChange), group_(onChange) {}

  [[nodiscard]] SimulatedUserDefaults& standard() override { return standard_; }
  [[nodiscard]] UserDefaults* suite(std::string_view /*name*/) override {
    return isSuiteRefused_ ? nullptr : &group_;
  }

  [[nodiscard]] SimulatedUserDefaults& group() { return group_; }
  void refuseSuite() { isSuiteRefused_ = true; }

 private:
  SimulatedUserDefaults standard_;
  SimulatedUserDefaults group_;
  bool isSuiteRefused_ = false;
};

class SimulatedCloud final : public CloudKeyValueStore {
 public:
  explicit SimulatedCloud(std::function<void()> onChange) : values_(std::move(onChange)) {}

  [[nodiscard]] std::optional<StoredValue> object(std::string_view key) const override {
    return values_.find(key);
  }
  void set(std::string_view key, const StoredValue& value) override { values_.set(key, value); }
  void synchronize() override {}  // every write is everywhere at once
  [[nodiscard]] Registration observeExternalChanges(std::function<void()> block) override {
    return externalChanges_.add(std::move(block));
  }

  /// What another machine does.
  void setFromElsewhere(std::string_view key, const StoredValue& value) {
    values_.set(key, value);
    externalChanges_.notify();
  }
  void removeFromElsewhere(std::string_view key) {
    values_.remove(key);
    externalChanges_.notify();
  }

 private:
  ValueMap values_;
  ObserverList externalChanges_;
};

}  // namespace lunevra
