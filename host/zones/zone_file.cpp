#include "host/zones/zone_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <map>
#include <mutex>
#include <system_error>

namespace jwnls::host {
namespace {

constexpr std::string_view magic = "TZif";

[[noreturn]] void cannot_read(const std::filesystem::path& file, int error) {
  throw std::system_error(error, std::generic_category(), file.string());
}

class Descriptor {
 public:
  explicit Descriptor(const std::filesystem::path& file)
      : number_(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
    // What no file is called, or something else is, a link to nothing among it.
    constexpr int no_such_file[] = {ENOENT, ENOTDIR, ELOOP, ENAMETOOLONG, ENXIO};
    if (number_ < 0 && std::find(std::begin(no_such_file), std::end(no_such_file), errno) ==
                           std::end(no_such_file)) {
      cannot_read(file, errno);
    }
  }
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  // Of a plain file alone: others may have no end.
  [[nodiscard]] bool state(struct stat& state) const {
    return number_ >= 0 && fstat(number_, &state) == 0 && S_ISREG(state.st_mode);
  }
  [[nodiscard]] int number() const noexcept { return number_; }

 private:
  const int number_;
};

std::string read_bytes(const Descriptor& open, const std::filesystem::path& file,
                       std::size_t size) {
  std::string bytes(size, '\0');
  std::size_t done = 0;
  while (done < size) {
    const ssize_t got = ::read(open.number(), bytes.data() + done, size - done);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) cannot_read(file, errno);
    if (got == 0) break;
    done += static_cast<std::size_t>(got);
  }
  bytes.resize(done);
  return bytes;
}

// One state of a file: another one when it was replaced or written to.
struct FileState {
  explicit FileState(const struct stat& state)
      : device(state.st_dev),
        number(state.st_ino),
        size(state.st_size),
        seconds(state.st_mtim.tv_sec),
        nanoseconds(state.st_mtim.tv_nsec) {}
  bool operator==(const FileState&) const = default;

  dev_t device;
  ino_t number;
  off_t size;
  time_t seconds;
  long nanoseconds;
};

// What is known of a file.
struct Known {
  std::optional<FileState> state;  // of the latest try
  std::optional<cctz::time_zone> zone;
  unsigned failures = 0;  // in this state
  unsigned tries = 0;     // each has a spelling of its own
};

// The path with the digits of `number`, lowest first, between folder and name: "/" for 0, "/." for
// 1. No two numbers give one text, and all of them name the same file.
std::string spelled(const std::filesystem::path& file, unsigned number) {
  std::string text = file.parent_path().string();
  for (; number > 0; number /= 2) text += number % 2 == 0 ? "/" : "/.";
  return text + "/" + file.filename().string();
}

}  // namespace

std::optional<std::string> read_file(const std::filesystem::path& file, std::size_t most) {
  const Descriptor open(file);
  struct stat state = {};
  if (!open.state(state)) return std::nullopt;
  return read_bytes(open, file, std::min(most, static_cast<std::size_t>(state.st_size)));
}

bool is_compiled_zone(const std::filesystem::path& file) {
  return read_file(file, magic.size()) == magic;
}

std::optional<cctz::time_zone> load_zone_file(const std::filesystem::path& file) {
  // For ever, as what they guard: threads may open zones while the process ends.
  static auto& loading = *new std::mutex;
  static auto& files = *new std::map<std::filesystem::path, Known>;

  const Descriptor open(file);
  struct stat about = {};
  if (!open.state(about)) return std::nullopt;
  const FileState state(about);
  if (read_bytes(open, file, magic.size()) != magic) return std::nullopt;

  const std::lock_guard guard(loading);
  Known& known = files[file];
  if (known.state != state) {
    known.state = state;
    known.zone.reset();
    known.failures = 0;
  }
  if (known.zone) return known.zone;
  // A name may have failed before, or be an older file's: for another copy of this code, perhaps.
  // Each is remembered, so a file that is damaged is not asked for without end.
  constexpr unsigned most_failures = 64;
  constexpr unsigned tries_at_once = 2;
  for (unsigned i = 0; i < tries_at_once && known.failures < most_failures; ++i) {
    cctz::time_zone zone;
    if (cctz::load_time_zone(spelled(file, known.tries++), &zone)) return known.zone = zone;
    ++known.failures;
  }
  if (known.failures < most_failures) cannot_read(file, EIO);
  return std::nullopt;
}

}  // namespace jwnls::host
