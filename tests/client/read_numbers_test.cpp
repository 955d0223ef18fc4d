#include <gtest/gtest.h>

#include "real_host.h"

namespace jwnls::client {
namespace {

constexpr NumberReading blanks = {.blank_groups = true};

TEST(ReadNumber, TakesTheLocalesSymbolsAndWhatStandsForThem) {
  const auto check = [&](const char* name, const char* text, double value,
                         const NumberReading& reading = {}) {
    const auto read = locale(name).read_number(text, reading);
    EXPECT_EQ(read, value) << (read ? text : read.error().message);
  };
  check("de_DE", "1.234.567,89", 1234567.89);
  check("de_DE", " -0,5e3 ", -500);
  check("de_DE", "1.2.3", 123);
  check("fr_FR", "1\u202F234,5", 1234.5);  // what other programs write
  check("fr_FR", "1 234,5", 1234.5, blanks);
  check("fr_FR", "1 234,5\t", 1234.5, blanks);
  check("de_CH", "1'234’567.5", 1234567.5);
  check("sv_SE", "−5", -5);
  check("ar_EG", "⁧؜-١٬٢٣٤٫٥⁩", -1234.5);
  check("hi_IN", "१२,३४,५६७", 1234567);
}

TEST(ReadNumber, TakesMissingValues) {
  const Locale german = locale("de_DE");
  EXPECT_EQ(MissingValue::of(german.read_number(".").value()), MissingValue());
  EXPECT_EQ(MissingValue::of(german.read_number(" ").value()), MissingValue());
  EXPECT_EQ(MissingValue::of(german.read_number(".k").value()), MissingValue::named('K'));
}

TEST(ReadNumber, TellsHowFarATextFitsAndWhy) {
  const auto check = [&](const char* name, const std::string& text, const char* fitting,
                         const char* reason, Status status = Status::invalid_number) {
    const auto read = locale(name).read_number(text);
    ASSERT_FALSE(read) << text;
    EXPECT_EQ(read.error().status, status);
    EXPECT_EQ(text.substr(0, read.error().fitting_bytes), fitting);
    EXPECT_EQ(read.error().message, "number " + in_quotes(text) + ": " + reason);
  };
  check("de_DE", "12,5 x", "12,5 ", "'12,5 ' fits, 'x' does not");
  check("de_DE", ".5", "", "no number begins so in de_DE");
  check("de_DE", "-", "-", "ends too early");
  check("de_DE", "1e400", "1e400", "too large for a double", Status::out_of_range);
  check("fr_FR", "1 234", "1 ", "'1 ' fits, '234' does not");
  check("ar_EG", "١٢س", "١٢", "'١٢' fits, 'س' does not");
  check("de_DE", "1\xC3", "", "not valid UTF-8");
  check("de_DE", std::string("1\0", 2), "1", "'1' fits, '\\x00' does not");
}

TEST(ReadInteger, KeepsToTheType) {
  const Locale german = locale("de_DE");
  constexpr IntegerReading hexadecimal = {.hexadecimal = true};
  const auto check = [](const auto& read, const std::string& expected) {
    EXPECT_EQ(read ? std::to_string(*read) : read.error().message, expected);
  };
  check(german.read_integer("-9.223.372.036.854.775.808 "), "-9223372036854775808");
  check(german.read_integer("9223372036854775808"),
        "integer '9223372036854775808': outside -9223372036854775808 to 9223372036854775807");
  check(german.read_integer<std::uint64_t>("18446744073709551615"), "18446744073709551615");
  check(german.read_integer<std::int8_t>("-128"), "-128");
  check(german.read_integer<std::int8_t>("128"), "integer '128': outside -128 to 127");
  check(german.read_integer<std::uint32_t>("4.294.967.296"),
        "integer '4.294.967.296': outside 0 to 4294967295");
  check(german.read_integer<unsigned>("-1"), "integer '-1': no integer begins so in de_DE");
  check(german.read_integer<unsigned>("0xfF", hexadecimal), "255");
  check(german.read_integer("ff", hexadecimal),
        "hexadecimal integers are read as unsigned types only");
  check(german.read_integer("12,5"), "integer '12,5': '12' fits, ',5' does not");
  check(german.read_integer("12 3"), "integer '12 3': '12' fits, ' 3' does not");
  check(german.read_integer("  "), "integer '  ': no value");
  check(german.read_integer(std::string_view("12\0x", 4)),
        "integer '12\\x00x': '12' fits, '\\x00x' does not");
  check(locale("fr_FR").read_integer("1 234", {.blank_groups = true}), "1234");
  check(locale("fa_IR").read_integer("−۱۲۳۴"), "-1234");
}

TEST(ReadInteger, NotesADroppedFraction) {
  const Locale german = locale("de_DE");
  constexpr IntegerReading fraction = {.fraction = true};
  Status note = Status::no_match;
  EXPECT_EQ(german.read_integer("12,00 ", fraction, &note), 12);
  EXPECT_EQ(note, Status::ok);
  EXPECT_EQ(german.read_integer("-12,50", fraction, &note), -12);
  EXPECT_EQ(note, Status::does_not_fit);
}

}  // namespace
}  // namespace jwnls::client
