// nimbrel-plutil: looks at and converts property lists, in the manner of Apple's plutil.
//
//   nimbrel-plutil -convert json|binary1 [-o OUT] FILE
//   nimbrel-plutil -p FILE
//   nimbrel-plutil -lists FILE            the recent and favourite lists in it, record by record
//   nimbrel-plutil -mend [-o OUT] FILE    those lists cut down to the records the program reads
//
// "-" is standard input or output. Without -o a file is converted in place; standard input
// is converted to standard output.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/BinaryPropertyList.h"
#include "platform/foundation/Data.h"
#include "platform/foundation/Result.h"
#include "plutil/ListMender.h"
#include "plutil/PlistJson.h"
#include "plutil/PlistPrinter.h"

namespace {

constexpr const char* kUsage =
    "usage: nimbrel-plutil -convert json|binary1 [-o OUT] FILE | -p FILE | -lists FILE | -mend [-o OUT] FILE";

int fail(const std::string& message) {
  std::fprintf(stderr, "nimbrel-plutil: %s\n", message.c_str());
  return 1;
}

std::string systemError(const std::string& what, const std::string& path) {
  return path + ": cannot " + what + ": " + std::strerror(errno);
}

Result<Data> readAll(const std::string& path) {
  int fd = path == "-" ? STDIN_FILENO : ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0)
    return Result<Data>::failure(systemError("open", path));
  Data bytes;
  std::uint8_t buf[65536];
  for (;;) {
    ssize_t n = ::read(fd, buf, sizeof buf);
    if (n == 0)
      break;
    if (n < 0) {
      if (errno == EINTR)
        continue;
      auto error = systemError("read", path);
      if (fd != STDIN_FILENO)
        ::close(fd);
      return Result<Data>::failure(error);
    }
    bytes.insert(bytes.end(), buf, buf + n);
  }
  if (fd != STDIN_FILENO)
    ::close(fd);
  return bytes;
}

bool writeFully(int fd, const std::string& bytes) {
  size_t done = 0;
  while (done < bytes.size()) {
    ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
    if (n < 0) {
      if (errno == EINTR)
        continue;
      return false;
    }
    done += static_cast<size_t>(n);
  }
  return true;
}

// Replaces `path` only once the new content is complete, so that a failed conversion
// leaves a preferences file as it was. An existing file keeps its permissions.
std::optional<std::string> writeOut(const std::string& path, const std::string& bytes) {
  if (path == "-") {
    if (!writeFully(STDOUT_FILENO, bytes))
      return systemError("write", "standard output");
    return std::nullopt;
  }
  std::string temp = path + ".nimbrel-plutil-XXXXXX";
  int fd = ::mkstemp(temp.data());
  if (fd < 0)
    return systemError("create a file beside", path);
  struct stat st {};
  mode_t mode = ::stat(path.c_str(), &st) == 0 ? (st.st_mode & 07777) : 0644;
  bool ok = ::fchmod(fd, mode) == 0 && writeFully(fd, bytes);
  ok = ::close(fd) == 0 && ok;
  if (!ok || ::rename(temp.c_str(), path.c_str()) != 0) {
    auto error = systemError("write", path);
    ::unlink(temp.c_str());
    return error;
  }
  return std::nullopt;
}

Result<PlistValue> parse(const Data& bytes) {
  std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  if (text.starts_with("bplist"))
    return BinaryPropertyList::read(bytes);
  auto start = text.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
  if (start != std::string_view::npos && text[start] == '<') {
    return Result<PlistValue>::failure("XML property lists are not supported");
  }
  return PlistJson::read(text);
}

struct Options {
  enum class Mode { none, convert, print, lists, mend } mode = Mode::none;
  std::string format;
  std::optional<std::string> output;
  std::optional<std::string> input;
};

std::optional<std::string> parseArguments(int argc, char** argv, Options& o) {
  for (int i = 1; i < argc; ++i) {
    std::string_view arg = argv[i];
    auto value = [&]() -> std::optional<std::string> {
      if (i + 1 >= argc)
        return std::nullopt;
      return std::string(argv[++i]);
    };
    if (arg == "-convert") {
      if (o.mode != Options::Mode::none)
        return "-convert, -p, -lists and -mend cannot be combined";
      auto f = value();
      if (!f)
        return "-convert needs a format (json or binary1)";
      if (*f != "json" && *f != "binary1")
        return "unknown format \"" + *f + "\" (json or binary1)";
      o.mode = Options::Mode::convert;
      o.format = *f;
    } else if (arg == "-p" || arg == "-lists" || arg == "-mend") {
      if (o.mode != Options::Mode::none)
        return "-convert, -p, -lists and -mend cannot be combined";
      o.mode = arg == "-p" ? Options::Mode::print : arg == "-lists" ? Options::Mode::lists : Options::Mode::mend;
    } else if (arg == "-o") {
      auto out = value();
      if (!out)
        return "-o needs a file name";
      o.output = *out;
    } else if (arg.size() > 1 && arg[0] == '-') {
      return "unknown option " + std::string(arg);
    } else {
      if (o.input)
        return "only one file at a time";
      o.input = std::string(arg);
    }
  }
  if (o.mode == Options::Mode::none)
    return "nothing to do: give -convert, -p, -lists or -mend";
  if (!o.input)
    return "no file given";
  if ((o.mode == Options::Mode::print || o.mode == Options::Mode::lists) && o.output)
    return "-o goes with -convert and -mend only";
  return std::nullopt;
}

int run(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    std::string_view arg = argv[i];
    if (arg == "-h" || arg == "-help" || arg == "--help") {
      std::printf("%s\n\n"
                  "  -p FILE                print the property list for a person to read\n"
                  "  -convert json|binary1  convert FILE, in place unless -o OUT names the output\n"
                  "  -o OUT                 where -convert writes; \"-\" is standard output\n\n"
                  "FILE \"-\" is standard input. See nimbrel-plutil(1).\n",
                  kUsage);
      return 0;
    }
    if (arg == "--version") {
      std::printf("nimbrel-plutil %s\n", NIMBREL_VERSION);
      return 0;
    }
  }
  Options o;
  if (auto error = parseArguments(argc, argv, o))
    return fail(*error + " (" + kUsage + ")");

  auto bytes = readAll(*o.input);
  if (!bytes)
    return fail(bytes.error());
  auto value = parse(*bytes);
  if (!value)
    return fail(*o.input + ": " + value.error());

  if (o.mode == Options::Mode::print) {
    auto text = PlistPrinter::print(*value);
    if (auto error = writeOut("-", text))
      return fail(*error);
    return 0;
  }

  if (o.mode == Options::Mode::lists || o.mode == Options::Mode::mend) {
    if (!value->isDictionary())
      return fail(*o.input + ": not a preferences file (the root is no dictionary)");
    auto values = value->dictionary();
    if (o.mode == Options::Mode::lists) {
      if (auto error = writeOut("-", ListMender::describe(values)))
        return fail(*error);
      return 0;
    }
    for (const auto& outcome : ListMender::mend(values)) {
      std::string line = outcome.removed ? outcome.key + ": nothing the program reads; removed"
                                         : outcome.key + ": " + std::to_string(outcome.kept) + " records kept, " +
                                               std::to_string(outcome.dropped) + " dropped";
      std::fprintf(stderr, "%s\n", line.c_str());
    }
    auto binary = BinaryPropertyList::write(PlistValue(std::move(values)));
    if (!binary)
      return fail(*o.input + ": " + binary.error());
    if (auto error = writeOut(o.output.value_or(*o.input), std::string(binary->begin(), binary->end())))
      return fail(*error);
    return 0;
  }

  std::string out;
  if (o.format == "json") {
    auto json = PlistJson::write(*value);
    if (!json)
      return fail(*o.input + ": " + json.error());
    out = std::move(*json);
    out += '\n';
  } else {
    auto binary = BinaryPropertyList::write(*value);
    if (!binary)
      return fail(*o.input + ": " + binary.error());
    out.assign(binary->begin(), binary->end());
  }
  std::string destination = o.output.value_or(*o.input);
  if (auto error = writeOut(destination, out))
    return fail(*error);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  // A closed pipe downstream is a write error to report, not a reason to die by signal.
  std::signal(SIGPIPE, SIG_IGN);
  try {
    return run(argc, argv);
  } catch (const std::bad_alloc&) {
    return fail("out of memory");
  } catch (const std::exception& e) {
    return fail(std::string("internal error: ") + e.what());
  }
}
