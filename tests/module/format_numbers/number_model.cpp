#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iomanip>
#include <limits>
#include <optional>

#include "tests/module/format_numbers/number_call.h"

namespace jwnls::test {

std::string printable(const std::u16string& text) {
  std::string result = "'";
  for (const char16_t unit : text) {
    char escaped[8];
    std::snprintf(escaped, sizeof escaped, unit >= 0x20 && unit < 0x7F ? "%c" : "\\u%04X", unit);
    result += escaped;
  }
  return result + "'";
}

std::ostream& operator<<(std::ostream& out, const NumberCall& call) {
  return out << std::setprecision(17) << call.value << " (" << std::hex
             << std::bit_cast<std::uint64_t>(call.value) << "), flags " << call.flags << std::dec
             << ", width " << call.width << ", decimals " << call.decimals << ", capacity "
             << call.capacity << (call.options == nullptr ? "" : ", options");
}

namespace {

using namespace number_flags;

// Digits with the point behind the first `integers` of them; a value below 1 has none.
struct Decimal {
  std::string digits;
  int integers;

  // Rounds half up to the first `kept` digits. True when the rounding gained a digit.
  bool round(int kept) {
    const auto size = static_cast<std::size_t>(kept);
    const bool up = digits[size] > '4';
    digits.resize(size);
    if (!up) return false;
    for (std::size_t i = size; i-- > 0; digits[i] = '0') {
      if (digits[i] != '9') return ++digits[i], false;
    }
    digits.insert(digits.begin(), '1');
    ++integers;
    return true;
  }
};

// Every digit of a double: the run-time library prints them exactly when asked for all.
Decimal expansion(double magnitude) {
  static char text[1500];
  std::snprintf(text, sizeof text, "%.1074f", magnitude);
  Decimal exact{text, 0};
  exact.integers = static_cast<int>(exact.digits.find('.'));
  exact.digits.erase(static_cast<std::size_t>(exact.integers), 1);
  if (exact.digits[0] == '0') {
    exact.digits.erase(0, 1);
    exact.integers = 0;
  }
  exact.digits.append(400, '0');
  return exact;
}

struct Scientific {
  Decimal mantissa;  // one digit before the point
  int exponent;
};

Scientific scientific(double magnitude) {
  Decimal exact = expansion(magnitude);
  if (magnitude == 0) return {{exact.digits, 1}, 0};
  const auto zeros = exact.digits.find_first_not_of('0');
  return {{exact.digits.substr(zeros), 1}, exact.integers - 1 - static_cast<int>(zeros)};
}

void round(Scientific& number, int decimals) {
  if (!number.mantissa.round(decimals + 1)) return;
  number.mantissa.digits.pop_back();
  number.mantissa.integers = 1;
  ++number.exponent;
}

// The digits of a number as text, its point still "." and its integer digits still ungrouped.
struct Plain {
  std::string integers, fraction, suffix;
};

std::u16string widened(const std::string& text) { return {text.begin(), text.end()}; }

// Puts separators between integer digits; nothing when the first size is 0.
std::optional<std::u16string> grouped(const LocaleRecord& record, const std::string& digits) {
  std::u16string pattern(grouping_of(record));
  const auto number = [&](long otherwise) {
    const auto end = std::min(pattern.find_first_not_of(u"0123456789"), pattern.size());
    const std::string read(pattern.begin(), pattern.begin() + static_cast<long>(end));
    pattern.erase(0, end);
    return end == 0 ? otherwise : end > 9 ? 1'000'000'000 : std::stol(read);
  };
  long size = number(3);
  if (size == 0) return std::nullopt;
  std::u16string text;
  long left = size;
  for (std::size_t i = digits.size(); i-- > 0; --left) {
    if (left == 0) {
      text.insert(text.begin(), record.grouping_symbol);
      if (!pattern.empty()) {
        pattern.erase(0, 1);
        const long next = number(0);
        next == 0 ? pattern.clear() : void(size = next);
      }
      left = size;
    }
    text.insert(text.begin(), static_cast<char16_t>(digits[i]));
  }
  return text;
}

struct Model {
  const LocaleRecord& record;
  NumberCall call;
  std::int64_t width = std::abs(std::int64_t{call.width});
  std::int64_t capacity = std::max<std::int64_t>(call.capacity, 0);
  bool left = call.width < 0 || asks(number_flags::left);
  double magnitude = std::abs(call.value);
  bool negative = call.value < 0;

  bool asks(std::uint32_t bits) const { return (call.flags & bits) != 0; }
  Outcome<char16_t> stars(std::int64_t count, std::int64_t length, Status status) const {
    return {status, length, std::u16string(static_cast<std::size_t>(count), u'*')};
  }

  Outcome<char16_t> format();
  Outcome<char16_t> missing(bool aligned) const;
  Outcome<char16_t> place(std::u16string text, Status status) const;
  Outcome<char16_t> plain(std::uint32_t kind) const;
  Outcome<char16_t> bound(std::uint32_t kind);
};

Outcome<char16_t> Model::format() {
  std::uint32_t kind = general;
  if (asks(exponent_only)) {
    kind = exponent_only;
  } else if (asks(bound_exponent)) {
    kind = call.decimals > 0 ? bound_exponent : call.decimals < 0 ? decimal_aligned : fixed;
    if (call.decimals < 0) call.decimals = call.decimals == INT32_MIN ? INT32_MAX : -call.decimals;
  } else if (asks(decimal_aligned)) {
    kind = decimal_aligned;
    call.decimals = std::max(call.decimals, 0);
  } else if (asks(best_fit) || call.decimals == 99) {
    kind = best_fit;
  } else if (!asks(general | general_capital)) {
    kind = asks(exponent_small | exponent_capital) ? exponent_small
           : asks(fraction_only)                   ? fraction_only
           : asks(fixed | integer_first)           ? fixed
                                                   : general;
  }
  if (std::isnan(call.value)) return missing(kind == decimal_aligned);
  if (std::isinf(call.value)) {
    const std::u16string text = negative ? u"-Inf" : u"Inf";
    const std::int64_t room = std::min(width, capacity), size = std::ssize(text);
    if (room < size) return stars(room, room, Status::does_not_fit);
    return {Status::ok, size, text};
  }
  if (kind >= best_fit) return bound(kind);
  return plain(kind);
}

Outcome<char16_t> Model::missing(bool aligned) const {
  std::uint64_t bits = std::bit_cast<std::uint64_t>(call.value);
  if (bits >> 48 != 0xFFFF) bits = 0xFFFFD10000000000;
  char16_t character = static_cast<std::uint8_t>(~(bits >> 40));
  if (character == u'.' && call.options != nullptr && (call.options->flags & 1) != 0) {
    character = call.options->missing_symbol;
    if (character == 0) return {Status::no_missing_symbol, untouched_length, u""};
  } else if (character == u'-') {
    character = u'_';
  }
  if (!aligned) {
    Model blank_filled = *this;
    blank_filled.call.flags &= ~zero_fill;
    return blank_filled.place(std::u16string(1, character), Status::ok);
  }
  const std::int64_t length = std::max<std::int64_t>(width, 1);
  if (length > capacity) return stars(std::min(width, capacity), length, Status::does_not_fit);
  std::u16string field(static_cast<std::size_t>(capacity), u' ');
  const std::int64_t units_digit = width - call.decimals - 1;
  field[static_cast<std::size_t>(units_digit < 0 ? length - 1 : units_digit)] = character;
  return {Status::ok, length, field};
}

Outcome<char16_t> Model::place(std::u16string text, Status status) const {
  const std::int64_t size = std::ssize(text);
  if (size > capacity) return stars(std::min(capacity, width), size, Status::does_not_fit);
  if (width > capacity) return stars(capacity, width, Status::does_not_fit);
  if (width > size) {
    text.insert(left ? text.size() : 0, static_cast<std::size_t>(width - size), u' ');
  }
  return {status, std::ssize(text), text};
}

Outcome<char16_t> Model::plain(std::uint32_t kind) const {
  int decimals = call.decimals < 0 ? 6 : std::min(call.decimals, 350);
  if (kind == general && decimals == 0) decimals = 6;
  Decimal exact = expansion(magnitude);
  if (magnitude != 0 && exact.integers + decimals > 350) {
    return {Status::not_possible, untouched_length, u""};
  }
  Scientific number = scientific(magnitude);
  const int exponent = number.exponent;
  const bool shows_exponent =
      kind == exponent_small || (kind == general && (exponent < -4 || exponent >= decimals));
  if (kind == general) decimals -= shows_exponent ? 1 : exponent + 1;
  Plain text;
  if (shows_exponent) {
    round(number, decimals);
    text.integers = number.mantissa.digits.substr(0, 1);
    text.fraction = number.mantissa.digits.substr(1);
    const bool capital =
        asks(general_capital) || (kind == exponent_small && asks(exponent_capital));
    char suffix[8];
    std::snprintf(suffix, sizeof suffix, "e%+03d", number.exponent);
    text.suffix = suffix;
    if (capital) text.suffix[0] = 'E';
  } else {
    if (kind == fraction_only) {
      exact.digits.erase(0, static_cast<std::size_t>(exact.integers));
      exact.integers = 0;
    }
    exact.round(exact.integers + decimals);
    text.integers = exact.digits.substr(0, static_cast<std::size_t>(exact.integers));
    text.fraction = exact.digits.substr(static_cast<std::size_t>(exact.integers));
    if (text.integers.empty()) text.integers = "0";
  }
  if (kind == general && !asks(trailing_zeros)) {
    text.fraction.erase(text.fraction.find_last_not_of('0') + 1);
  }
  std::u16string tail;
  if (!text.fraction.empty() || asks(point)) tail = record.decimal_symbol;
  tail += widened(text.fraction + text.suffix);
  const bool fills = asks(zero_fill) && !left && width > 0;
  const std::u16string sign_text = negative                                   ? u"-"
                                   : asks(sign)                               ? u"+"
                                   : asks(blank) && !left && !asks(zero_fill) ? u" "
                                                                              : u"";
  Status status = Status::ok;
  std::u16string body = widened(text.integers) + tail;
  if (asks(group) && text.suffix.empty()) {
    const auto digits = grouped(record, text.integers);
    if (digits && std::ssize(*digits + tail + sign_text) <= capacity) {
      body = *digits + tail;
    } else {
      status = Status::grouping_failed;
    }
  }
  if (fills) {
    // A field of zeros that is far larger than the room is not worth making.
    const std::int64_t places = width - std::ssize(sign_text);
    if (places > capacity + 1000) return stars(capacity, width, Status::does_not_fit);
    while (std::ssize(body) < places) body.insert(body.begin(), u'0');
  }
  return place(sign_text + body, status);
}

// The fixed form of the width-bound kinds: nudged upward, cut off, fifteen digits at most.
Plain cut(double value, int estimate, int decimals) {
  if (value != std::floor(value)) {
    if (decimals <= 15 - estimate) {
      value += std::strtod(("0.5e-" + std::to_string(decimals)).c_str(), nullptr);
    }
    value *= 1.0000000000000002;
  }
  Decimal exact = expansion(value);
  const std::size_t shown = std::min(exact.digits.find_first_not_of('0'), exact.digits.size()) + 15;
  for (std::size_t i = shown; i < exact.digits.size(); ++i) exact.digits[i] = '0';
  const auto point = static_cast<std::size_t>(exact.integers);
  return {exact.digits.substr(0, point),
          exact.digits.substr(point, static_cast<std::size_t>(decimals)), ""};
}

int size_of(const Plain& text) {
  const std::size_t size = text.integers.size() + (text.fraction.empty() ? 0 : 1) +
                           text.fraction.size() + text.suffix.size();
  return static_cast<int>(std::max<std::size_t>(size, 1));  // "0" at least
}

// The exponent form with the most mantissa decimals that fit, `decimals` at most.
std::optional<Plain> exponent_form(double value, int room, int decimals) {
  for (; decimals >= 0; --decimals) {
    Scientific number = scientific(value);
    round(number, 14);
    number.mantissa.digits.append(400, '0');
    round(number, decimals);
    char suffix[8];
    std::snprintf(suffix, sizeof suffix, "E%+d", number.exponent);
    const Plain text{number.mantissa.digits.substr(0, 1), number.mantissa.digits.substr(1), suffix};
    if (size_of(text) <= room) return text;
  }
  return std::nullopt;
}

Outcome<char16_t> Model::bound(std::uint32_t kind) {
  const bool exponent_kind = kind == exponent_only || kind == bound_exponent;
  if (width < 1) return {Status::invalid_width, untouched_length, u""};
  const auto places = static_cast<int>(std::min<std::int64_t>(std::min(width, capacity), 100'000));
  if (width > 32 || (exponent_kind && width < 7)) {
    return stars(places, places, Status::invalid_width);
  }
  if (places == 0) return stars(0, 0, Status::does_not_fit);
  int room = places - (negative ? 1 : 0);
  int binary_exponent = 0;
  std::frexp(magnitude, &binary_exponent);
  const int estimate = (binary_exponent * 77) >> 8;
  const bool best = kind == best_fit;

  std::optional<Plain> text;
  Status status = Status::ok;
  bool lone_zero = false;
  if (exponent_kind) {
    const int wanted =
        kind == exponent_only ? std::max(places - 7, 1) : std::min(call.decimals, 99);
    text = exponent_form(magnitude, room, wanted);
    if (text && std::ssize(text->fraction) < wanted) status = Status::decimals_dropped;
  } else {
    bool exponent = estimate > room || estimate == 32 || (room == 0 && magnitude >= 0.5);
    int decimals = std::min(call.decimals, 1000);
    if (!exponent && room == 0) {
      lone_zero = true;
      negative = false;
      room = 1;
      magnitude = 0;
    }
    if (best) decimals = magnitude == 0 ? 0 : 1000;
    if (!exponent && best && estimate < 1 && room > 2) {
      const int needed = 3 + (estimate < -9 ? 1 : 0) + (estimate < -99 ? 1 : 0);
      const bool small = magnitude != 0 && magnitude < 0.00001;
      if ((estimate < -9 && room > needed) || (room > 4 && (small || room + estimate < 3))) {
        text = exponent_form(magnitude, room, 14);
      }
      if (magnitude != 0) decimals = room - 2 < 2 ? room - 1 : room - 2;
    } else if (!exponent) {
      const int integers = std::max(estimate, 0);
      if (integers > room - decimals - (decimals > 0 ? 1 : 0)) {
        decimals = std::max(room - integers - 1, 0);
        status = Status::decimals_dropped;
      }
    }
    if (!exponent && !text) {
      text = cut(magnitude, estimate, decimals);
      if (size_of(*text) > room && decimals > 0) {
        text = cut(magnitude, estimate, decimals - 1);
        status = Status::decimals_dropped;
      }
      exponent = size_of(*text) > room;
    }
    if (exponent) {
      text = exponent_form(magnitude, room, 14);
      status = Status::decimals_dropped;
    }
    if (best) status = Status::ok;
  }
  if (!text) return stars(places, places, Status::does_not_fit);
  if (best) text->fraction.erase(text->fraction.find_last_not_of('0') + 1);
  const bool has_place = text->fraction.empty() || size_of(*text) < room || lone_zero;
  if (text->integers.empty() && has_place) text->integers = "0";

  std::u16string tail;
  if (!text->fraction.empty()) tail = record.decimal_symbol;
  tail += widened(text->fraction + text->suffix);
  const std::u16string minus = negative ? u"-" : u"";
  std::u16string shown = minus + widened(text->integers) + tail;
  if (asks(group) && text->suffix.empty() && !text->integers.empty()) {
    const auto digits = grouped(record, text->integers);
    if (digits && std::ssize(minus + *digits + tail) <= places) {
      shown = minus + *digits + tail;
    } else {
      status = Status::grouping_failed;
    }
  }
  shown.insert(0, static_cast<std::size_t>(places) - shown.size(), u' ');
  return {status, places, shown};
}

}  // namespace

Outcome<char16_t> expected_number(const LocaleRecord& record, const NumberCall& call) {
  return Model{record, call}.format();
}

}  // namespace jwnls::test
