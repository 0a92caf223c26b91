#pragma once

#include "platform/foundation/NSObject.h"

// Request options as the library publishes them: version 0 current, 1 unadjusted, 2 original;
// delivery 0 opportunistic, 1 high quality, 2 fast; resize 0 none, 1 fast, 2 exact.
class PHImageRequestOptions : public NSObject {
 public:
  int version = 0;
  int deliveryMode = 0;
  int resizeMode = 1;
  bool networkAccessAllowed = false;
  bool synchronous = false;
};

class PHVideoRequestOptions : public NSObject {
 public:
  // 0 current, 1 original.
  int version = 0;
  int deliveryMode = 0;
  bool networkAccessAllowed = false;
};

class PHLivePhotoRequestOptions : public NSObject {
 public:
  int version = 0;
  int deliveryMode = 0;
  bool networkAccessAllowed = false;
};
