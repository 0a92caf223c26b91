#pragma once

#include <functional>

#include "platform/foundation/RunLoop.h"

// Serial main queue and concurrent global queues over the installed RunLoop.
class DispatchQueue {
 public:
  using Block = std::function<void()>;

  static DispatchQueue& main();
  static DispatchQueue& global(QualityOfService qos = QualityOfService::default_);

  // One turn later at the earliest: never inside the caller.
  void async(Block block) const;
  // At `seconds` from now (a deadline of .now() + seconds). Never cancelled.
  void asyncAfter(double seconds, Block block) const;

  bool isMain() const { return isMain_; }
  QualityOfService qos() const { return qos_; }

 private:
  DispatchQueue(bool isMain, QualityOfService qos) : isMain_(isMain), qos_(qos) {}
  bool isMain_;
  QualityOfService qos_;
};
