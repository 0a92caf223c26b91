#include "library/LibraryArguments.h"

#include <cstdio>
#include <cstring>
#include <filesystem>

namespace fs = std::filesystem;

bool LibraryArguments::parse(int argc, char** argv, LibraryArguments& out) {
  if (argc < 2) return false;
  out.command = argv[1];
  if (out.command == "permissions") return true;
  for (int i = 2; i < argc; ++i) {
    auto value = [&](std::string& field) {
      if (i + 1 >= argc) return false;
      field = fs::absolute(argv[++i]).lexically_normal().string();
      while (field.size() > 1 && field.back() == '/') field.pop_back();
      return true;
    };
    if (out.command == "scan" && std::strcmp(argv[i], "--full") == 0) {
      out.full = true;
      continue;
    }
    bool ok = std::strcmp(argv[i], "--pictures") == 0 ? value(out.overrides.pictures)
              : std::strcmp(argv[i], "--videos") == 0 ? value(out.overrides.videos)
              : std::strcmp(argv[i], "--music") == 0  ? value(out.overrides.music)
                                                      : false;
    if (!ok) return false;
  }
  return true;
}

int LibraryArguments::usage(int status) {
  std::fprintf(status ? stderr : stdout,
               "usage: nimbrel-library scan [--full] [--pictures DIR] [--videos DIR] [--music DIR]\n"
               "       nimbrel-library thumbnails [--pictures DIR] [--videos DIR]\n"
               "       nimbrel-library status\n"
               "       nimbrel-library permissions [reset|allow|deny photos|music]\n"
               "       nimbrel-library --help | --version\n");
  return status;
}
