// Fuzzes the program's arguments: words of its own in any order, changed ones, any bytes.
//
// Every run ends with a documented code; a wrong command line has one line of reason and no output,
// a right one says nothing on the error stream but notes. The same arguments do the same again. A
// date and a number that the program writes are those that it reads from its own text.

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/input.h"
#include "tool/commands/command_line.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace jwnls::test {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

struct Outcome {
  int code;
  std::string output;
  std::string errors;
  bool operator==(const Outcome&) const = default;
};

// One of the process's streams, caught in memory as long as this lives.
class Caught {
 public:
  explicit Caught(int stream)
      : stream_(stream), before_(dup(stream)), file_(memfd_create("caught", 0)) {
    dup2(file_, stream_);
  }
  ~Caught() {
    dup2(before_, stream_);
    close(before_);
    close(file_);
  }
  Caught(const Caught&) = delete;
  Caught& operator=(const Caught&) = delete;

  [[nodiscard]] std::string text() const {
    std::string text(static_cast<std::size_t>(lseek(file_, 0, SEEK_END)), '\0');
    const auto length = pread(file_, text.data(), text.size(), 0);
    text.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    return text;
  }

 private:
  int stream_, before_, file_;
};

Outcome run(const Words& words) {
  std::vector<const char*> arguments = {"jwnls"};
  for (const std::string& word : words) arguments.push_back(word.c_str());
  const Caught output(STDOUT_FILENO), errors(STDERR_FILENO);
  Outcome outcome;
  outcome.code = static_cast<int>(tool::run(static_cast<int>(arguments.size()), arguments.data()));
  outcome.output = output.text();
  outcome.errors = errors.text();
  return outcome;
}

// The process stands in a folder of its own with one table, and reads nothing.
void set_up() {
  static const bool done = [] {
    std::string path = fs::temp_directory_path() / "jwnls-arguments.XXXXXX";
    require(mkdtemp(path.data()) != nullptr, "no folder");
    static const std::string kept = path;
    fs::current_path(kept);
    std::atexit([] { fs::remove_all(kept); });
    dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
    setenv("LC_ALL", "C", 1);
    return true;
  }();
  require(done, "no folder");
  for (const auto& file : fs::directory_iterator(".")) fs::remove_all(file);
  std::ofstream("r.csv") << "a;b;c\n1,5;15.03.2024;x\n2,5;16.03.2024;y\n";
}

std::string word_of(Input& input) {
  constexpr std::string_view words[] = {
      "format",  "read",       "convert",    "locales",     "zones",     "show",
      "detect",  "number",     "integer",    "amount",      "percent",   "date",
      "time",    "datetime",   "instant",    "period",      "-l",        "de_DE",
      "en_US",   "--from",     "--to",       "-c",          "a",         "b=date",
      "r.csv",   "-F",         ";",          "-s",          "long",      "-d",
      "2",       "-z",         "UTC",        "--help",      "--version", "1234.5",
      "1.234,5", "15.03.2024", "2024-03-15", "14:30",       "--invalid", "drop",
      "--json",  "--proved",   "--null-out", "NULL",        "--",        "-w",
      "12",      "--no-group", "--currency", "EUR",         "now",       "--threads",
      "1-2",     "german",     "/a/",        "--no-header", "-",         "'a'",
      "*",       "a:as=n",     "=number"};
  const std::uint8_t choice = input.byte();
  std::string word(words[choice % std::size(words)]);
  if (choice >= 0xE0 && !word.empty()) {
    char& each = word[input.byte() % word.size()];
    each = static_cast<char>(each ^ 1 << (choice % 7));
  }
  if (choice >= 0xF0) word.append("=").append(words[input.byte() % std::size(words)]);
  if (choice >= 0xFA) {
    word.clear();
    for (int units = input.byte() % 12; units > 0; --units) {
      word += static_cast<char>(std::max<std::uint8_t>(input.byte(), 1));
    }
  }
  // Files stay in the folder, pipes and devices outside.
  if (word != "/a/") std::replace(word.begin(), word.end(), '/', '_');
  return word;
}

void check_words(Input& input) {
  Words words;
  for (int count = input.byte() % 9; count > 0; --count) words.push_back(word_of(input));
  const auto has = [&words](std::string_view part) {
    return std::any_of(words.begin(), words.end(), [part](const std::string& word) {
      return word.find(part) != std::string::npos;
    });
  };
  const Outcome outcome = run(words);
  require(outcome.code >= 0 && outcome.code <= 5, "an undocumented code");
  if (outcome.code == 2) {
    require(outcome.output.empty(), "output of a wrong command line");
    require(outcome.errors.starts_with("jwnls: ") &&
                std::count(outcome.errors.begin(), outcome.errors.end(), '\n') == 1,
            "a wrong command line without its reason");
  }
  // Bad values may be refused in silence, when that is asked for; detect (5) tells in its output.
  const bool told = !outcome.errors.empty() || (outcome.code == 5 && !outcome.output.empty());
  require(outcome.code <= 1 || told, "a failure without a reason");
  for (const char each : outcome.errors) {
    require(static_cast<unsigned char>(each) >= 0x20 || each == '\n', "a terminal would obey");
  }
  // Today's date is another tomorrow, and files that were there may not be written again.
  if (has("now") || has("in") || has("out") || has("-o") || has("rej")) return;
  require(run(words) == outcome, "arguments that do another thing again");
}

void check_round_trip(Input& input) {
  constexpr const char* locales[] = {"de_DE", "en_US", "fr_FR", "ja_JP", "ar_EG", "hu_HU"};
  const std::string locale = locales[input.byte() % std::size(locales)];
  std::array<char, 64> text;
  std::string kind = "date";
  if (input.byte() % 2 == 0) {
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d",
                  1582 + input.number<std::uint16_t>() % 8400, 1 + input.byte() % 12,
                  1 + input.byte() % 28);
  } else {
    kind = "number";
    std::snprintf(text.data(), text.size(), "%d.%d", input.number<std::int32_t>() / 2,
                  1 + input.byte() % 9);
  }
  const std::string value = text.data();
  const Outcome written = run({"format", kind, "-l", locale, "--", value});
  require(written.code == 0 && written.errors.empty() && written.output.ends_with('\n'),
          "a value that is not written");
  const std::string line = written.output.substr(0, written.output.size() - 1);
  const Outcome read = run({"read", kind, "-l", locale, "--", line});
  require(read.code == 0 && read.output == value + "\n", "a value that is read back as another");
}

}  // namespace
}  // namespace jwnls::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace jwnls::test;
  set_up();
  Input input(data, size);
  if (input.byte() % 8 == 0) {
    check_round_trip(input);
  } else {
    check_words(input);
  }
  return 0;
}
