// Fuzzes layouts as a caller opens them: any of the locales, kinds, words of options and zones.
//
// A layout that opens has a description, which opens it again. What it writes is, in both
// encodings, what it reads as the same value, in a room of just that size, and what its twin of the
// description writes; so are decimals, digit by digit. One that does not open says why.

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fuzz/input.h"
#include "host/locales/locale_names.h"
#include "include/jwnls/jwnls.h"
#include "tests/support/encoded.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace jwnls::test {
namespace {

struct CloseLayout {
  void operator()(jwnls_layout* layout) const { jwnls_close(layout); }
};
using Layout = std::unique_ptr<jwnls_layout, CloseLayout>;

struct Opened {
  Layout layout;
  Layout twin;  // opened by the description
  std::string words;
};

std::string words_of(Input& input) {
  constexpr std::string_view words[] = {"groups=any",
                                        "groups=none",
                                        "signs=any",
                                        "decimals=2",
                                        "decimals=0",
                                        "no-group",
                                        "plus",
                                        "digits=own",
                                        "exact",
                                        "rounding=half-even",
                                        "currency=any",
                                        "currency=USD",
                                        "unit=required",
                                        "fraction=any",
                                        "credit=minus",
                                        "symbol=narrow",
                                        "symbol=code",
                                        "symbol=none",
                                        "accounting",
                                        "percent-sign=optional",
                                        "order=dmy",
                                        "order=ymd",
                                        "years=4",
                                        "years=2",
                                        "century=1900",
                                        "names=english",
                                        "pattern=2",
                                        "loose",
                                        "style=short",
                                        "style=long",
                                        "style=full",
                                        "zone=Asia/Tokyo",
                                        "zone=UTC+05:30",
                                        "overlap=first",
                                        "zone=CET-1CEST,M3.5.0,M10.5.0/3",
                                        "missing=module",
                                        "year-cutoff=1930",
                                        "proved",
                                        "decimals=350",
                                        "zone=Europe/Berlin"};
  std::string text;
  for (int count = input.byte() % 4; count > 0; --count) {
    const std::uint8_t choice = input.byte();
    text += text.empty() ? "" : " ";
    if (choice < 0xF8) {
      text += words[choice % std::size(words)];
    } else {
      for (int units = input.byte() % 12; units > 0; --units) {
        text += static_cast<char>(std::max<std::uint8_t>(input.byte(), 1));
      }
    }
  }
  return text;
}

std::string description_of(const jwnls_layout* layout) {
  std::array<char, 1000> text;
  std::size_t length = 0;
  require(jwnls_describe(layout, text.data(), text.size(), &length) == JWNLS_OK, "no description");
  return {text.data(), length};
}

// Layouts stay open for a while: a few hundred, in the order of their opening. Null: it does not.
const Opened* open(const std::string& locale, int kind, const std::string& words) {
  static std::map<std::string, Opened> opened;
  static std::list<std::string> order;
  const std::string key = locale + '|' + std::to_string(kind) + '|' + words;
  if (const auto known = opened.find(key); known != opened.end()) return &known->second;
  jwnls_layout* layout = nullptr;
  jwnls_error error = {};
  const int code = jwnls_open(locale.c_str(), kind, words.c_str(), &layout, &error);
  if (code != JWNLS_OK) {
    require(code == JWNLS_UNKNOWN && layout == nullptr && error.code == code, "another failure");
    require(error.text[0] != '\0' && std::strlen(error.text) < sizeof error.text, "no reason");
    return nullptr;
  }
  Opened made;
  made.layout.reset(layout);
  made.words = description_of(layout);
  jwnls_layout* twin = nullptr;
  require(jwnls_open_described(made.words.c_str(), &twin, &error) == JWNLS_OK, error.text);
  made.twin.reset(twin);
  require(description_of(twin) == made.words, "a description that describes another");
  if (order.size() == 300) {
    opened.erase(order.front());
    order.pop_front();
  }
  order.push_back(key);
  return &opened.emplace(key, std::move(made)).first->second;
}

// Writes at full room, into just enough and into one too few, in UTF-16 and by the twin.
template <typename Write, typename WriteWide, typename... Value>
std::string written(const Opened& one, int& code, Write write, WriteWide write_wide,
                    Value... value) {
  static std::array<char, 8000> text;
  std::size_t length = 77;
  code = write(one.layout.get(), value..., text.data(), text.size(), &length);
  std::string whole(text.data(), code == JWNLS_OK ? length : 0);
  if (code == JWNLS_RANGE || code == JWNLS_MISSING || code == JWNLS_KIND) {
    require(length == 0 || code == JWNLS_KIND, "a length of no text");
    return whole;
  }
  require(code == JWNLS_OK, "an undocumented code");
  const auto exact = std::make_unique<char[]>(length);
  std::size_t again = 0;
  require(write(one.twin.get(), value..., exact.get(), length, &again) == JWNLS_OK &&
              again == length && whole == std::string_view(exact.get(), length),
          "a twin that writes another text");
  if (length > 0) {
    const auto small = std::make_unique<char[]>(length - 1);
    require(write(one.layout.get(), value..., small.get(), length - 1, &again) == JWNLS_ROOM &&
                again == length,
            "a room that is too small");
  }
  const auto units = std::make_unique<char16_t[]>(length);
  require(write_wide(one.layout.get(), value..., units.get(), length, &again) == JWNLS_OK &&
              again <= length,
          "no text in UTF-16");
  std::u16string wide(units.get(), again);
  // Pairs are one sequence in UTF-8; the texts of most locales have none.
  const auto is_half = [](char16_t unit) { return unit >= 0xD800 && unit < 0xE000; };
  if (std::none_of(wide.begin(), wide.end(), is_half)) {
    require(encoded(wide) == whole, "another text in UTF-16");
  }
  return whole;
}

bool has(const Opened& one, std::string_view word) {
  return one.words.find(word) != std::string::npos;
}

void check_number(const Opened& one, double value) {
  int code = 0;
  const std::string text = written(one, code, jwnls_write_number, jwnls_write_number_utf16, value);
  require((code == JWNLS_MISSING) == std::isnan(value), "a missing value, or not");
  if (code != JWNLS_OK || text.size() > 1024 || !std::isfinite(value)) return;
  double again = 0;
  const int read = jwnls_read_number(one.layout.get(), text.data(), text.size(), &again, nullptr);
  // groups=none reads no text with groups, unit=required none without a unit.
  const bool may_refuse = has(one, "groups=none") ||
                          (has(one, "unit=required") && has(one, "symbol=none")) ||
                          has(one, "decimals=") || has(one, "currency=") ||
                          jwnls_layout_kind(one.layout.get()) == JWNLS_AMOUNT;
  require(read == JWNLS_OK || may_refuse, "a number that is not read back");
  const bool rounded = jwnls_layout_kind(one.layout.get()) != JWNLS_NUMBER || has(one, "decimals=");
  require(read != JWNLS_OK || rounded ||
              std::bit_cast<std::uint64_t>(again) == std::bit_cast<std::uint64_t>(value),
          "a number that is read back as another");
  if (read != JWNLS_OK || !rounded) return;
  // What was rounded once stays.
  require(written(one, code, jwnls_write_number, jwnls_write_number_utf16, again) == text,
          "a rounded number that is written as another");
}

void check_integer(const Opened& one, std::int64_t value) {
  int code = 0;
  const std::string text =
      written(one, code, jwnls_write_integer, jwnls_write_integer_utf16, value);
  require(code == JWNLS_OK, "an integer that is not written");
  std::int64_t again = 0;
  const int read = jwnls_read_integer(one.layout.get(), text.data(), text.size(), &again, nullptr);
  require(read == JWNLS_OK || has(one, "groups=none"), "an integer that is not read back");
  require(read != JWNLS_OK || again == value, "an integer that is read back as another");
  const auto bits = static_cast<std::uint64_t>(value);
  const std::string large =
      written(one, code, jwnls_write_unsigned, jwnls_write_unsigned_utf16, bits);
  std::uint64_t same = 0;
  require(jwnls_read_unsigned(one.layout.get(), large.data(), large.size(), &same, nullptr) !=
                  JWNLS_OK ||
              same == bits,
          "an unsigned integer that is read back as another");
}

std::string decimal_of(Input& input) {
  std::string digits = (input.byte() & 1) != 0 ? "-" : "";
  const std::size_t before = 1 + input.byte() % 220U, behind = input.byte() % 60U;
  digits += static_cast<char>('1' + input.byte() % 9);
  for (std::size_t i = 1; i < before; ++i) digits += static_cast<char>('0' + input.byte() % 10);
  if (behind > 0) digits += '.';
  for (std::size_t i = 1; i < behind; ++i) digits += static_cast<char>('0' + input.byte() % 10);
  if (behind > 0) digits += static_cast<char>('1' + input.byte() % 9);
  return digits;
}

void check_decimal(const Opened& one, const std::string& decimal) {
  int code = 0;
  const std::string text = written(one, code, jwnls_write_decimal, jwnls_write_decimal_utf16,
                                   decimal.data(), decimal.size());
  if (code != JWNLS_OK || jwnls_layout_kind(one.layout.get()) != JWNLS_NUMBER) return;
  if (has(one, "decimals=") || has(one, "groups=none") || text.size() > 1024) return;
  std::array<char, 2200> again;
  std::size_t length = 0;
  require(jwnls_read_decimal(one.layout.get(), text.data(), text.size(), again.data(), again.size(),
                             &length, nullptr, nullptr) == JWNLS_OK &&
              decimal == std::string_view(again.data(), length),
          "a decimal that is read back as another");
}

void check_scaled(const Opened& one, std::int64_t value, std::int32_t scale) {
  const std::string decimal = std::to_string(value) + "E" + std::to_string(-std::int64_t{scale});
  int code = 0, same = 0;
  const std::string text = written(one, code, jwnls_write_decimal, jwnls_write_decimal_utf16,
                                   decimal.data(), decimal.size());
  require(written(one, same, jwnls_write_scaled, jwnls_write_scaled_utf16, value, scale) == text &&
              code == same,
          "a scaled integer that is written as another decimal");
}

void check_date(const Opened& one, std::int32_t days) {
  int code = 0;
  const std::string text = written(one, code, jwnls_write_date, jwnls_write_date_utf16, days);
  if (code != JWNLS_OK) return;
  std::int32_t again = 0;
  const int read = jwnls_read_date(one.layout.get(), text.data(), text.size(), &again, nullptr);
  // Other orders, names, patterns and widths of years read other dates than the locale writes.
  if (has(one, "order=") || has(one, "pattern=") || has(one, "loose") || has(one, "years=")) return;
  if (has(one, "century=") || has(one, "names=")) return;
  if (read == JWNLS_OK) return require(again == days, "a date that is read back as another");
  // Some languages shorten two months to the same letters.
  jwnls_error error;
  jwnls_explain(one.layout.get(), text.data(), text.size(), &error);
  require(std::string_view(error.text).find("two months have this name") != std::string_view::npos,
          "a date that is not read back");
}

void check_datetime(const Opened& one, std::int64_t microseconds) {
  int code = 0;
  (void)written(one, code, jwnls_write_datetime, jwnls_write_datetime_utf16, microseconds);
}

void check_time(const Opened& one, std::int64_t microseconds) {
  int code = 0;
  const std::string text =
      written(one, code, jwnls_write_time, jwnls_write_time_utf16, microseconds);
  if (code != JWNLS_OK) return;
  std::int64_t again = 0;
  const int read = jwnls_read_time(one.layout.get(), text.data(), text.size(), &again, nullptr);
  if (has(one, "loose")) return;
  constexpr std::int64_t minute = 60'000'000;
  require(read == JWNLS_OK && again / minute == microseconds / minute &&
              (again == microseconds || again % minute % 1'000'000 == 0),
          "a time that is not read back");
}

}  // namespace
}  // namespace jwnls::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace jwnls::test;
  Input input(data, size);
  const auto locales = jwnls::host::available_locales();
  // Every eighth: a run keeps the records of those it opens.
  const auto& row = locales[input.byte() * 8U % locales.size()];
  const int kind = 1 + input.byte() % 9;
  const std::string words = words_of(input);
  const Opened* const one = open(std::string(row.name), kind, words);
  if (one == nullptr) return 0;
  require(jwnls_layout_kind(one->layout.get()) == kind &&
              row.name == jwnls_layout_locale(one->layout.get()),
          "a layout of something else");
  const auto bits = input.number<std::uint64_t>();
  switch (kind) {
    case JWNLS_INTEGER:
      check_integer(*one, static_cast<std::int64_t>(bits) >> (bits & 63));
      break;
    case JWNLS_DATE:
      check_date(*one, static_cast<std::int32_t>(bits % 3'074'323) - 141'428);
      check_date(*one, static_cast<std::int32_t>(bits));
      break;
    case JWNLS_DATETIME:
    case JWNLS_INSTANT:
      check_datetime(*one, static_cast<std::int64_t>(bits) >> (bits & 31));
      break;
    case JWNLS_TIME:
      check_time(*one, static_cast<std::int64_t>(bits % 86'400'000'000));
      break;
    case JWNLS_PERIOD:
      check_date(*one, static_cast<std::int32_t>(bits));
      break;
    default:
      check_number(*one, std::bit_cast<double>(bits));
      check_number(*one, static_cast<double>(static_cast<std::int64_t>(bits) >> (bits & 63)) / 100);
      check_decimal(*one, decimal_of(input));
      check_scaled(*one, static_cast<std::int64_t>(bits) >> (bits & 63),
                   static_cast<std::int32_t>(bits >> 6) >> (bits >> 38 & 31));
  }
  return 0;
}
