#include "tool/tables/progress_line.h"

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <string_view>

namespace jwnls::tool {
namespace {

volatile std::sig_atomic_t is_asked = 0;

void ask(int) { is_asked = 1; }

void say(std::string_view text) { (void)!::write(STDERR_FILENO, text.data(), text.size()); }

struct Unit {
  double size;
  const char* name;
};

// "1.2" and "G"; whole numbers below thousand and above ten.
std::string scaled(double value, const Unit& unit, bool with_name) {
  char text[48];
  const double shown = value / unit.size;
  (void)std::snprintf(text, sizeof text, unit.size > 1 && shown < 100 ? "%.1f" : "%.0f", shown);
  std::string all(text);
  if (with_name && *unit.name != '\0') all.append(" ").append(unit.name);
  return all;
}

Unit unit_of(double value) {
  constexpr Unit units[] = {{1e9, "G"}, {1e6, "M"}, {1e3, "k"}};
  for (const Unit& unit : units) {
    if (value >= unit.size) return unit;
  }
  return {1, ""};
}

std::string with_unit(double value) { return scaled(value, unit_of(value), true); }

std::string in_bytes(double value) {
  const Unit unit = unit_of(value);
  return scaled(value, unit, false) + " " + unit.name + "B";
}

}  // namespace

ProgressLine::ProgressLine(bool is_shown, std::uint64_t total_bytes)
    : is_shown_(is_shown), is_terminal_(::isatty(STDERR_FILENO) == 1), total_bytes_(total_bytes) {
  is_asked = 0;
  struct sigaction action = {};
  action.sa_handler = &ask;
  action.sa_flags = SA_RESTART;
  (void)::sigaction(SIGUSR1, &action, nullptr);
}

ProgressLine::~ProgressLine() {
  clear();
  (void)std::signal(SIGUSR1, SIG_DFL);
}

void ProgressLine::advance(std::uint64_t bytes, std::uint64_t rows, std::uint64_t refused) {
  bytes_ = bytes;
  rows_ = rows;
  refused_ = refused;
}

std::string ProgressLine::text(double seconds) const {
  const auto bytes = static_cast<double>(bytes_.load());
  const auto total = static_cast<double>(total_bytes_);
  const double rate = seconds > 0 ? bytes / seconds : 0;
  const bool knows_end = total_bytes_ >= bytes_ && total_bytes_ > 0;
  std::string all = in_bytes(bytes);
  if (knows_end) all = scaled(bytes, unit_of(total), false) + " of " + in_bytes(total);
  all.append(", ").append(with_unit(static_cast<double>(rows_.load()))).append(" rows, ");
  all.append(in_bytes(rate)).append("/s");
  if (knows_end && rate > 0) {
    all.append(", ").append(scaled((total - bytes) / rate, {1, ""}, false)).append(" s left");
  }
  if (refused_ > 0) all.append(", ").append(std::to_string(refused_.load())).append(" not read");
  return all;
}

void ProgressLine::tick() {
  if (!is_shown_ && is_asked == 0) return;
  const std::lock_guard lock(mutex_);
  const auto now = Clock::now();
  const bool was_asked = is_asked != 0;
  if (!was_asked && (!is_shown_ || now < next_)) return;
  is_asked = 0;
  next_ = now + std::chrono::milliseconds(500);
  const std::string line = text(std::chrono::duration<double>(now - begin_).count());
  is_on_screen_ = is_shown_ && is_terminal_;
  say(is_on_screen_ ? "\r\x1b[K" + line : "jwnls: " + line + "\n");
}

void ProgressLine::clear() {
  const std::lock_guard lock(mutex_);
  if (is_on_screen_) say("\r\x1b[K");
  is_on_screen_ = false;
}

}  // namespace jwnls::tool
