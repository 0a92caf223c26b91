// nimbrel-headless: the automation protocol over the simulated platform, on virtual time; with
// --desktop, over the user's own folders (the desktop platform) on the same kind of loop.
#include <cstdio>
#include <cstring>
#include <iostream>
#include <string>

#include "HeadlessHost.h"
#include "app/core/AppData.h"
#include "app/core/ApplicationMain.h"
#include "app/core/BasicMethod.h"
#include "automation/AutomationSession.h"
#include "backends/sim/Fixture.h"
#include "backends/desktop/DesktopPhotoLibrary.h"
#include "backends/desktop/DesktopPlatform.h"
#include "backends/sim/SimPlatform.h"
#include "platform/foundation/NSUserDefaults.h"

namespace {

constexpr const char* kUsage = "usage: nimbrel-headless [--fixture FILE.json | --desktop]\n";

int usage() {
  std::fputs(kUsage, stderr);
  return 2;
}

// The program's own reading of its lists decides what the desktop sets aside.
nimbrel::desktop::StoredListCleaner::Rules storedListRules() {
  nimbrel::desktop::StoredListCleaner::Rules rules;
  rules.keys = {nimbrel::kRecentFilesKey, nimbrel::kFavFilesKey};
  rules.decodeError = [](const Data& bytes) -> std::optional<std::string> {
    auto decoded = nimbrel::decodeFiles(bytes);
    if (auto* error = std::get_if<nimbrel::DecodingError>(&decoded)) return error->debugDescription;
    return std::nullopt;
  };
  rules.forget = [](const std::vector<std::string>& addresses) {
    std::vector<URL> urls;
    for (const auto& a : addresses) {
      if (auto url = URL::withString(a)) urls.push_back(*url);
    }
    auto data = nimbrel::AppData::shared();
    data->recentFiles = nimbrel::filesExcluding(data->recentFiles, urls);
    data->FavouriteFiles = nimbrel::filesExcluding(data->FavouriteFiles, urls);
  };
  return rules;
}

int help() {
  std::fputs(kUsage, stdout);
  std::fputs("\nThe automation protocol on standard input and output, one JSON request and one answer a line,\n"
             "over the simulated platform on virtual time.\n\n"
             "  --fixture FILE.json  the simulated platform's start (an empty fixture without it)\n"
             "  --desktop            the desktop platform over your own folders instead\n"
             "  --help, -h           show this text\n"
             "  --version            show the version\n\n"
             "See nimbrel-headless(1).\n",
             stdout);
  return 0;
}

}  // namespace

int serve(nimbrel::AutomationSession& session) {
  std::ios::sync_with_stdio(false);
  std::string line;
  while (std::getline(std::cin, line)) {
    if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
    std::string response = session.handleLine(line);
    std::fwrite(response.data(), 1, response.size(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
  }
  NSUserDefaults::standardUserDefaults().flush();
  return 0;
}

int runDesktop() {
  nimbrel::desktop::DesktopPlatform::Options options;
  options.runLoop = nimbrel::desktop::DesktopPlatform::RunLoopChoice::own;
  options.storedLists = storedListRules();
  nimbrel::desktop::DesktopPlatform platform(options);
  // The first scan's results, before the first screen asks for them.
  platform.photoLibrary().waitUntilIdle(60);
  nimbrel::HeadlessHost host(platform.runLoop(), platform.locations().preferences);
  nimbrel::AutomationSession session(host);
  host.settle();
  nimbrel::NimbrelApplicationMain();
  host.settle();
  return serve(session);
}

int main(int argc, char** argv) {
  std::string fixturePath;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--desktop") == 0) {
      return runDesktop();
    } else if (std::strcmp(argv[i], "--fixture") == 0 && i + 1 < argc) {
      fixturePath = argv[++i];
    } else if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
      return help();
    } else if (std::strcmp(argv[i], "--version") == 0) {
      std::printf("nimbrel-headless %s\n", NIMBREL_VERSION);
      return 0;
    } else {
      return usage();
    }
  }
  auto fixture = fixturePath.empty() ? nimbrel::sim::Fixture::parse("{}")
                                     : nimbrel::sim::Fixture::load(fixturePath);
  if (!fixture) {
    std::fprintf(stderr, "nimbrel-headless: %s\n", fixture.error().c_str());
    return 2;
  }
  nimbrel::sim::SimPlatform platform(std::move(fixture).value());
  nimbrel::HeadlessHost host(platform);
  nimbrel::AutomationSession session(host);
  nimbrel::NimbrelApplicationMain();
  host.settle();
  return serve(session);
}
