#pragma once

#include <string>

#include "backends/desktop/index/DesktopLocations.h"

// The command line of nimbrel-library, shared with the helper that runs its media commands.
struct LibraryArguments {
  std::string command;
  nimbrel::desktop::DesktopLocations::Overrides overrides;
  bool full = false;
  int rest = 2;  // where the command's own words start (permissions)

  // False when the words are none the program takes.
  static bool parse(int argc, char** argv, LibraryArguments& out);
  // Prints the usage on standard output for 0, on standard error otherwise; returns `status`.
  static int usage(int status);
};
