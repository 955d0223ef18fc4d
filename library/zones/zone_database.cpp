#include "library/zones/zone_database.h"

#include <cctz/civil_time.h>
#include <cctz/time_zone.h>

#include <algorithm>
#include <optional>
#include <system_error>
#include <utility>

#include "host/zones/os_zone.h"
#include "host/zones/utc_offset.h"
#include "host/zones/zone_file.h"
#include "library/texts/failure.h"
#include "library/zones/posix_zone.h"

namespace jwnls::library {
namespace {

// A zone of the library for zones.
class DatabaseZone final : public Zone {
 public:
  DatabaseZone(std::string name, cctz::time_zone zone) : Zone(std::move(name)), zone_(zone) {}

  [[nodiscard]] std::int32_t offset_at(std::int64_t moment) const noexcept override {
    return zone_.lookup(cctz::time_point<cctz::seconds>(cctz::seconds(moment))).offset;
  }
  [[nodiscard]] std::string_view abbreviation_at(std::int64_t moment) const noexcept override {
    return zone_.lookup(cctz::time_point<cctz::seconds>(cctz::seconds(moment))).abbr;
  }
  [[nodiscard]] Moments moments_of(std::int64_t clock) const noexcept override {
    const auto found = zone_.lookup(cctz::civil_second(1970, 1, 1) + clock);
    const auto seconds = [](auto point) { return point.time_since_epoch().count(); };
    switch (found.kind) {
      case cctz::time_zone::civil_lookup::UNIQUE:
        return {1, seconds(found.pre), 0};
      case cctz::time_zone::civil_lookup::REPEATED:
        return {2, seconds(found.pre), seconds(found.post)};
      default:
        return {0, seconds(found.pre), seconds(found.post)};
    }
  }

 private:
  cctz::time_zone zone_;
};

// Runs what reads files; `tell` begins the message of one that cannot be read.
template <typename Tell, typename Action>
auto reading(Tell tell, Action action) {
  try {
    return action();
  } catch (const std::system_error& failure) {
    if (failure.code() == std::errc::not_enough_memory) throw std::bad_alloc();
    fail(JWNLS_LOAD, [&](Message& message) {
      tell(message);
      (message << ": cannot be read just now: ").said(failure.code().message());
    });
  }
}

[[noreturn]] void unknown(std::string_view name) {
  fail(JWNLS_UNKNOWN,
       [name](Message& message) { (message << "time zone ").quoted(name) << ": unknown"; });
}

// Names of zones are ASCII, so that no other has a place in the result.
std::u16string widen(std::string_view name) {
  std::u16string wide;
  for (const char each : name) {
    wide += static_cast<unsigned char>(each) < 0x80 ? static_cast<char16_t>(each) : u'\uFFFD';
  }
  return wide;
}

std::string narrow(std::u16string_view name) {
  std::string bytes(name.size(), '\0');
  std::transform(name.begin(), name.end(), bytes.begin(),
                 [](char16_t unit) { return static_cast<char>(unit); });
  return bytes;
}

// "UTC+05:30" as it is written beside a time: "+0530".
std::string digits_of_offset(std::string_view canonical) {
  std::string digits(canonical.substr(3));
  std::erase(digits, ':');
  return digits;
}

}  // namespace

std::shared_ptr<const Zone> ZoneDatabase::open(std::string_view name) {
  constexpr std::size_t longest = 256;
  if (name.size() > longest) unknown(name);
  const auto tell = [name](Message& message) { (message << "time zone ").quoted(name); };
  auto zone = reading(tell, [&]() -> std::shared_ptr<const Zone> {
    host::ZoneNameText normal;
    if (names_.normalise(widen(name), normal) != Status::ok) return posix_zone(name);
    const std::string canonical = narrow(normal.view());
    if (const host::ZoneNames::Zone* known = names_.find(normal.view())) return open_known(*known);
    const auto offset = host::parse_utc_offset(normal.view());
    return fixed_zone(canonical, digits_of_offset(canonical), offset.value_or(0));
  });
  if (zone == nullptr) unknown(name);
  return zone;
}

std::shared_ptr<const Zone> ZoneDatabase::open_known(const host::ZoneNames::Zone& known) {
  if (known.name == "UTC") return fixed_zone("UTC", "UTC", 0);
  if (const auto before = opened_.find(known.name); before != opened_.end()) return before->second;
  // An alias has a file of its own, or none beside that of its zone.
  for (const std::string& name : {known.name, known.target}) {
    if (name.empty()) continue;
    if (const auto loaded = host::load_zone_file(names_.directory() / name)) {
      auto zone = std::make_shared<DatabaseZone>(known.name, *loaded);
      return opened_.emplace(known.name, std::move(zone)).first->second;
    }
  }
  fail(JWNLS_LOAD, [&](Message& message) {
    (message << "time zone ").quoted(known.name) << ": no such zone can be read in ";
    message.quoted(names_.directory().string());
  });
}

std::shared_ptr<const Zone> ZoneDatabase::open_system(const host::OsZoneSources& sources) {
  host::ZoneNameText name;
  const auto tell = [](Message& message) { message << "the system's time zone"; };
  const Status status = reading(tell, [&] { return host::find_os_zone(names_, sources, name); });
  if (status == Status::ok) return open(narrow(name.view()));
  if (status == Status::lookup_failed) {
    // What begins with ":" is a name.
    if (auto zone = posix_zone(*sources.tz)) return zone;
    fail(JWNLS_UNKNOWN, [&](Message& message) {
      (message << "TZ=").quoted(*sources.tz)
          << ": no time zone, and no rule such as CET-1CEST,M3.5.0,M10.5.0/3";
    });
  }
  std::error_code error;
  const auto local = std::filesystem::symlink_status(sources.local_time_file, error);
  if (local.type() == std::filesystem::file_type::not_found) return open("UTC");
  fail(JWNLS_LOAD, [&](Message& message) {
    message.said(sources.local_time_file.string()) << ": no time zone of the database in ";
    message.quoted(names_.directory().string());
  });
}

const std::vector<std::string>& ZoneDatabase::names() const {
  const auto tell = [this](Message& message) {
    (message << "time zones in ").quoted(names_.directory().string());
  };
  return *reading(tell, [this] { return &names_.names(); });
}

const std::string& ZoneDatabase::version() const {
  (void)names();
  return names_.version();
}

}  // namespace jwnls::library
