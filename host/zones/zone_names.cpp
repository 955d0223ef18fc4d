#include "host/zones/zone_names.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>
#include <system_error>
#include <utility>

#include "host/lookup/key_table.h"
#include "host/zones/utc_offset.h"
#include "host/zones/zone_file.h"

namespace jwnls::host {
namespace {

constexpr std::size_t name_capacity = zone_name_capacity;

constexpr char16_t fold(char16_t unit) noexcept {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 0x20) : unit;
}

std::u16string_view without_blanks(std::u16string_view name) noexcept {
  constexpr std::u16string_view blanks = u" \t\u00A0";
  const auto first = name.find_first_not_of(blanks);
  if (first == std::u16string_view::npos) return {};
  return name.substr(first, name.find_last_not_of(blanks) - first + 1);
}

std::filesystem::path system_directory() {
  // A folder that is not absolute would be another one wherever the program is started.
  const char* own = secure_getenv("TZDIR");
  if (own != nullptr && own[0] == '/') return own;
  for (const char* folder : {"/usr/share/zoneinfo", "/usr/lib/zoneinfo", "/etc/zoneinfo"}) {
    std::error_code ignored;
    if (std::filesystem::is_directory(folder, ignored)) return folder;
  }
  return "/usr/share/zoneinfo";
}

// Names that a database's folder holds beside its zones. "Factory" stands for a clock that nobody
// has set yet; the two trees hold every zone again, with and without leap seconds.
bool is_no_zone(std::string_view name) {
  return name == "Factory" || name == "localtime" || name == "posixrules" ||
         name.starts_with("posix/") || name.starts_with("right/") || name.size() > name_capacity;
}

// Cuts off and returns what stands before the first `end`, or everything.
std::string_view take_until(std::string_view& text, char end) {
  const std::string_view taken = text.substr(0, text.find(end));
  text.remove_prefix(std::min(taken.size() + 1, text.size()));
  return taken;
}

// A file that this user may never read is no zone for him.
bool may_be_zone(const std::filesystem::path& file) {
  try {
    return is_compiled_zone(file);
  } catch (const std::system_error& failure) {
    if (failure.code() == std::errc::permission_denied) return false;
    throw;
  }
}

void write_ascii(std::string_view text, ZoneNameText& out) noexcept {
  std::copy(text.begin(), text.end(), out.units);
  out.length = text.size();
}

void write_utc_offset(int seconds, ZoneNameText& out) noexcept {
  const int minutes = std::abs(seconds) / 60;
  const auto digit = [](int value) { return static_cast<char>('0' + value % 10); };
  const std::array<char, 9> text = {'U',
                                    'T',
                                    'C',
                                    seconds < 0 ? '-' : '+',
                                    digit(minutes / 600),
                                    digit(minutes / 60),
                                    ':',
                                    digit(minutes % 60 / 10),
                                    digit(minutes)};
  write_ascii({text.data(), text.size()}, out);
}

}  // namespace

ZoneNames::ZoneNames(const std::filesystem::path& directory) : is_found_(!directory.empty()) {
  if (is_found_) directory_ = std::filesystem::absolute(directory);
}

const std::filesystem::path& ZoneNames::directory() const {
  if (is_found_.load(std::memory_order_acquire)) return directory_;
  const std::lock_guard guard(finding_);
  if (!is_found_.load(std::memory_order_relaxed)) {
    directory_ = system_directory();
    is_found_.store(true, std::memory_order_release);
  }
  return directory_;
}

const std::vector<ZoneNames::Zone>& ZoneNames::zones() const {
  read_once();
  return zones_;
}

const std::vector<std::string>& ZoneNames::names() const {
  read_once();
  return names_;
}

const std::string& ZoneNames::version() const {
  read_once();
  return version_;
}

const ZoneNames::Zone* ZoneNames::find(std::u16string_view name) const {
  if (name.empty() || name.size() > name_capacity) return nullptr;
  std::array<char, name_capacity> folded;  // NOLINT(cppcoreguidelines-pro-type-member-init)
  unsigned all_units = 0;
  for (std::size_t at = 0; at < name.size(); ++at) {
    all_units |= name[at];
    folded[at] = static_cast<char>(fold(name[at]));
  }
  if (all_units >= 0x80) return nullptr;  // names are ASCII
  // Needs no file. For ever: threads may ask while the process ends.
  static const Zone& utc = *new Zone{"UTC", ""};
  if (std::string_view(folded.data(), name.size()) == "utc") return &utc;
  read_once();
  const std::uint16_t slot = slots_[slot_of({folded.data(), name.size()})];
  return slot != 0 ? &zones_[slot - 1U] : nullptr;
}

Status ZoneNames::normalise(std::u16string_view name, ZoneNameText& out) const {
  const Status status = normalise_anew(name, out);
  if (status == Status::ok) normal_.add(name, out);
  return status;
}

Status ZoneNames::normalise_anew(std::u16string_view name, ZoneNameText& out) const {
  name = without_blanks(name);
  if (const Zone* zone = find(name)) {
    write_ascii(zone->name, out);
    return Status::ok;
  }
  const std::optional<int> offset = parse_utc_offset(name);
  if (!offset) return Status::lookup_failed;
  if (*offset == 0) {
    write_ascii("UTC", out);
  } else {
    write_utc_offset(*offset, out);
  }
  return Status::ok;
}

void ZoneNames::read_once() const {
  if (is_read_.load(std::memory_order_acquire)) return;
  const std::lock_guard guard(reading_);
  if (is_read_.load(std::memory_order_relaxed)) return;
  const_cast<ZoneNames*>(this)->read();
  is_read_.store(true, std::memory_order_release);
}

void ZoneNames::read() {
  zones_.clear();  // of what a reader left that could not go on
  names_.clear();
  folded_.clear();
  version_.clear();
  if (!read_list()) read_folder();
  zones_.push_back({"UTC", ""});  // needs no file
  std::erase_if(zones_, [](const Zone& zone) { return is_no_zone(zone.name); });
  std::sort(zones_.begin(), zones_.end(), [](const Zone& a, const Zone& b) {
    return a.name != b.name ? a.name < b.name : a.target > b.target;
  });
  const auto same_name = [](const Zone& a, const Zone& b) { return a.name == b.name; };
  zones_.erase(std::unique(zones_.begin(), zones_.end(), same_name), zones_.end());
  for (const Zone& zone : zones_) names_.push_back(zone.name);
  index_names();
}

// The list is the database's source in a short form: "Z NAME ..." begins a zone, and "L TARGET
// ALIAS" is a link. Its first line names the release: "# version 2025b".
bool ZoneNames::read_list() {
  const std::string list = read_file(directory() / "tzdata.zi").value_or("");
  constexpr std::string_view version_mark = "# version ";
  for (std::string_view rest = list; !rest.empty();) {
    std::string_view line = take_until(rest, '\n');
    if (line.starts_with(version_mark)) version_ = line.substr(version_mark.size());
    if (!line.starts_with("Z ") && !line.starts_with("L ")) continue;
    const bool is_link = line[0] == 'L';
    line.remove_prefix(2);
    const std::string_view first = take_until(line, ' ');
    const std::string_view second = take_until(line, ' ');
    zones_.push_back(is_link ? Zone{std::string(second), std::string(first)}
                             : Zone{std::string(first), {}});
  }
  std::erase_if(zones_, [](const Zone& zone) { return zone.name.empty(); });
  return !zones_.empty();
}

void ZoneNames::read_folder() {
  std::error_code error;
  using Walk = std::filesystem::recursive_directory_iterator;
  const auto options = std::filesystem::directory_options::skip_permission_denied;
  Walk at(directory(), options, error);
  for (const Walk end; !error && at != end; at.increment(error)) {
    const std::string name = at->path().lexically_relative(directory()).generic_string();
    if (is_no_zone(name + "/")) at.disable_recursion_pending();
    std::error_code ignored;
    if (at->is_regular_file(ignored) && may_be_zone(at->path())) zones_.push_back({name, ""});
  }
  if (error && error != std::errc::no_such_file_or_directory &&
      error != std::errc::not_a_directory) {
    throw std::system_error(error, directory().string());
  }
}

void ZoneNames::index_names() {
  std::size_t count = 64;
  while (count < zones_.size() * 3) count *= 2;
  slots_.assign(count, 0);
  folded_.resize(zones_.size());
  for (std::size_t at = 0; at < zones_.size(); ++at) {
    for (const char letter : zones_[at].name) {
      folded_[at] += static_cast<char>(fold(static_cast<unsigned char>(letter)));
    }
    std::uint16_t& slot = slots_[slot_of(folded_[at])];
    if (slot == 0) slot = static_cast<std::uint16_t>(at + 1);
  }
}

// The slot that holds a name, or the empty one where it would go.
std::size_t ZoneNames::slot_of(std::string_view folded) const noexcept {
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = hash_bytes(folded.data(), folded.size()) & mask;
  while (slots_[at] != 0 && folded_[slots_[at] - 1U] != folded) at = (at + 1) & mask;
  return at;
}

}  // namespace jwnls::host
