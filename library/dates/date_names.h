// The names by which a layout knows months and weekdays, and the words that may stand between, as
// reading looks them up. Made once for each locale and choice of names=, shared by its layouts.

#ifndef JWNLS_LIBRARY_DATES_DATE_NAMES_H_
#define JWNLS_LIBRARY_DATES_DATE_NAMES_H_

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "library/locale_data/byte_set.h"
#include "library/locale_data/date_data.h"
#include "library/locale_data/name_list.h"
#include "library/process/process.h"

namespace jwnls::library {

class DateNames {
 public:
  /// Throws bad_alloc.
  explicit DateNames(const DateNameData& data);

  /// Replaces every name that has digits in it ("M11", "Th 2") by a character of its own, so that
  /// they do not count as numbers of the date. Gives the new size; `places` may be null.
  std::size_t replace_numbered(char* folded, std::size_t size,
                               std::uint16_t* places) const noexcept;
  [[nodiscard]] bool has_numbered() const noexcept { return !numbered_.empty(); }
  /// Whether one of them begins with a byte, as folding leaves it but for the case of ASCII.
  [[nodiscard]] bool begins_numbered(char byte) const noexcept {
    return begins_numbered_[static_cast<unsigned char>(byte)];
  }

  /// Whether a number with a byte before it, blanks between, may be the first of one of them;
  /// folded, '\0' where it begins the name.
  [[nodiscard]] bool precedes_number(char byte) const noexcept {
    return before_number_[static_cast<unsigned char>(byte)];
  }

  /// Whether one may stand in a text of digits and marks alone.
  [[nodiscard]] bool has_numbered_without_letters() const noexcept {
    return has_numbered_without_letters_;
  }

  /// Likewise, in a text as it is written, names that only their marks tell from another ("Ẹr").
  std::size_t replace_exact(char* text, std::size_t size) const noexcept;
  [[nodiscard]] bool has_exact() const noexcept { return !exact_.empty(); }

  /// The meaning of a folded text that is the whole name; null: none.
  [[nodiscard]] const NameMeaning* find(std::string_view name) const noexcept {
    return find(key_of(name), name);
  }
  /// The same, with the name's first eight bytes, zeros behind its end.
  [[nodiscard]] const NameMeaning* find(std::uint64_t key, std::string_view name) const noexcept {
    for (std::size_t slot = slot_of(key, name.size());; slot = (slot + 1) & mask_) {
      const std::uint16_t number = slots_[slot];
      if (number == 0) return nullptr;
      const Entry& entry = entries_[number - 1];
      if (entry.key == key && entry.size == name.size() &&
          (name.size() <= 8 || name == text_of_entry(entry))) {
        return &entry.meaning;
      }
    }
  }

  /// Whether some name or word begins with a byte, as folding leaves it.
  [[nodiscard]] bool has_beginning(char byte) const noexcept {
    const auto first = static_cast<unsigned char>(byte);
    return first_of_[first] != first_of_[first + 1];
  }

  /// What some name or word has in it beside letters.
  [[nodiscard]] const ByteSet& marks() const noexcept { return marks_; }

  /// The first eight bytes of a text, the first in the lowest place; zeros behind its end.
  static std::uint64_t key_of(std::string_view name) noexcept {
    const auto load = [&name]<typename Word>(Word word, std::size_t at) {
      std::memcpy(&word, name.data() + at, sizeof word);
      return std::uint64_t{word};
    };
    const std::size_t size = name.size();
    if (size >= 8) return load(std::uint64_t{}, 0);
    if (size >= 4)
      return load(std::uint32_t{}, 0) | load(std::uint32_t{}, size - 4) << 8 * (size - 4);
    if (size == 0) return 0;
    const std::size_t middle = size / 2;
    return load(std::uint8_t{}, 0) | load(std::uint8_t{}, middle) << 8 * middle |
           load(std::uint8_t{}, size - 1) << 8 * (size - 1);
  }

  /// Adds what tells tables apart: every name and what it means.
  void add_to(std::string& key) const;

  /// Calls visit(name) with every folded name of a weekday.
  template <typename Visit>
  void each_weekday(Visit visit) const {
    for (const Entry& entry : entries_) {
      if (entry.meaning.weekday != 0) visit(text_of_entry(entry));
    }
    for (const StandIn& each : numbered_) visit(std::string_view(each.name));  // or of a month
  }

  /// The longest name that a folded text begins with; its bytes go to `size`. Null: none.
  [[nodiscard]] const NameMeaning* longest_at(std::string_view text,
                                              std::size_t& size) const noexcept;

 private:
  struct Entry {
    std::uint64_t key;    // the first eight bytes
    std::uint16_t begin;  // a section of the record has fewer bytes
    std::uint8_t size;
    NameMeaning meaning;

    [[nodiscard]] unsigned first_byte() const noexcept { return key & 0xFF; }
  };

  static_assert(sizeof(Entry) == 16);  // a locale has some 75, which stay
  static_assert(NameList::longest <= UINT8_MAX);

  [[nodiscard]] std::size_t slot_of(std::uint64_t key, std::size_t size) const noexcept {
    return static_cast<std::size_t>(((key + size) * 0x9E3779B97F4A7C15U) >> 40) & mask_;
  }
  [[nodiscard]] std::string_view text_of_entry(const Entry& entry) const noexcept {
    return std::string_view(texts_).substr(entry.begin, entry.size);
  }
  // A name and the three bytes that stand for it: a character for private use.
  struct StandIn {
    std::string name, stand_in;
    std::size_t digits = 0;  // where the name has its first
  };
  class NumberPlaces;

  void add_stand_in(std::vector<StandIn>& list, std::string_view name, NameMeaning meaning);
  void add_numbered(std::size_t entry);
  void mark_longer(std::size_t entry);
  [[nodiscard]] bool stands_before(const Entry& a, const Entry& b) const noexcept;
  void sort_entries();
  void make_slots();

  char32_t next_stand_in_ = 0xE000;
  std::vector<StandIn> numbered_;  // the longest first
  std::vector<StandIn> exact_;     // likewise
  std::bitset<256> begins_numbered_;
  std::bitset<256> before_number_;
  bool has_numbered_without_letters_ = false;
  ByteSet marks_;
  std::vector<Entry> entries_;  // at last sorted: by first byte, the longest first
  std::string texts_;
  std::vector<std::uint16_t> slots_;  // 1 more than an entry's index; 0: free; half of them are
  std::size_t mask_ = 0;
  std::uint16_t first_of_[257] = {};  // the first entry of each first byte
};

/// The names of a locale. Throws bad_alloc. Any thread.
std::shared_ptr<const DateNames> date_names_of(const Locale& locale, bool with_english);

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_DATE_NAMES_H_
