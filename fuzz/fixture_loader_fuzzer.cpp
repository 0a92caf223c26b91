// Arbitrary text as a simulator fixture. The loader either refuses it with a reason or the
// program starts on it: the simulated platform is built, the launch runs, the splash hands over
// to home and every outlet is read as the protocol's `tree` reads it. A deliberate fatalError is
// a normal end; a sanitizer report, a crash or a hang is a finding.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "FatalEnd.h"
#include "ScratchDirectory.h"
#include "StdoutWatch.h"
#include "app/core/ApplicationMain.h"
#include "automation/TreeWriter.h"
#include "backends/sim/Fixture.h"
#include "backends/sim/SimPlatform.h"

namespace {

struct Setup {
  ScratchDirectory scratch;
  StdoutWatch out;
};
Setup* setup = nullptr;

void start(nimbrel::sim::Fixture fixture) {
  nimbrel::sim::SimPlatform platform(std::move(fixture));
  nimbrel::NimbrelApplicationMain();
  // Past the splash's 3 + 2 seconds, so that home reads the fixture's stores.
  platform.runLoop().advance(6);
  // As the protocol writes it: file names are bytes on Linux and need not be UTF-8.
  nimbrel::TreeWriter::tree(platform.runLoop().elapsed()).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  setup = new Setup;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  auto fixture = nimbrel::sim::Fixture::parse(std::string(reinterpret_cast<const char*>(data), size));
  if (!fixture) {
    if (fixture.error().empty()) {
      std::fprintf(stderr, "fixture_loader_fuzzer: a refusal without a reason\n");
      std::abort();
    }
    return 0;
  }
  try {
    start(std::move(fixture).value());
  } catch (const FatalEnd&) {
    // The product ended the run on purpose.
  }
  setup->scratch.empty();
  // Outside automation mode log lines may go to standard output; only kept from piling up.
  setup->out.take();
  return 0;
}
