// Time zones of the library's own: opened by a layout, kept by it, gone with the last that has it.

#ifndef JWNLS_LIBRARY_ZONES_ZONE_H_
#define JWNLS_LIBRARY_ZONES_ZONE_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace jwnls::library {

/// One zone as one release of the database has it. Never changes; any thread.
class Zone {
 public:
  virtual ~Zone() = default;

  /// The canonical name: "Europe/Berlin".
  [[nodiscard]] const std::string& name() const noexcept { return name_; }

  /// Seconds east of UTC at a moment, in seconds from 1970-01-01T00:00:00Z.
  [[nodiscard]] virtual std::int32_t offset_at(std::int64_t moment) const noexcept = 0;

  /// The abbreviation then, such as "CET"; valid as long as the zone.
  [[nodiscard]] virtual std::string_view abbreviation_at(std::int64_t moment) const noexcept = 0;

  /// The moments at which the zone's clocks show a time: none in a gap, two in an overlap.
  struct Moments {
    int count;
    std::int64_t first;
    std::int64_t second;
  };
  /// `clock` counts seconds from 1970-01-01T00:00:00 on the wall.
  [[nodiscard]] virtual Moments moments_of(std::int64_t clock) const noexcept = 0;

 protected:
  explicit Zone(std::string name) : name_(std::move(name)) {}

 private:
  const std::string name_;
};

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_ZONES_ZONE_H_
