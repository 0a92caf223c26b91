#pragma once

namespace nimbrel {

class Reachability {
 public:
  // Whether the network can be used without first making a connection. No answer from the
  // platform counts as no connection.
  static bool isConnected();
  // An alert on the key window's root screen; a root that is missing shows nothing, a key window
  // that is missing ends the process.
  static void showNoConnectionAlert();
};

}  // namespace nimbrel
