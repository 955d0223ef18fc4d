// The names by which a layout knows months and weekdays, and the words that may stand between.
//
// Made when a layout is opened: from the locale's record, today. Names are folded (see
// library/texts/folding.h) and have no dot at their end; one text may be several things at once:
// the Spanish "mar" is Tuesday and March.

#ifndef JWNLS_LIBRARY_DATES_DATE_NAMES_H_
#define JWNLS_LIBRARY_DATES_DATE_NAMES_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "abi/locale_record.h"

namespace jwnls::library {

/// What a name stands for.
struct NameMeaning {
  std::uint8_t month = 0;     // 1 to 12; 0: none
  std::uint8_t weekday = 0;   // 1 (Sunday) to 7; 0: none; `some_weekday`: of two, not to be checked
  bool word = false;          // may stand between the parts of a date
  bool two_months = false;    // the name of two months: says nothing
  bool false_friend = false;  // the name of another month in a related language
  bool begins_longer = false;  // a longer name has another word behind it

  static constexpr std::uint8_t some_weekday = 8;
  [[nodiscard]] bool is_name() const noexcept { return month != 0 || weekday != 0 || two_months; }
};

class DateNames {
 public:
  /// The most bytes of a folded name that are kept.
  static constexpr std::size_t longest = 200;

  // Filling, in this order; all of it allocates. Texts are UTF-8, as they are written.
  void add_month(std::string_view name, int month);
  void add_weekday(std::string_view name, int weekday);
  void add_word(std::string_view word);
  /// Adds a month's name of a second language, which wins over the first.
  void prefer_month(std::string_view name, int month);
  /// Adds the beginnings of three letters and more that only one month has, and makes the table.
  void finish();

  /// Replaces every name that has digits in it ("M11", "Th 2") by a character of its own, so that
  /// they do not count as numbers of the date. Gives the new size; `places` may be null.
  std::size_t replace_numbered(char* folded, std::size_t size,
                               std::uint16_t* places) const noexcept;
  [[nodiscard]] bool has_numbered() const noexcept { return !numbered_.empty(); }

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

  static std::uint64_t key_of(std::string_view name) noexcept {
    std::uint64_t key = 0;
    std::memcpy(&key, name.data(), name.size() < 8 ? name.size() : 8);
    return key;
  }

  /// The longest name that a folded text begins with; its bytes go to `size`. Null: none.
  [[nodiscard]] const NameMeaning* longest_at(std::string_view text,
                                              std::size_t& size) const noexcept;

 private:
  struct Entry {
    std::uint64_t key;  // the first eight bytes
    std::uint32_t begin;
    std::uint16_t size;
    NameMeaning meaning;
  };

  [[nodiscard]] std::size_t slot_of(std::uint64_t key, std::size_t size) const noexcept {
    return static_cast<std::size_t>(((key + size) * 0x9E3779B97F4A7C15U) >> 40) & mask_;
  }
  [[nodiscard]] std::string_view text_of_entry(const Entry& entry) const noexcept {
    return std::string_view(texts_).substr(entry.begin, entry.size);
  }
  NameMeaning* meaning_of(std::string_view name);
  void add_beginnings();
  void add_numbered();
  void mark_longer();

  // A name with digits and the three bytes that stand for it.
  struct Numbered {
    std::string name, stand_in;
  };

  std::vector<Numbered> numbered_;  // the longest first
  std::vector<Entry> entries_;      // at last sorted: by first byte, the longest first
  std::string texts_;
  std::vector<std::uint16_t> slots_;  // 1 more than an entry's index; 0: free; half of them are
  std::size_t mask_ = 0;
  std::uint16_t first_of_[257] = {};  // the first entry of each first byte
};

/// Fills in the names of a record: months, weekdays, and the words of its date patterns.
void add_names(const LocaleRecord& record, DateNames& names);

/// The English names, for names=english.
void prefer_english_months(DateNames& names);

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_DATE_NAMES_H_
