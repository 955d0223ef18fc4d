// Fuzzes layouts of numbers, integers, amounts and percentages: any options, texts and values, in
// the largest variety of symbols and group sizes that locales have.
//
// Whatever goes in, nothing outside the text or the room is touched, the answers of both encodings
// and of the exact reading agree, values and facts go with the code, what is written is read back
// to the same value, and the explanation agrees with the reading.

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "fuzz/input.h"
#include "include/jwnls/jwnls.h"
#include "library/texts/utf8.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace jwnls::test {
namespace {

constexpr std::array locales = {"de_DE", "en_US", "en_IN", "fr_FR",      "de_CH",
                                "sv_SE", "ja_JP", "ar_EG", "en_US_POSIX"};
constexpr std::array options = {"",          "groups=any",      "groups=none",
                                "signs=any", "missing=module",  "plus",
                                "no-group",  "exact digits=own"};

const jwnls_layout* layout_of(Input& input, int kind) {
  static auto& opened = *new std::map<std::string, jwnls_layout*>;  // all stay for the run
  const char* const locale = locales[input.byte() % locales.size()];
  const char* const words = options[input.byte() % options.size()];
  jwnls_layout*& layout = opened[std::string(locale) + char('0' + kind) + words];
  if (layout == nullptr) {
    jwnls_error error;
    require(jwnls_open(locale, kind, words, &layout, &error) == JWNLS_OK, error.text);
  }
  return layout;
}

// Mostly what means something in a number.
std::string text_of(Input& input) {
  constexpr std::string_view likely[] = {
      "0",      "1",          "2",      "3",      "5",      "9",      "00",     "000",    "123",
      ".",      ",",          "'",      " ",      "-",      "+",      "e",      "E",      "(",
      ")",      "\u2019",     "\u00A0", "\u202F", "\u2212", "\u200E", "\u0661", "\u066B", "\u066C",
      "\uFF11", "\U0001D7CE", "\u20AC", ".A",     "\xFF",   "%",      "$",      "EUR",    "CHF",
      "kr",     "\uFFE5",     "CR",     "--",     "\u2030"};
  std::string text;
  while (!input.used_up() && text.size() < 1100) {
    const std::uint8_t choice = input.byte();
    if (choice < 0xF0) {
      text += likely[choice % std::size(likely)];
    } else {
      text += static_cast<char>(input.byte());
    }
  }
  return text;
}

struct Reading {
  int code;
  std::uint64_t bits;
  std::uint8_t facts;

  bool operator==(const Reading&) const = default;
};

// `value` is a double or an integer, read from a copy of its own, so that a look beside it shows.
template <typename Value, typename Unit, typename Read>
Reading read_copy(const jwnls_layout* layout, std::basic_string_view<Unit> text, Read read) {
  const auto copy = std::make_unique<Unit[]>(text.size());
  text.copy(copy.get(), text.size());
  Value value = 7;
  std::uint8_t facts = 77;
  const int code = read(layout, copy.get(), text.size(), &value, &facts);
  require(code == JWNLS_OK || code == JWNLS_UNREAD || code == JWNLS_RANGE || code == JWNLS_MISSING,
          "an undocumented code");
  require(code == JWNLS_OK ? facts <= 2 : facts == 0, "facts that do not go with the code");
  if constexpr (std::is_integral_v<Value>) {
    require(code == JWNLS_OK || value == 0, "a refused text with a value");
  } else {
    require(code == JWNLS_OK ? std::isfinite(value) : jwnls_is_missing(value) != 0,
            "a value that does not go with the code");
  }
  return {code, std::bit_cast<std::uint64_t>(value), facts};
}

void check_exact(const jwnls_layout* layout, std::string_view text, const Reading& reading,
                 bool integers) {
  char out[2200];
  std::size_t length = 0;
  std::uint8_t facts = 0;
  const int code = jwnls_read_decimal(layout, text.data(), text.size(), out, sizeof out, &length,
                                      nullptr, &facts);
  if (reading.code != JWNLS_OK) {
    require(code == reading.code || reading.code == JWNLS_RANGE, "exact reading takes a refusal");
    return;
  }
  // An exponent may take more zeros than a text has.
  if (code == JWNLS_RANGE && !integers) return;
  require(code == JWNLS_OK && facts == reading.facts, "exact reading refuses");
  if (integers) {
    std::int64_t value = 0;
    std::from_chars(out, out + length, value);
    require(std::bit_cast<std::uint64_t>(value) == reading.bits, "another exact integer");
    return;
  }
  double value = 0;
  if (std::from_chars(out, out + length, value).ec == std::errc()) {
    require(std::bit_cast<std::uint64_t>(value) == reading.bits, "another exact value");
  }
  // And out again: the same text is read, and to the same value.
  std::size_t written = 0;
  char text_again[8000];
  require(jwnls_write_decimal(layout, out, length, text_again, sizeof text_again, &written) ==
                  JWNLS_OK ||
              length > 1024,
          "an exact value is not written");
}

template <typename Value, typename Read, typename ReadUtf16>
void check_reading(const jwnls_layout* layout, const std::string& text, Read read,
                   ReadUtf16 read_utf16) {
  const Reading reading = read_copy<Value>(layout, std::string_view(text), read);
  jwnls_error error;
  require(jwnls_explain(layout, text.data(), text.size(), &error) == reading.code,
          "an explanation of something else");
  require(error.at <= text.size(), "a place outside the text");
  check_exact(layout, text, reading, std::is_integral_v<Value>);
  char16_t units[1100];
  const auto length = library::to_utf16(text, units, std::size(units));
  if (!length) return;
  require(read_copy<Value>(layout, std::u16string_view(units, *length), read_utf16) == reading,
          "encodings that differ");
}

void check_round_trip(const jwnls_layout* layout, double value, bool groups) {
  char text[2000];
  std::size_t length = 0;
  const int code = jwnls_write_number(layout, value, text, sizeof text, &length);
  if (!std::isfinite(value)) return;
  require(code == JWNLS_OK, "a number is not written");
  if (!groups || length > 1024) return;
  double read = 0;
  require(jwnls_read_number(layout, text, length, &read, nullptr) == JWNLS_OK &&
              std::bit_cast<std::uint64_t>(read) == std::bit_cast<std::uint64_t>(value),
          "a number comes back as another");
  // A room that is too small is never overrun.
  const std::size_t room = length / 2;
  const auto small = std::make_unique<char[]>(room);
  std::size_t needed = 0;
  const int cut = jwnls_write_number(layout, value, small.get(), room, &needed);
  require(cut == JWNLS_ROOM && needed == length, "a room that is too small");
}

}  // namespace
}  // namespace jwnls::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace jwnls::test;
  Input input(data, size);
  constexpr int kinds[] = {JWNLS_NUMBER, JWNLS_INTEGER, JWNLS_AMOUNT, JWNLS_PERCENT};
  const int kind = kinds[input.byte() % std::size(kinds)];
  const bool integers = kind == JWNLS_INTEGER;
  const jwnls_layout* const layout = layout_of(input, kind);
  if (kind == JWNLS_NUMBER) {
    char words[200];
    std::size_t length = 0;
    (void)jwnls_describe(layout, words, sizeof words, &length);
    const bool groups = std::string_view(words, length).find("groups=none") == std::string::npos;
    check_round_trip(layout, std::bit_cast<double>(input.number<std::uint64_t>()), groups);
  }
  const std::string text = text_of(input);
  if (integers) {
    check_reading<std::int64_t>(layout, text, jwnls_read_integer, jwnls_read_integer_utf16);
  } else {
    check_reading<double>(layout, text, jwnls_read_number, jwnls_read_number_utf16);
  }
  return 0;
}
