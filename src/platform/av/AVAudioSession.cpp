#include "platform/av/AVAudioSession.h"

AVAudioSession& AVAudioSession::sharedInstance() {
  static AVAudioSession session;
  return session;
}

bool AVAudioSession::setCategory(std::string category, std::string mode, unsigned) {
  category_ = std::move(category);
  mode_ = std::move(mode);
  return true;
}
