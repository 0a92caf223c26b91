#pragma once

#include <string>

// The application's audio session: the category it plays in.
class AVAudioSession {
 public:
  static AVAudioSession& sharedInstance();
  bool setCategory(std::string category, std::string mode, unsigned options);
  const std::string& category() const { return category_; }
  const std::string& mode() const { return mode_; }

 private:
  std::string category_ = "AVAudioSessionCategorySoloAmbient";
  std::string mode_ = "AVAudioSessionModeDefault";
};

inline constexpr const char* AVAudioSessionCategoryPlayback = "AVAudioSessionCategoryPlayback";
inline constexpr const char* AVAudioSessionModeDefault = "AVAudioSessionModeDefault";
