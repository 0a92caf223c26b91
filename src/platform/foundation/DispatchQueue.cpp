#include "platform/foundation/DispatchQueue.h"

DispatchQueue& DispatchQueue::main() {
  static DispatchQueue q(true, QualityOfService::userInteractive);
  return q;
}

DispatchQueue& DispatchQueue::global(QualityOfService qos) {
  static DispatchQueue queues[] = {
      {false, QualityOfService::userInteractive}, {false, QualityOfService::userInitiated},
      {false, QualityOfService::default_},        {false, QualityOfService::utility},
      {false, QualityOfService::background},
  };
  return queues[static_cast<int>(qos)];
}

void DispatchQueue::async(Block block) const {
  if (isMain_) {
    RunLoop::current().postMain(std::move(block), 0);
  } else {
    RunLoop::current().postBackground(std::move(block), qos_);
  }
}

void DispatchQueue::asyncAfter(double seconds, Block block) const {
  if (isMain_) {
    RunLoop::current().postMain(std::move(block), seconds);
    return;
  }
  // A delayed background block waits on the main timer list, then joins its queue.
  auto qos = qos_;
  RunLoop::current().postMain(
      [qos, block = std::move(block)]() mutable {
        RunLoop::current().postBackground(std::move(block), qos);
      },
      seconds);
}
