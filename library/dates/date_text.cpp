#include "library/dates/date_text.h"

#include <cstring>

#include "library/dates/named_date.h"
#include "library/texts/folding.h"

namespace jwnls::library {
namespace {

// Whether the quick way sees in a text what the full way sees: ASCII, letters of two bytes and
// U+00A0.
bool is_plain(std::string_view text) noexcept {
  for (std::size_t at = 0; at < text.size(); ++at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    if (lead < 0x80) continue;
    if (lead < 0xC2 || lead >= 0xE0 || at + 1 == text.size()) return false;
    const auto next = static_cast<unsigned char>(text[++at]);
    if ((next & 0xC0) != 0x80) return false;
    const std::uint16_t folded = folded_letters[(lead & 0x1FU) << 6 | (next & 0x3FU)];
    const bool is_one = folded >= 0x80 ? folded < 0x800 : folded >= 'a' && folded <= 'z';
    if (!is_one && !is_no_break_blank(text.substr(at - 1))) return false;
  }
  return true;
}

// Looks up a run of letters of a text as it is written, folding it on the way. It tells of runs
// that are a name or a word as a whole; all others are for the full way.
class QuickLookUp {
 public:
  explicit QuickLookUp(const DateLayout& layout) noexcept : layout_(layout) {}

  Word operator()(std::string_view rest) noexcept {
    folded_size_ = 0;
    std::memset(folded_, 0, 8);
    std::size_t at = 0;
    bool is_one_word = true;  // in a script that writes blanks between words
    while (at < rest.size() && folded_size_ + 4 <= sizeof folded_) {
      const char each = rest[at];
      if (static_cast<unsigned char>((each | 0x20) - 'a') < 26) {
        folded_[folded_size_++] = static_cast<char>(each | 0x20);
        ++at;
      } else if (is_letter(each)) {
        if (is_no_break_blank(rest.substr(at))) break;
        const std::size_t bytes = fold_letter(rest.substr(at));
        if (bytes == 0) return {};
        is_one_word = is_one_word && bytes == 2;
        at += bytes;
      } else if (at > 0 && end_of_run(rest.substr(0, at + 2), at) > at) {
        folded_[folded_size_++] = each;
        is_one_word = false;
        ++at;
      } else {
        break;
      }
    }
    if (at == 0 || folded_size_ + 4 > sizeof folded_) return {};
    const std::string_view folded(folded_, folded_size_);
    std::uint64_t key;
    std::memcpy(&key, folded_, 8);
    const NameMeaning* const meaning = layout_.names->find(key, folded);
    // The full way knows names of several words, and names that a part of a run is.
    if (meaning != nullptr) return meaning->begins_longer ? Word{} : Word{at, folded, meaning};
    return is_one_word || is_ordinal(folded) ? Word{at, folded, nullptr} : Word{};
  }

  [[nodiscard]] static bool knows(std::string_view gap) noexcept {
    for (const char each : gap) {
      if (is_letter(each)) return false;
    }
    return true;
  }

 private:
  // Whether one may stand here is asked later.
  [[nodiscard]] bool is_ordinal(std::string_view folded) const noexcept {
    for (const std::string_view each : layout_.ordinals) {
      if (!each.empty() && each == folded) return true;
    }
    return false;
  }

  // Folds a character of two or three bytes and gives its bytes; 0: the full way has to.
  std::size_t fold_letter(std::string_view rest) noexcept {
    const auto lead = static_cast<unsigned char>(rest[0]);
    const auto follows = [rest](std::size_t i) {
      return i < rest.size() && (static_cast<unsigned char>(rest[i]) & 0xC0) == 0x80;
    };
    if (lead >= 0xC2 && lead < 0xE0 && follows(1)) {
      const std::uint16_t folded =
          folded_letters[(lead & 0x1FU) << 6 | (static_cast<unsigned char>(rest[1]) & 0x3FU)];
      if (folded == 0) return 2;
      if (folded < 0x80) {
        if (!is_letter(static_cast<char>(folded)) && folded != '\'') return 0;
        folded_[folded_size_++] = static_cast<char>(folded);
        return 2;
      }
      if (folded >= 0x800) return 0;
      folded_[folded_size_++] = static_cast<char>(0xC0U | folded >> 6);
      folded_[folded_size_++] = static_cast<char>(0x80U | (folded & 0x3FU));
      return 2;
    }
    // Of three bytes: the scripts of South Asia, and those of East Asia, whose letters have no
    // cases. What folds to something else among them is not found, which leaves it to the full way.
    const bool kept = lead == 0xE0 || (lead >= 0xE3 && lead <= 0xED);
    if (!kept || !follows(1) || !follows(2)) return 0;
    std::memcpy(folded_ + folded_size_, rest.data(), 3);
    folded_size_ += 3;
    return 3;
  }

  const DateLayout& layout_;
  char folded_[64];
  std::size_t folded_size_ = 0;
};

// Looks up the longest name or word that a folded text goes on with.
class FullLookUp {
 public:
  explicit FullLookUp(const DateLayout& layout) noexcept : names_(*layout.names) {}

  Word operator()(std::string_view rest) const noexcept {
    std::size_t size = 0;
    const NameMeaning* const meaning = names_.longest_at(rest, size);
    if (meaning == nullptr) size = end_of_run(rest, 0);
    if (size == 0) size = 1;  // an apostrophe
    return {size, rest.substr(0, size), meaning};
  }
  [[nodiscard]] static bool knows(std::string_view) noexcept { return true; }

 private:
  const DateNames& names_;
};

// The commonest of all: "4.9.2018", "04/09/2018", in the layout's order. False for everything else,
// and for what is no date.
bool read_plain_numbers(const DateLayout& layout, std::string_view text, DateRead& read) noexcept {
  if (text.size() < 8 || text.size() > 10 || layout.order == order_ymd || layout.buddhist) {
    return false;
  }
  std::size_t at = 0;
  const auto one_or_two = [&] {
    std::int32_t value = text[at++] - '0';
    if (is_digit(text[at])) value = value * 10 + (text[at++] - '0');
    return value;
  };
  if (!is_digit(text[0])) return false;
  const std::int32_t first = one_or_two();
  const char mark = text[at++];
  if ((mark != '.' && mark != '/' && mark != '-') || !is_digit(text[at])) return false;
  const std::int32_t second = one_or_two();
  if (text[at++] != mark || text.size() - at != 4) return false;
  std::int32_t year = 0;
  for (; at < text.size(); ++at) {
    if (!is_digit(text[at])) return false;
    year = year * 10 + (text[at] - '0');
  }
  const std::int32_t day = layout.order == order_mdy ? second : first;
  const std::int32_t month = layout.order == order_mdy ? first : second;
  if (year < first_year || month < 1 || month > 12 || day < 1 ||
      (day > 28 && day > days_in_month(year, month))) {
    return false;
  }
  read.date = {year, month, day};
  read.facts = day > 12 ? JWNLS_DECIDES : day != month ? JWNLS_TWO_WAYS : 0;
  return true;
}

}  // namespace

std::string_view trimmed(std::string_view text) noexcept {
  for (;;) {
    if (!text.empty() && is_blank(text.front())) {
      text.remove_prefix(1);
    } else if (is_no_break_blank(text)) {
      text.remove_prefix(2);
    } else {
      break;
    }
  }
  for (;;) {
    if (!text.empty() && is_blank(text.back())) {
      text.remove_suffix(1);
    } else if (text.size() >= 2 && is_no_break_blank(text.substr(text.size() - 2))) {
      text.remove_suffix(2);
    } else {
      return text;
    }
  }
}

bool is_blank_text(std::string_view text) noexcept {
  char folded[longest_text];
  const auto size = fold_text(text, folded, sizeof folded);
  return size && trimmed({folded, *size}).empty();
}

DateRead quick_date(const DateLayout& layout, std::string_view text) noexcept {
  DateRead plain;
  if (read_plain_numbers(layout, text, plain)) return plain;
  DateRead named;
  if (!layout.months_are_numbers && read_named_date(layout, text, named)) return named;
  QuickLookUp look_up(layout);
  DateRead read = DateGrammar<QuickLookUp>(layout, text, look_up).read();
  // The quick way does not see names with digits.
  if (read.refusal != Refusal::none && (layout.names->has_numbered() || !is_plain(text))) {
    read.refusal = Refusal::undecided;
  }
  return read;
}

namespace {

DateRead folded_date(const DateLayout& layout, std::string_view text, bool with_place) noexcept {
  char folded[folded_room];
  std::uint16_t places[folded_room + 1];
  const auto size = fold_text(text, folded, sizeof folded, with_place ? places : nullptr);
  if (!size) {
    DateRead read;
    read.refusal = text.size() > folded_room / 3 ? Refusal::too_long : Refusal::not_utf8;
    return read;
  }
  const std::string_view all(
      folded, layout.names->replace_numbered(folded, *size, with_place ? places : nullptr));
  const std::string_view inner = trimmed(all);
  DateRead read;
  if (inner.empty()) {
    read.refusal = Refusal::blank;
    return read;
  }
  FullLookUp look_up(layout);
  read = DateGrammar<FullLookUp>(layout, inner, look_up).read();
  if (with_place) read.place = places[static_cast<std::size_t>(inner.data() - folded) + read.place];
  return read;
}

}  // namespace

DateRead full_date(const DateLayout& layout, std::string_view text, bool with_place) noexcept {
  const DateRead read = folded_date(layout, text, with_place);
  if (read.refusal != Refusal::two_months || !layout.names->has_exact()) return read;
  char copy[folded_room];
  if (text.size() > sizeof copy) return read;
  std::memcpy(copy, text.data(), text.size());
  const std::size_t size = layout.names->replace_exact(copy, text.size());
  return size == text.size() ? read : folded_date(layout, {copy, size}, with_place);
}

DateRead read_date_text(const DateLayout& layout, std::string_view text) noexcept {
  const DateRead read = quick_date(layout, text);
  return read.refusal == Refusal::undecided ? full_date(layout, text) : read;
}

}  // namespace jwnls::library
