// The key that the handle cache knows a handle by:
//
//   key = locale " " zone      the locale's canonical name of 1 to 60 units, the zone's normalised
//                              name of 0 to 50; cut to 110 units

#ifndef JWNLS_MODULE_FRAME_HANDLE_KEY_H_
#define JWNLS_MODULE_FRAME_HANDLE_KEY_H_

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "module/host_calls/time_zone.h"
#include "module/text/copy_text.h"

namespace jwnls {

/// A key in the making. The zone's name is written first and stays where it is; the locale's name
/// is put before it, so that the common case, a handle that exists, copies as little as possible.
/// Nothing is cleared in advance either: only what was written is read.
class HandleKey {
 public:
  // NOLINTNEXTLINE(clang-analyzer-optin.cplusplus.UninitializedObject)
  HandleKey() noexcept {}

  /// The zone's name, to be written before set_locale() is called.
  ZoneName& zone() noexcept { return zone_; }

  /// The key of the zone's name and a locale name of at most 60 units. It lives as long as this.
  std::u16string_view with_locale(std::u16string_view locale) noexcept {
    static_assert(offsetof(HandleKey, zone_) == sizeof(room_) && offsetof(ZoneName, units) == 0,
                  "the zone's name goes on where the locale's ends");
    constexpr std::size_t longest_key = 110;  // units
    char16_t* const start = room_ + std::size(room_) - 1 - locale.size();
    if (std::endian::native == std::endian::little && locale.size() < 2 * word_units) [[likely]] {
      store_first_words(start, locale);
    } else {
      copy_text(start, locale.data(), locale.size() * sizeof(char16_t));
      start[locale.size()] = u' ';
    }
    const std::size_t length = locale.size() + 1 + static_cast<std::size_t>(zone_.length);
    return {start, std::min(length, longest_key)};
  }

 private:
  using Word = std::uint64_t;
  static constexpr std::size_t word_units = sizeof(Word) / sizeof(char16_t);
  static constexpr unsigned unit_bits = 16;

  static Word load(const char16_t* units) noexcept {
    Word word = 0;
    std::memcpy(&word, units, sizeof word);
    return word;
  }

  // Writes a locale name of at most 7 units and the blank as two whole words, up to 7 units of the
  // zone's name with them, which are written as they are. The host reads the key at once, to look
  // it up: after narrower stores it would wait for them.
  void store_first_words(char16_t* start, std::u16string_view locale) const noexcept {
    const Word from_blank = load(zone_.units) << unit_bits | u' ';
    Word first = 0;
    Word second = 0;
    if (locale.size() >= word_units) {  // "de_DE"
      const unsigned bits = static_cast<unsigned>(locale.size() - word_units) * unit_bits;
      first = load(locale.data());
      second = load(locale.data() + locale.size() - word_units) >> unit_bits >> (48 - bits);
      second |= from_blank << bits;
    } else {  // "de"
      for (std::size_t at = locale.size(); at-- > 0;) first = first << unit_bits | locale[at];
      first |= from_blank << static_cast<unsigned>(locale.size()) * unit_bits;
      second = load(zone_.units + word_units - 1 - locale.size());
    }
    std::memcpy(start, &first, sizeof first);
    std::memcpy(start + word_units, &second, sizeof second);
  }

  char16_t room_[64];  // the locale's name ends here, with a blank
  ZoneName zone_;      // its units go on where the room ends
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_FRAME_HANDLE_KEY_H_
