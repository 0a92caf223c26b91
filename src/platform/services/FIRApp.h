#pragma once

// Firebase's core: configured once at launch.
class FIRApp {
 public:
  static void configure();
  static bool isConfigured();
  static int configureCount();
  static void reset();
};
