// Request lines into a live headless session on the simulated platform, as nimbrel-headless
// reads them. Each input starts a fresh session on the demo fixture. A deliberate fatalError is
// the normal end of an input; a sanitizer report, a crash, a hang, an answer that is not one JSON
// object with "ok", or anything else on standard output is a finding.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "FatalEnd.h"
#include "HeadlessHost.h"
#include "ScratchDirectory.h"
#include "StdoutWatch.h"
#include "app/core/ApplicationMain.h"
#include "automation/AutomationSession.h"
#include "backends/sim/Fixture.h"
#include "backends/sim/SimPlatform.h"

namespace {

using json = nlohmann::json;

// More lines than this per input only slow the search down.
constexpr int kMaxLines = 40;

struct Setup {
  nimbrel::sim::Fixture fixture;
  ScratchDirectory scratch;
  StdoutWatch out;
};
Setup* setup = nullptr;

[[noreturn]] void broken(const std::string& what, std::string_view line) {
  std::fprintf(stderr, "protocol_fuzzer: %s\n  request: %.*s\n", what.c_str(), static_cast<int>(line.size()),
               line.data());
  std::abort();
}

void checkAnswer(const std::string& answer, std::string_view request) {
  if (answer.find('\n') != std::string::npos) broken("the answer spans lines: " + answer, request);
  json parsed = json::parse(answer, nullptr, false);
  if (parsed.is_discarded() || !parsed.is_object()) broken("the answer is no JSON object: " + answer, request);
  auto ok = parsed.find("ok");
  if (ok == parsed.end() || !ok->is_boolean()) broken("the answer has no boolean \"ok\": " + answer, request);
  if (!ok->get<bool>()) {
    auto error = parsed.find("error");
    if (error == parsed.end() || !error->is_string()) broken("a refusal without an \"error\": " + answer, request);
  }
}

void serve(std::string_view input) {
  nimbrel::sim::SimPlatform platform(setup->fixture);
  nimbrel::HeadlessHost host(platform);
  nimbrel::AutomationSession session(host);
  nimbrel::NimbrelApplicationMain();
  host.settle();
  int lines = 0;
  while (!input.empty() && lines < kMaxLines) {
    size_t end = input.find('\n');
    std::string line(input.substr(0, end));
    input.remove_prefix(end == std::string_view::npos ? input.size() : end + 1);
    // As the headless runner: blank lines are no requests.
    if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
    ++lines;
    checkAnswer(session.handleLine(line), line);
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  std::ifstream in(NIMBREL_FUZZ_FIXTURE);
  std::stringstream text;
  text << in.rdbuf();
  auto fixture = nimbrel::sim::Fixture::parse(text.str());
  if (!fixture) {
    std::fprintf(stderr, "protocol_fuzzer: %s\n", fixture.error().c_str());
    std::abort();
  }
  setup = new Setup{std::move(fixture).value(), {}, {}};
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  std::string_view input(reinterpret_cast<const char*>(data), size);
  try {
    serve(input);
  } catch (const FatalEnd&) {
    // The product ended the run on purpose, as it would for a user.
  }
  setup->scratch.empty();
  std::string leaked = setup->out.take();
  if (!leaked.empty()) broken("written to standard output besides the answers: " + leaked.substr(0, 500), input);
  return 0;
}
