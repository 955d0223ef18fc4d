// Slot 59 shows what slot 55 shows, as UTF-8; slot 24 is slot 55 without options.

#include "tests/module/format_numbers/numbers_test.h"
#include "tests/support/seed.h"

namespace jwnls::test {
namespace {

using namespace number_flags;
using EightBitTest = NumbersTest;

// The whole units whose bytes fit.
std::u16string_view fitting(std::u16string_view text, std::int64_t bytes) {
  while (std::ssize(encoded(text)) > bytes) text.remove_suffix(1);
  return text;
}

TEST_F(EightBitTest, EncodesUnitsAndCutsBetweenThem) {
  record.decimal_symbol = u'\u066B';
  record.grouping_symbol = u'\u202F';
  const auto shows = [this](const NumberCall& call, std::string_view text, Status status) {
    EXPECT_EQ(format_8bit(call), (Outcome<char>{status, std::ssize(text), std::string(text)}))
        << call;
  };
  shows({1234.5, 0, 1, fixed | group, 8}, "1\u202F234", Status::does_not_fit);
  shows({1234.5, 0, 1, fixed | group, 9}, "1\u202F234\u066B", Status::does_not_fit);
  shows({1234.5, 0, 1, fixed | group, 10}, "1\u202F234\u066B5", Status::ok);
  // The field counts units: ten places, thirteen bytes.
  shows({1234.5, 10, 1, fixed | group}, "   1\u202F234\u066B5", Status::ok);
  // The decimal-aligned missing value: the blanks behind the field are not written.
  shows({missing('Z'), 5, 1, decimal_aligned, 20}, "   Z ", Status::ok);
  constexpr FloatOptions dot = {1, {}, u'\u00B7'};
  shows({missing('.'), 3, 1, fixed, 4, &dot}, "  \u00B7", Status::ok);
  shows({missing('.'), 3, 1, fixed, 3, &dot}, "  ", Status::does_not_fit);
}

TEST_F(EightBitTest, AgreesWithTheUtf16Slots) {
  Random random(test_seed(6));
  constexpr char16_t symbols[] = {u'.', u'\0', u'\u00A0', u'\u202F', u'\uFFFD', char16_t{0xDC00}};
  constexpr FloatOptions options = {1, {}, u'\u00B7'};
  for (int i = 0; i < 30000; ++i) {
    record.decimal_symbol = random.of(symbols);
    record.grouping_symbol = random.of(symbols);
    NumberCall call = {random.number(), random.between(-30, 34), random.between(-3, 12),
                       static_cast<std::uint32_t>(random.bits() & random.bits()),
                       random.between(-1, 40)};
    if (random.one_in(10)) call.value = random.of({missing('.'), missing('A'), HUGE_VAL});
    if (random.one_in(2)) call.flags = random.of({fixed, general, exponent_small});
    if (random.one_in(2)) call.flags |= group;
    if (random.one_in(2)) call.width = 0;
    if (random.one_in(2)) call.capacity = random.between(60, 70);

    const Outcome<char16_t> slot_24 = run_floating<char16_t>(
        call.capacity, [&](char16_t* out, std::int64_t capacity, auto* length) {
          return services.format_number(handle, call.value, call.width, call.decimals, call.flags,
                                        out, capacity, length);
        });
    ASSERT_EQ(slot_24, format(call)) << call;

    if (random.one_in(3)) call.options = &options;
    const Outcome<char16_t> utf16 = format(call);
    Outcome<char> wanted = {utf16.status, utf16.length, encoded(utf16.text)};
    if (utf16.length != untouched_length && utf16.length <= std::ssize(utf16.text)) {
      const auto field =
          std::u16string_view(utf16.text).substr(0, static_cast<std::size_t>(utf16.length));
      wanted.text = encoded(fitting(field, std::max<std::int64_t>(call.capacity, 0)));
      if (wanted.text.size() < encoded(field).size()) wanted.status = Status::does_not_fit;
      wanted.length = std::ssize(wanted.text);
    }
    ASSERT_EQ(format_8bit(call), wanted) << call;
  }
}

}  // namespace
}  // namespace jwnls::test
