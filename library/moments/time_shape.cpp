#include "library/moments/time_shape.h"

#include <algorithm>
#include <bit>
#include <span>
#include <string>
#include <vector>

#include "library/locale_data/date_characters.h"
#include "library/locale_data/number_runs.h"
#include "library/locale_data/pattern_parts.h"
#include "library/texts/utf8.h"

namespace jwnls::library {

namespace {

using Parts = std::span<const PatternParts::Part>;

std::string utf8_of(std::u16string_view units) {
  std::string text(3 * units.size(), '\0');
  text.resize(to_utf8(units, text.data(), text.size()));
  return text;
}

// The most that the number of a directive may be; 0: it is none.
constexpr std::uint16_t most_of(char directive) noexcept {
  switch (directive) {
    case 'd':  // unreachable: of a time no part, and datetimes end with a time or with the year
    case 'E':
      return 31;  // unreachable: likewise
    case 'm':     // unreachable: likewise
    case 'O':
      return 12;  // unreachable: likewise
    case 'Y':
      return 9999;
    case 'H':
    case 'I':
      return 23;
    case 'M':
    case 'S':
      return 59;
    default:
      return 0;
  }
}

// The patterns of times that the service tries, in no order: what the record's comes to.
std::vector<std::string> of_time_pattern(const std::string& pattern) {
  std::vector<std::string> all = {pattern, "%H:%M:%S", "%H:%M:%SZ"};
  const std::size_t minutes = pattern.find("%M");
  const std::size_t seconds = pattern.find("%S");
  const std::size_t half = pattern.find("%p");
  if (minutes == pattern.npos || seconds == pattern.npos) return all;
  for (const std::size_t end : {minutes + 2, seconds}) {
    std::string cut = pattern.substr(0, end);
    all.push_back(cut);
    if (half == pattern.npos) continue;
    if (half > minutes) {
      cut += " %p";
    } else if (half < cut.size()) {
      cut.erase(half, 2);
    }
    all.push_back(cut);
  }
  return all;
}

// The scripts among the characters whose first byte is 0xE1, 0xE2 or 0xEA that have cases among
// themselves alone, or none.
struct Script {
  char32_t first, last;
  std::string_view begins;  // of all its letters; empty: no cases
};
constexpr Script scripts[] = {
    {0x1000, 0x109F, {}},         {0x10A0, 0x10FF, "\xE1\xE2"}, {0x1100, 0x139F, {}},
    {0x13A0, 0x13FF, "\xE1\xEA"}, {0x1400, 0x1C7F, {}},         {0x1C90, 0x1CBF, "\xE1\xE2"},
    {0x2D00, 0x2D2F, "\xE1\xE2"}, {0x2D30, 0x2DDF, {}},         {0xA000, 0xA63F, {}},
    {0xA800, 0xAB2F, {}},         {0xAB70, 0xABBF, "\xE1\xEA"}, {0xABC0, 0xAFFF, {}},
};

// Adds the bytes that a character may begin with, in any of the cases that the service takes for
// the same: by scripts, and so some more.
void add_cases(std::string_view character, ByteSet& set) noexcept {
  const char first = character.front();
  const auto lead = static_cast<unsigned char>(first);
  set.add(first);
  if (lead < 0x80) {
    if (!is_letter(first)) return;
    set.add(static_cast<char>(first ^ 0x20));
    set.add_range(0xC4, 0xC5);  // "ı" and "ſ"
    set.add('\xE2');            // the sign of Kelvin
    return;
  }
  if (lead < 0xCC) {
    set.add_range(0xC2, 0xCF);
    for (const char each : {'i', 'I', 'k', 'K', 's', 'S', '\xE1', '\xE2', '\xEA'}) set.add(each);
  } else if (lead < 0xD0) {
    set.add_range(0xC2, 0xCF);
    for (const char each : {'\xE1', '\xE2', '\xEA'}) set.add(each);
  } else if (lead < 0xD7) {
    set.add_range(0xD0, 0xD6);
    for (const char each : {'\xE1', '\xE2', '\xEA'}) set.add(each);
  } else if (lead == 0xE1 || lead == 0xE2 || lead == 0xEA) {
    const char32_t value = first_character(character).value;
    for (const Script& script : scripts) {
      if (value < script.first || value > script.last) continue;
      for (const char each : script.begins) set.add(each);
      return;
    }
    set.add_range(0xC2, 0xEA);
    for (const char each : {'i', 'I', 'k', 'K', 's', 'S'}) set.add(each);
  }
}

// The bytes of a text in whatever case, without blanks, at most: the sign of Kelvin is a k, and "ı"
// an i; others have one more in another case.
std::size_t bytes_in_any_case(std::string_view text) noexcept {
  std::size_t bytes = 0;
  while (!text.empty()) {
    const Utf8Character next = first_character(text);
    if (next.value >= 0x80) {
      bytes += next.bytes + 1;
    } else if (next.value != ' ') {
      bytes += is_letter(text.front()) ? 3 : 1;
    }
    text.remove_prefix(next.bytes);
  }
  return bytes;
}

void add_all(std::string_view text, ByteSet& set) noexcept {
  while (!text.empty()) {
    add_cases(text, set);
    if (is_letter(text.front())) set.add_range(0x80, 0xBF);
    text.remove_prefix(first_character(text).bytes);
  }
}

}  // namespace

class TimeShapeMaker {
 public:
  TimeShapeMaker(const LocaleRecord& record, TimeShape& shape) : record_(record), shape_(shape) {}

  void add_ends_of(const std::string& pattern) {
    const PatternParts taken(pattern);
    const Parts parts = taken.parts;
    for (std::size_t i = 0; i < parts.size(); ++i) {
      const auto& [directive, literal] = parts[i];
      // The half of the day may be put behind all else.
      if (!may_end(parts, i) && directive != 'p') continue;
      add_ends(literal);
      if (directive == 0 || most_of(directive) != 0) continue;
      each_name(directive,
                [this](std::string_view name) { add_ends(name.substr(name.size() - 1)); });
    }
  }

  // False: nothing is known.
  bool add(const std::string& pattern) {
    const PatternParts taken(pattern);
    const Parts parts = taken.parts;
    std::vector<std::size_t> numbers;
    std::uint32_t blank_gaps = 0;  // a bit for each number: only blanks stand in front of it
    for (std::size_t i = 0; i < parts.size(); ++i) {
      if (!is_readable(parts[i])) return false;
      if (most_of(parts[i].directive) == 0) continue;
      if (!numbers.empty()) {
        if (i == numbers.back() + 1) return false;
        const bool only_blanks = i == numbers.back() + 2 && parts[i - 1].directive == 0 &&
                                 is_of_blanks(parts[i - 1].literal);
        blank_gaps |= std::uint32_t{only_blanks} << numbers.size();
      }
      numbers.push_back(i);
    }
    if (numbers.empty() || numbers.size() > TimeShape::most_numbers) return false;
    // Each of these blanks may be missing: then two numbers are one.
    for (std::uint32_t missing = blank_gaps;; missing = (missing - 1) & blank_gaps) {
      const auto joined = static_cast<std::size_t>(std::popcount(missing));
      add_form(parts, numbers, missing, shape_.forms_[numbers.size() - joined]);
      if (missing == 0) break;
    }
    return true;
  }

 private:
  static bool is_of_blanks(std::string_view text) noexcept {
    return text.find_first_not_of(' ') == text.npos;
  }

  // Names with digits would count as numbers, empty ones could be missing.
  bool is_readable(const PatternParts::Part& part) {
    const auto has_digit = [](std::string_view text) {
      return std::any_of(text.begin(), text.end(), is_digit);
    };
    if (part.directive == 0) {
      return !has_digit(part.literal) && part.literal.find('%') == std::string::npos;
    }
    if (most_of(part.directive) != 0) return true;
    if (std::string_view("bBaAp").find(part.directive) == std::string_view::npos) return false;
    bool is_readable = true;
    each_name(part.directive, [&](std::string_view name) {
      is_readable = is_readable && !name.empty() && !has_digit(name);
    });
    return is_readable;
  }

  // Long and short names stand for each other.
  template <typename Visit>
  void each_name(char directive, const Visit& visit) {
    const auto visit_all = [&visit](std::span<const TextEntry> entries) {
      for (const TextEntry& entry : entries) visit(utf8_of(text_of(entry)));
    };
    if (directive == 'p') {
      visit_all({&record_.before_noon, 1});
      visit_all({&record_.after_noon, 1});
    } else if (directive == 'b' || directive == 'B') {  // unreachable: as most_of() says
      visit_all(record_.full_months);                   // unreachable: likewise
      visit_all(record_.short_months);                  // unreachable: likewise
    } else {
      visit_all(record_.full_weekdays);   // unreachable: likewise
      visit_all(record_.short_weekdays);  // unreachable: likewise
    }
  }

  // Adds with what the parts from `at` on may begin, but for blanks; whether it is a mark alone.
  bool add_begin(Parts parts, std::size_t at, ByteSet& set) {
    for (; at < parts.size(); ++at) {
      const auto& [directive, literal] = parts[at];
      if (directive == 0) {
        const std::size_t begin = literal.find_first_not_of(' ');
        if (begin == literal.npos) continue;
        add_cases(std::string_view(literal).substr(begin), set);
        return literal.find_first_not_of(' ', begin + 1) == literal.npos &&
               !is_letter(literal[begin]) && at + 1 < parts.size() &&
               most_of(parts[at + 1].directive) != 0;
      }
      if (most_of(directive) != 0) {
        set.add_range('0', '9');
        return false;
      }
      each_name(directive, [&set](std::string_view name) { add_cases(name, set); });
      return false;
    }
    set.add('\0');
    return false;
  }

  // Whether a text may end with a part: the last one, and those before the seconds and the half of
  // the day, which are cut; blanks may be missing.
  static bool may_end(Parts parts, std::size_t at) {
    for (++at; at < parts.size(); ++at) {
      const auto& [directive, literal] = parts[at];
      if (directive == 'S' || directive == 'p') return true;
      if (directive != 0 || !is_of_blanks(literal)) return false;
    }
    return true;
  }
  void add_ends(std::string_view text) {
    for (const char each : text) {
      if (!is_ascii(each)) continue;
      shape_.ends_.add(each);
      if (is_letter(each)) shape_.ends_.add(static_cast<char>(each ^ 0x20));
    }
  }

  // Adds the bytes of a part that is no number; the bytes that it has at most.
  std::size_t add_texts(const PatternParts::Part& part, ByteSet& set) {
    add_all(part.literal, set);
    std::size_t longest = bytes_in_any_case(part.literal);
    if (part.directive == 0) return longest;
    each_name(part.directive, [&](std::string_view name) {
      add_all(name, set);
      longest = std::max(longest, bytes_in_any_case(name));
    });
    return longest;
  }

  void add_form(Parts parts, const std::vector<std::size_t>& numbers, std::uint32_t missing,
                TimeShape::Form& form) {
    form.is_possible = true;
    add_begin(parts, 0, form.lead);
    for (ByteSet* set : {&form.head, &form.tail}) set->add(' ');
    for (std::size_t i = 0; i < numbers.front(); ++i) add_texts(parts[i], form.head);
    std::size_t tail = 0;
    for (std::size_t i = numbers.back() + 1; i < parts.size(); ++i) {
      tail += add_texts(parts[i], form.tail);
    }
    form.longest_tail = std::max(form.longest_tail, tail);
    std::size_t slot = 0;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      const bool joins_next = (missing >> (i + 1) & 1) != 0;
      const bool joins_last = (missing >> i & 1) != 0;
      TimeShape::Slot& each = form.slots[slot];
      each.most = joins_next || joins_last
                      ? TimeShape::any_number
                      : std::max(each.most, most_of(parts[numbers[i]].directive));
      if (joins_next) continue;
      const bool is_mark = add_begin(parts, numbers[i] + 1, each.behind);
      each.is_mark = each.is_mark && is_mark;
      ++slot;
    }
  }

  const LocaleRecord& record_;
  TimeShape& shape_;
};

TimeShape::TimeShape(const LocaleRecord& record) : is_known_(true) {
  TimeShapeMaker maker(record, *this);
  const std::string time = utf8_of(text_of(record.style_0_pattern));
  for (const std::string& each : of_time_pattern(time)) {
    is_known_ = is_known_ && maker.add(each);
  }
  for (const char each : "0123456789zZCT") ends_.add(each);  // of an offset, too: "Z", "UTC", "GMT"
  if (is_known_) {
    maker.add_ends_of(time);
    maker.add_ends_of(utf8_of(text_of(record.datetime_pattern)));
  }
}

[[gnu::always_inline]] inline bool TimeShape::fits_alone(const Slot& slot, std::string_view text,
                                                         NumberRuns::Run number) noexcept {
  if (slot.most == any_number) return true;
  if (number.digits() > 4 || (number.digits() > 2 && slot.most < 100)) return false;
  unsigned value = 0;
  for (std::size_t at = number.begin; at < number.end; ++at) {
    value = value * 10 + static_cast<unsigned>(text[at] - '0');
  }
  return value <= slot.most;
}

// Of a number and what stands behind it.
[[gnu::always_inline]] inline bool TimeShape::fits(const Slot& slot, std::string_view text,
                                                   NumberRuns::Run number) noexcept {
  if (!fits_alone(slot, text, number)) return false;
  std::size_t end = number.end;
  const auto skip_blanks = [&] {
    while (end < text.size() && text[end] == ' ') ++end;
    return end < text.size() ? text[end] : '\0';
  };
  if (!slot.behind.has(skip_blanks())) return false;
  if (!slot.is_mark) return true;
  ++end;
  return end <= text.size() && is_digit(skip_blanks());
}

bool TimeShape::has_head(const Form& form, std::string_view head) noexcept {
  return form.head.has_all(head);
}

bool TimeShape::has_tail(const Form& form, std::string_view tail) noexcept {
  if (!form.tail.has_all(tail)) return false;
  if (tail.size() <= form.longest_tail) return true;
  const auto blanks = static_cast<std::size_t>(std::count(tail.begin(), tail.end(), ' '));
  return tail.size() - blanks <= form.longest_tail;
}

// From the last number on, in which most texts that are none differ.
bool TimeShape::fits(const Form& form, std::string_view text,
                     std::span<const NumberRuns::Run> numbers) noexcept {
  if (!form.is_possible) return false;
  for (std::size_t slot = numbers.size(); slot-- > 0;) {
    if (!fits(form.slots[slot], text, numbers[slot])) return false;
  }
  return has_tail(form, text.substr(numbers.back().end));
}

bool TimeShape::could_end(std::string_view text,
                          std::span<const NumberRuns::Run> numbers) const noexcept {
  const std::size_t count = numbers.size();
  return count <= most_numbers && count > 0 && fits(forms_[count], text, numbers);
}

bool TimeShape::could_begin(std::string_view text,
                            std::span<const NumberRuns::Run> numbers) const noexcept {
  const std::size_t last = numbers.size() - 1;
  if (last >= most_numbers || !forms_[last + 1].is_possible) return false;
  const auto& slots = forms_[last + 1].slots;
  if (!has_head(forms_[last + 1], text.substr(0, numbers.front().begin))) return false;
  for (std::size_t slot = 0; slot < last; ++slot) {
    if (!fits(slots[slot], text, numbers[slot])) return false;
  }
  return fits_alone(slots[last], text, numbers[last]);
}

bool TimeShape::is_hopeless(std::string_view text, const NumberRuns& numbers) const noexcept {
  const std::size_t count = numbers.count;
  if (count == 0 || count > most_numbers) return true;
  if (!is_known_) return false;
  const Form& form = forms_[count];
  const char first = text[std::min(text.find_first_not_of(' '), text.size() - 1)];
  if (!form.lead.has(first) || !fits(form, text, numbers.last(count))) return true;
  return !has_head(form, text.substr(0, numbers.run[0].begin));
}

}  // namespace jwnls::library
