#include "host/locales/subtags.h"

#include <algorithm>
#include <iterator>

namespace jwnls::host {
namespace {

// Locale names are ASCII whatever the process's own locale says.
constexpr bool is_digit(char unit) { return unit >= '0' && unit <= '9'; }
constexpr char to_lower(char unit) {
  return unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit - 'A' + 'a') : unit;
}
constexpr char to_upper(char unit) {
  return unit >= 'a' && unit <= 'z' ? static_cast<char>(unit - 'a' + 'A') : unit;
}
constexpr bool is_letter(char unit) { return to_lower(unit) >= 'a' && to_lower(unit) <= 'z'; }
constexpr bool is_letter_or_digit(char unit) { return is_letter(unit) || is_digit(unit); }

constexpr bool is_script(std::string_view subtag) {
  return subtag.size() == 4 && std::ranges::all_of(subtag, is_letter);
}
constexpr bool is_region(std::string_view subtag) {
  return (subtag.size() == 2 && std::ranges::all_of(subtag, is_letter)) ||
         (subtag.size() == 3 && std::ranges::all_of(subtag, is_digit));
}
constexpr bool is_variant(std::string_view subtag) {
  const bool right_length =
      (subtag.size() >= 5 && subtag.size() <= 8) || (subtag.size() == 4 && is_digit(subtag[0]));
  return right_length && std::ranges::all_of(subtag, is_letter_or_digit);
}

// The text up to the next "_", and `rest` behind it.
std::string_view take_subtag(std::string_view& rest) noexcept {
  const std::size_t end = std::min(rest.find('_'), rest.size());
  const std::string_view subtag = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return subtag;
}

struct Modifier {
  std::string_view name;
  std::string_view script;  // empty: none
  bool dropped;             // the locale data do not tell it apart
};
constexpr Modifier modifiers[] = {
    {"cyrillic", "Cyrl", false}, {"devanagari", "Deva", false}, {"euro", {}, false},
    {"iqtelif", "Latn", false},  {"latin", "Latn", false},      {"valencia", {}, true},
};

}  // namespace

bool split_subtags(std::string_view name, Subtags& subtags) noexcept {
  if (name.ends_with('_')) return false;
  std::string_view rest = name;
  subtags = {};
  subtags.language = take_subtag(rest);
  if (subtags.language.size() < 2 || subtags.language.size() > 3 ||
      !std::ranges::all_of(subtags.language, is_letter)) {
    return false;
  }
  std::string_view behind = rest;
  if (const std::string_view subtag = take_subtag(behind); is_script(subtag)) {
    subtags.script = subtag;
    rest = behind;
  }
  behind = rest;
  if (const std::string_view subtag = take_subtag(behind); is_region(subtag)) {
    subtags.region = subtag;
    rest = behind;
  }
  subtags.variants = rest;
  while (!rest.empty()) {
    if (!is_variant(take_subtag(rest))) return false;
  }
  return true;
}

SubtagName::SubtagName(const Subtags& subtags) noexcept {
  for (const std::string_view subtag :
       {subtags.language, subtags.script, subtags.region, subtags.variants}) {
    append(subtag);
  }
}

void SubtagName::append(std::string_view subtag) noexcept {
  if (subtag.empty() || length_ + 1 + subtag.size() > capacity) return;
  if (length_ != 0) units_[length_++] = '_';
  length_ += subtag.copy(units_ + length_, subtag.size());
}

bool WrittenName::read(std::u16string_view written) noexcept {
  const auto is_ascii = [](char16_t unit) { return unit > 0x20 && unit < 0x7F; };
  if (written.size() > capacity || !std::ranges::all_of(written, is_ascii)) return false;
  std::ranges::transform(written, units_,
                         [](char16_t unit) { return to_lower(static_cast<char>(unit)); });

  std::string_view name(units_, written.size());
  std::string_view modifier;
  if (const std::size_t at = name.find('@'); at != std::string_view::npos) {
    modifier = name.substr(at + 1);
    name = name.substr(0, at);
    if (modifier.empty()) return false;
  }
  if (const std::size_t dot = name.find('.'); dot != std::string_view::npos) {
    if (dot + 1 == name.size()) return false;
    name = name.substr(0, dot);
  }
  if (name == "c" || name == "posix") {
    return modifier.empty() && split_subtags("en_US_POSIX", subtags_);
  }
  std::size_t length = name.size();
  std::replace(units_, units_ + length, '-', '_');
  drop_extensions(length);
  correct_case(length);
  return split_subtags({units_, length}, subtags_) &&
         (modifier.empty() || apply_modifier(modifier));
}

// An extension begins with a subtag of one character, and has at least one more behind it.
void WrittenName::drop_extensions(std::size_t& length) noexcept {
  for (std::size_t i = 1; i + 3 < length; ++i) {
    if (units_[i] == '_' && is_letter_or_digit(units_[i + 1]) && units_[i + 2] == '_') {
      length = i;
      dropped_ = true;
    }
  }
}

// "de", "Latn", "DE", "POSIX"; the units are in lower case so far.
void WrittenName::correct_case(std::size_t length) noexcept {
  std::string_view rest(units_, length);
  take_subtag(rest);
  while (!rest.empty()) {
    char* first = units_ + (length - rest.size());
    const std::string_view subtag = take_subtag(rest);
    char* upper_end = is_script(subtag) ? first + 1 : first + subtag.size();
    std::transform(first, upper_end, first, to_upper);
  }
}

bool WrittenName::apply_modifier(std::string_view modifier) noexcept {
  const auto* known = std::ranges::find(modifiers, modifier, &Modifier::name);
  if (known == std::end(modifiers)) {
    const std::size_t equals = modifier.find('=');
    dropped_ = true;
    return equals != std::string_view::npos && equals != 0 && equals + 1 != modifier.size();
  }
  dropped_ = dropped_ || known->dropped;
  if (known->script.empty()) return true;
  if (!subtags_.script.empty() && subtags_.script != known->script) return false;
  subtags_.script = known->script;
  return true;
}

}  // namespace jwnls::host
