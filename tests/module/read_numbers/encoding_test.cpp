// EBCDIC, code by code, and the symbols that a converter makes.

#include <iconv.h>

#include "tests/module/read_numbers/number_input_test.h"

namespace jwnls::test {
namespace {

// Code page 037 of the C library, with the three codes that differ.
std::uint8_t ebcdic_of(char16_t unit) {
  if (unit == u'[') return 0xAD;
  if (unit == u']') return 0xBD;
  if (unit == u'^') return 0x5F;
  static iconv_t converter = iconv_open("IBM037", "ISO-8859-1");
  char in = static_cast<char>(unit);
  char out = 0;
  char* from = &in;
  char* to = &out;
  std::size_t in_left = 1;
  std::size_t out_left = 1;
  if (iconv(converter, &from, &in_left, &to, &out_left) != 0) ADD_FAILURE() << int{unit};
  return static_cast<std::uint8_t>(out);
}

}  // namespace

std::string ebcdic(std::u16string_view text) {
  std::string codes;
  for (const char16_t unit : text) codes += static_cast<char>(ebcdic_of(unit));
  return codes;
}

namespace {

// One byte among others: 1<byte>5, and a period with the byte behind it.
TEST_F(NumberInputTest, EveryEbcdicCode) {
  const auto read = [this](const std::string& text) {
    return number(handle->services.read_number_ebcdic, std::string_view(text), nullptr);
  };
  for (char16_t unit = 0; unit < 256; ++unit) {
    const char byte = static_cast<char>(ebcdic_of(unit));
    for (const std::u16string& text : {std::u16string{unit}, {u'1', unit, u'5'}, {u'.', unit}}) {
      EXPECT_EQ(read(ebcdic(text)), number(text)) << int{unit};
    }
    // As decimal symbol it is that code and no other.
    if (unit > 127 && unit != 160) continue;
    set_symbols(std::u16string{unit, u','});
    const bool digit = unit >= u'0' && unit <= u'9';
    for (unsigned other = 0; other < 256; ++other) {
      if (other >= 0xF0 && other <= 0xF9) continue;
      const NumberAnswer answer = read({'\xF1', static_cast<char>(other), '\xF5'});
      const bool is_symbol = static_cast<char>(other) == byte && !digit;
      EXPECT_EQ(answer.value == 1.5, is_symbol) << int{unit} << " " << other;
    }
    set_symbols(u".,");
  }
}

// 8-bit: the grouping symbol alone is converted, "," where that fails, and the no-break space
// stays. EBCDIC: both symbols.
TEST_F(NumberInputTest, ConvertedSymbols) {
  ArabicConverter arabic;
  const auto check = [&](auto* slot, const char16_t* symbols, std::string_view text,
                         Converter* converter) {
    set_symbols(symbols);
    EXPECT_EQ(number(slot, text, converter), (NumberAnswer{Status::ok, 12.5, 5})) << text;
  };
  const auto converted = handle->services.read_number_converted;
  check(converted, u".\u066C", "1\x77\x32.5", &arabic);
  check(converted, u".\u066C", "1,2.5", nullptr);
  check(converted, u".\u0666", "1,2.5", &arabic);
  check(converted, u".\u00A0", "1\xA0\x32.5", &arabic);
  const auto ebcdic_slot = handle->services.read_number_ebcdic;
  check(ebcdic_slot, u"\u066B\u066C", "\xF1\x77\xF2\x78\xF5", &arabic);
  check(ebcdic_slot, u".\u066C", "\xF1\x6B\xF2\x4B\xF5", nullptr);
  check(ebcdic_slot, u"\u0666\u00A0", "\xF1\x41\xF2\x6B\xF5", &arabic);
  set_symbols(u".\u066C");  // once converted, "," is no symbol
  EXPECT_EQ(number(handle->services.read_number_converted, std::string_view("1,2"), &arabic),
            invalid_at(1));
}

}  // namespace
}  // namespace jwnls::test
