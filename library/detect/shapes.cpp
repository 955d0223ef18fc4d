#include "library/detect/shapes.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <iterator>

#include "library/columns/read_column.h"
#include "library/dates/date_text.h"
#include "library/locale_data/date_characters.h"
#include "library/numbers/characters.h"
#include "library/texts/folding.h"
#include "library/texts/longest_text.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

constexpr std::size_t sample_size = 64;

// With more digits, and more than two of an exponent, a number may be beyond the doubles.
constexpr std::size_t most_digits = 200;
constexpr std::size_t most_exponent_digits = 2;

std::size_t write_text(std::string_view text, char* out) noexcept {
  *out = '=';  // no shape of fewer bytes begins so
  std::memcpy(out + 1, text.data(), text.size());
  return text.size() + 1;
}

// "1.234,50" is "9.999,99", and so are numbers in the digits of another script: of these the
// script's zero stands in front of each. A number led by 0 is another shape: it has no groups.
class NumberShape {
 public:
  NumberShape(std::string_view text, char* out) noexcept : text_(text), out_(out) {}

  std::size_t write() noexcept {
    while (at_ < text_.size()) {
      const char each = text_[at_];
      if (is_digit(each)) {
        put_digit(each == '0');
        ++at_;
      } else if (is_ascii(each)) {
        // Behind an "e" and maybe a sign there are the digits of an exponent.
        const bool is_e = (each | 0x20) == 'e' && digits_ > 0;
        is_exponent_ = is_e || (is_exponent_ && (each == '-' || each == '+'));
        if (is_e) exponent_digits_ = 0;
        out_[size_++] = each;
        ++at_;
      } else {
        take_beyond_ascii();
      }
      if (exponent_digits_ > most_exponent_digits) return write_text(text_, out_);
    }
    return digits_ <= most_digits && (text_.empty() || text_[0] != '=') ? size_
                                                                        : write_text(text_, out_);
  }

 private:
  void put_digit(bool is_zero) noexcept {
    out_[size_++] = digits_ == 0 && is_zero ? '0' : '9';
    ++digits_;
    if (is_exponent_) ++exponent_digits_;
  }
  void take_beyond_ascii() noexcept {
    const Utf8Character next = first_character(text_.substr(at_));
    const Digit digit = digit_of(next.value);
    if (digit.zero != 0) {
      char zero[4];
      const std::size_t bytes = encode_utf8(digit.zero, zero);
      std::memcpy(out_ + size_, zero, bytes);
      size_ += bytes;
      put_digit(digit.value == 0);
    } else {
      is_exponent_ = false;
      std::memcpy(out_ + size_, text_.data() + at_, next.bytes);
      size_ += next.bytes;
    }
    at_ += next.bytes;
  }

  const std::string_view text_;
  char* const out_;
  std::size_t at_ = 0;
  std::size_t size_ = 0;
  std::size_t digits_ = 0;
  bool is_exponent_ = false;
  std::size_t exponent_digits_ = 0;
};

// What a number of one or two digits can be in a date or time: months by their length, hours,
// days by the months that have them, minutes, years.
char bucket_of(int value) noexcept {
  constexpr char months[] = "zlflslsllslsl";
  if (value <= 12) return months[value];
  if (value <= 23) return 'm';
  if (value <= 28) return 'n';
  if (value <= 31) return value == 29 ? 'o' : value == 30 ? 'p' : 'q';
  return value <= 59 ? 't' : 'u';
}

char bucket_of_year(int year) noexcept {
  constexpr int begins[] = {1582, 1900, 2101, 2400, 2701};
  char bucket = 'A';
  for (const int begin : begins) bucket = static_cast<char>(bucket + (year >= begin ? 1 : 0));
  return bucket;
}

// Hours by the half of the day that they can be in; minutes and seconds by whether they are some.
char bucket_of_clock(int value, bool behind_colon) noexcept {
  if (behind_colon) return value <= 59 ? 'm' : 'u';
  return value == 0 ? 'z' : value <= 12 ? 'h' : value <= 23 ? 'H' : value == 24 ? 'w' : 'u';
}

// The numbers of a date as they are met.
class DateShape {
 public:
  DateShape(std::string_view text, char* out, const FindWeekdayWords& weekdays) noexcept
      : text_(text), out_(out), weekdays_(weekdays) {}

  std::size_t write() {
    std::size_t words = 0;
    std::size_t runs = 0;
    for (std::size_t at = 0; at < text_.size();) {
      if (is_digit(text_[at])) {
        ++runs;
        if (!take_number(at)) return write_text(text_, out_);
      } else if (is_letter(text_[at]) && !is_no_break_blank(text_.substr(at))) {
        ++words;
        while (at < text_.size() && is_letter(text_[at])) out_[size_++] = text_[at++];
      } else {
        out_[size_++] = text_[at++];
      }
    }
    // A weekday may be among several words, or beside three numbers; a number alone may be a
    // date or time without marks.
    const std::size_t of_date = runs - of_clock_;
    const bool may_have_weekday = of_date > 0 && (words > 1 || (words == 1 && of_date > 2));
    if (runs < 2) return write_text(text_, out_);
    if (!may_have_weekday || !has_weekday()) return size_;
    return put_phase(of_date) ? size_ : write_text(text_, out_);
  }

 private:
  // What decides which weekday a date is, of a day, a year, and a month that has a name, or of
  // three numbers. False where that is not known, as years may be counted otherwise.
  bool put_phase(std::size_t of_date) noexcept {
    if (years_ != 1 || year_ < 1583 || year_ > 2399 || of_date != kept_ + 1) return false;
    const int before = year_ - 1;
    const int of_year = before + before / 4 - before / 100 + before / 400;
    const bool is_leap = year_ % 4 == 0 && (year_ % 100 != 0 || year_ % 400 == 0);
    // The days in front of each month, as far as weekdays go; what is no month is no date either.
    constexpr int months[] = {0, 0, 3, 3, 6, 1, 4, 6, 2, 5, 0, 3, 5};
    const auto put_weekday = [&](int month, int day) {
      const int leap_day = is_leap && month > 2 ? 1 : 0;
      const int days = month <= 12 ? of_year + months[month] + leap_day + day : 0;
      put(static_cast<char>('0' + days % 7));
    };
    put('w');
    put(is_leap ? 'L' : 'C');
    if (kept_ == 1) {
      put_weekday(0, values_[0]);
    } else if (kept_ == 2) {
      // Behind a year in front the month comes first, always.
      put_weekday(values_[0], values_[1]);
      if (!is_year_first_) put_weekday(values_[1], values_[0]);
    }
    return kept_ == 1 || kept_ == 2;
  }
  // Or something that may be one.
  [[nodiscard]] bool has_weekday() const {
    // Words behind the three numbers of a date, of which the last is a weekday's name elsewhere.
    constexpr std::string_view marks[][3] = {{"年", "月", "日"}, {"년", "월", "일"}};
    std::size_t marked = 0;
    for (std::size_t at = 0; at < text_.size(); ++at) {
      if (!is_letter(text_[at]) || is_no_break_blank(text_.substr(at))) continue;
      const std::size_t begin = at;
      while (at < text_.size() && is_letter(text_[at])) ++at;
      const std::string_view word = text_.substr(begin, at - begin);
      const auto is_mark = [&](const auto& each) {
        return marked < std::size(each) && word == each[marked];
      };
      if (begin > 0 && is_digit(text_[begin - 1]) &&
          std::any_of(std::begin(marks), std::end(marks), is_mark)) {
        ++marked;
      } else if (may_have_weekday(word)) {
        return true;
      }
    }
    return marked % std::size(marks[0]) != 0;
  }
  [[nodiscard]] bool may_have_weekday(std::string_view word) const {
    // Such scripts write names without blanks between them; the others of three bytes are marks,
    // blanks and symbols.
    const auto is_of_such = [](char each) {
      return static_cast<unsigned char>(each) >= 0xE0 && each != '\xE2';
    };
    char folded[longest_text];
    const auto size = fold_text(word, folded, sizeof folded);
    if (!size || std::any_of(word.begin(), word.end(), is_of_such)) return true;
    const std::string_view letters(folded, *size);
    for (std::size_t at = 0; at < letters.size(); ++at) {
      const std::size_t begin = at;
      while (at < letters.size() && is_letter(letters[at])) ++at;
      if (weekdays_().count(std::string(letters.substr(begin, at - begin))) != 0) return true;
    }
    return false;
  }
  bool take_number(std::size_t& at) noexcept {
    const std::size_t begin = at;
    int value = 0;
    while (at < text_.size() && is_digit(text_[at])) {
      if (at - begin < 4) value = value * 10 + (text_[at] - '0');
      ++at;
    }
    const std::size_t digits = at - begin;
    if (digits <= 2 && is_of_clock(begin, at)) {
      ++numbers_;
      ++of_clock_;
      put('c');
      put(static_cast<char>('0' + digits));
      put(bucket_of_clock(value, begin > 0 && text_[begin - 1] == ':'));
      return true;
    }
    if (digits == 4) {
      put(bucket_of_year(value));
      is_year_first_ = kept_ == 0;
      year_ = value;
      ++years_;
      return true;
    }
    if (digits <= 2) return take_short(value, digits);
    // Dates and times without marks have six or eight digits; other numbers are fractions of a
    // second, or nothing that is read.
    const bool is_fraction = numbers_ > 2 && (text_[begin - 1] == '.' || text_[begin - 1] == ',');
    put('x');
    put(static_cast<char>('0' + digits % 10));
    return is_fraction || (digits != 6 && digits != 8);
  }
  // A colon stands only between the numbers of a time: the order of dates does not matter to them.
  [[nodiscard]] bool is_of_clock(std::size_t begin, std::size_t end) const noexcept {
    return (begin > 0 && text_[begin - 1] == ':') || (end < text_.size() && text_[end] == ':');
  }
  bool take_short(int value, std::size_t digits) noexcept {
    if (value == 29 || kept_ == sizeof values_) return false;  // which year it is matters
    put(digits == 1 ? '1' : '2');
    put(bucket_of(value));
    for (std::size_t i = 0; i < kept_; ++i) {
      if (values_[i] == value) {
        put(static_cast<char>('0' + i));  // the first that is equal
        break;
      }
    }
    values_[kept_++] = static_cast<std::uint8_t>(value);
    ++numbers_;
    return true;
  }
  void put(char each) noexcept { out_[size_++] = each; }

  const std::string_view text_;
  char* const out_;
  std::size_t size_ = 0;
  const FindWeekdayWords& weekdays_;
  std::size_t numbers_ = 0;
  std::size_t of_clock_ = 0;  // of the numbers
  std::size_t years_ = 0;     // numbers of four digits
  int year_ = 0;              // the last
  bool is_year_first_ = false;
  std::uint8_t values_[8];  // of those that may be a date's
  std::size_t kept_ = 0;
};

// Whether a text has digits, and beside them something that is no part of a plain number.
bool has_word_and_digit(std::string_view text) noexcept {
  bool digit = false;
  bool word = false;
  while (!text.empty()) {
    const Utf8Character next = first_character(text);
    const char32_t c = next.value;
    if (digit_of(c).zero != 0) {
      digit = true;
    } else if (c >= 0x80 || c == U'$' || c == U'%' || is_letter(static_cast<char>(c))) {
      word = word || (!jwnls::library::is_blank(c) && !is_mark(c) && sign_of(c, true) == 0 &&
                      separator_of(c) == Separator::none);
    }
    text.remove_prefix(next.bytes);
  }
  return digit && word;
}

}  // namespace

std::size_t write_shape(Family family, std::string_view text, char* out,
                        const FindWeekdayWords& weekdays) {
  return family == Family::numbers ? NumberShape(text, out).write()
                                   : DateShape(text, out, weekdays).write();
}

Shapes::Shapes(const jwnls_texts& texts, Family family, const FindWeekdayWords& weekdays)
    : slots_(1024) {
  const Texts column(texts);
  const std::size_t stride = std::max<std::size_t>(1, column.count() / sample_size);
  char key[shape_room];
  for (std::size_t i = 0; i < column.count(); ++i) {
    const jwnls_text text = column.at(i);
    if (text.bytes == nullptr) continue;
    // Too long to be looked at: dirty, all of one shape.
    constexpr std::string_view long_text = "?";
    const bool is_long = text.length > longest_text;
    const std::string_view inner = is_long ? long_text : trimmed({text.bytes, text.length});
    if (inner.empty()) continue;
    const std::size_t size = write_shape(family, inner, key, weekdays);
    const std::size_t shape = add(inner, {key, size}, i);
    if (i % stride == 0 && sample_.size() < sample_size) sample_.push_back(shape);
  }
  for (const Shape& shape : shapes_) has_words_ = has_words_ || has_word_and_digit(shape.text);
}

std::size_t Shapes::add(std::string_view text, std::string_view key, std::size_t index) {
  ++values_;
  const std::uint64_t hash = std::hash<std::string_view>()(key);
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
    Slot& slot = slots_[at];
    if (slot.shape == 0) {
      shapes_.push_back({text, index, 1});
      slot = {hash, shapes_.size(), keys_.size(), key.size()};
      keys_.append(key);
      if (2 * shapes_.size() > slots_.size()) grow();
      return shapes_.size() - 1;
    }
    if (slot.hash == hash && std::string_view(keys_).substr(slot.key, slot.key_size) == key) {
      ++shapes_[slot.shape - 1].count;
      return slot.shape - 1;
    }
  }
}

void Shapes::grow() {
  std::vector<Slot> larger(4 * slots_.size());
  const std::size_t mask = larger.size() - 1;
  for (const Slot& slot : slots_) {
    if (slot.shape == 0) continue;
    std::size_t at = slot.hash & mask;
    while (larger[at].shape != 0) at = (at + 1) & mask;
    larger[at] = slot;
  }
  slots_.swap(larger);
}

}  // namespace jwnls::library
