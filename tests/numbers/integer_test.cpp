// The integer members and the pointer member, compared with the stated way of building their texts:
// least significant character first.

#include <limits>
#include <type_traits>
#include <vector>

#include "module/numfmt/integer_services.h"
#include "tests/numbers/numbers_test.h"

namespace jwnls::test {
namespace {

using namespace integer_flags;

template <typename Integer>
struct IntegerCall {
  Integer value;
  std::int32_t width = 0;
  std::int32_t minimum = 1;
  std::uint32_t flags = 0;
  std::int64_t capacity = 60;

  friend std::ostream& operator<<(std::ostream& out, const IntegerCall& call) {
    return out << call.value << std::hex << ", flags " << call.flags << std::dec << ", width "
               << call.width << ", minimum " << call.minimum << ", capacity " << call.capacity;
  }
};

// The low-order units of a text that lies reversed, in their order, then zero units.
template <typename Unit>
Outcome<Unit> delivered(const std::basic_string<Unit>& reversed, std::int64_t capacity) {
  Outcome<Unit> outcome;
  outcome.length = std::ssize(reversed);
  outcome.status = outcome.length > capacity ? Status::does_not_fit : Status::ok;
  const auto room = static_cast<std::size_t>(capacity);
  outcome.text = reversed.substr(0, room);
  std::reverse(outcome.text.begin(), outcome.text.end());
  outcome.text.resize(room, Unit{0});
  return outcome;
}

// Digit values; 0 stands for the end mark.
std::vector<std::size_t> group_sizes(const LocaleRecord& record) {
  std::vector<std::size_t> sizes;
  for (const char16_t unit : grouping_of(record)) {
    if (unit == u'-') sizes.push_back(0);
    if (unit >= u'0' && unit <= u'9') sizes.push_back(static_cast<std::size_t>(unit - u'0'));
    if (!sizes.empty() && sizes.back() == 0) break;
  }
  if (sizes.empty()) sizes.push_back(0);
  return sizes;
}

template <typename Unit>
std::basic_string<Unit> reversed_separator(char16_t unit) {
  if constexpr (sizeof(Unit) == 2) {
    return {unit};
  } else {
    const std::string bytes = encoded({&unit, 1});
    return {bytes.rbegin(), bytes.rend()};
  }
}

template <typename Integer, typename Unit>
Outcome<Unit> expected_integer(const LocaleRecord& record, const IntegerCall<Integer>& call) {
  constexpr bool is_signed = std::is_signed_v<Integer>;
  const auto asks = [&](std::uint32_t bits) { return (call.flags & bits) != 0; };
  const std::int64_t capacity = std::max<std::int64_t>(call.capacity, 0);
  const std::int32_t minimum = call.minimum < 0 ? 6 : call.minimum;
  if (minimum > capacity || call.width > capacity) {
    return {Status::does_not_fit, untouched_length, {}};
  }
  std::basic_string<Unit> text;
  if (call.value == 0 && minimum == 0) return delivered(text, capacity);

  const bool hexadecimal = !is_signed && asks(hexadecimal_small | hexadecimal_capital);
  const bool octals = !is_signed && !hexadecimal && asks(octal);
  const unsigned radix = hexadecimal ? 16 : octals ? 8 : 10;
  const char* digits = asks(hexadecimal_small) ? "0123456789abcdef" : "0123456789ABCDEF";
  const bool negative = is_signed && call.value < 0;
  const auto bits = static_cast<std::uint64_t>(call.value);
  const auto sizes = group_sizes(record);
  std::size_t group_index = 0, in_group = 0;
  for (std::uint64_t rest = negative ? ~bits + 1 : bits; rest != 0; rest /= radix) {
    if (asks(group) && radix == 10 && sizes[group_index] != 0 && in_group == sizes[group_index]) {
      text += reversed_separator<Unit>(record.grouping_symbol);
      if (group_index + 1 < sizes.size()) ++group_index;
      in_group = 0;
    }
    text += static_cast<Unit>(digits[rest % radix]);
    ++in_group;
  }

  const auto fill_to = [&](std::int64_t length, char unit) {
    while (std::ssize(text) < length) text += static_cast<Unit>(unit);
  };
  const bool signs = is_signed && (negative || asks(sign | blank));
  const bool prefixed = hexadecimal && asks(prefix);
  fill_to(minimum, '0');
  if (asks(zero_fill) && !asks(left) && call.width >= 1 && minimum == 0) {
    fill_to(call.width - (signs || prefixed ? 1 : 0), '0');
  }
  if (signs) text += static_cast<Unit>(negative ? '-' : asks(sign) ? '+' : ' ');
  if (prefixed) {
    text += static_cast<Unit>(asks(hexadecimal_small) ? 'x' : 'X');
    text += Unit{'0'};
  }
  if (octals && asks(octal_zero) && std::ssize(text) < call.width) text += Unit{'0'};
  if (!asks(left)) fill_to(call.width, ' ');
  Outcome<Unit> outcome = delivered(text, capacity);
  if (outcome.length < call.width) {
    const auto length = static_cast<std::size_t>(outcome.length);
    outcome.text.replace(length, static_cast<std::size_t>(call.width) - length,
                         static_cast<std::size_t>(call.width) - length, Unit{' '});
    outcome.length = call.width;
  }
  return outcome;
}

// Both slots of a member.
template <typename Integer, typename Unit>
FormatInteger<Integer, Unit>* member(bool second) {
  const auto pick = [second](auto* first_slot, auto* second_slot) {
    return second ? second_slot : first_slot;
  };
  constexpr bool wide = sizeof(Integer) == 8, utf16 = sizeof(Unit) == 2;
  const ServiceTable& slots = services;
  if constexpr (std::is_signed_v<Integer>) {
    if constexpr (wide && utf16) return pick(slots.format_int64, slots.format_int64_too);
    if constexpr (wide && !utf16) return pick(slots.format_int64_8bit, slots.format_int64_8bit_too);
    if constexpr (!wide && utf16) return pick(slots.format_int32, slots.format_int32_too);
    if constexpr (!wide && !utf16)
      return pick(slots.format_int32_8bit, slots.format_int32_8bit_too);
  } else {
    if constexpr (wide && utf16) return pick(slots.format_uint64, slots.format_uint64_too);
    if constexpr (wide && !utf16)
      return pick(slots.format_uint64_8bit, slots.format_uint64_8bit_too);
    if constexpr (!wide && utf16) return pick(slots.format_uint32, slots.format_uint32_too);
    if constexpr (!wide && !utf16)
      return pick(slots.format_uint32_8bit, slots.format_uint32_8bit_too);
  }
}

class IntegerTest : public NumbersTest {
 protected:
  template <typename Unit, typename Integer>
  Outcome<Unit> show(const IntegerCall<Integer>& call, FormatInteger<Integer, Unit>* service) {
    return run<Unit>(call.capacity, [&](Unit* out, std::int64_t capacity, std::int64_t* length) {
      return service(handle, call.value, call.width, call.minimum, call.flags, out, capacity,
                     length);
    });
  }

  // A text and what is left of it in a room of five units; both encodings.
  template <typename Integer>
  void expect_text(IntegerCall<Integer> call, std::u16string_view text) {
    std::u16string whole(text);
    whole.resize(static_cast<std::size_t>(call.capacity), u'\0');
    const Outcome<char16_t> wanted = {Status::ok, std::ssize(text), whole};
    EXPECT_EQ((show<char16_t>(call, member<Integer, char16_t>(false))), wanted) << call;
    EXPECT_EQ((show<char>(call, member<Integer, char>(true)).text), encoded(whole)) << call;
    if (text.size() <= 5 || call.width > 5 || call.minimum < 0 || call.minimum > 5) return;
    call.capacity = 5;
    const Outcome<char16_t> cut = {Status::does_not_fit, std::ssize(text),
                                   std::u16string(text.substr(text.size() - 5))};
    EXPECT_EQ((show<char16_t>(call, member<Integer, char16_t>(true))), cut) << call;
  }

  template <typename Integer, typename Unit>
  void compare(Random& random) {
    constexpr std::uint32_t bits[] = {hexadecimal_small,
                                      hexadecimal_capital,
                                      octal,
                                      sign,
                                      group,
                                      group,
                                      left,
                                      zero_fill,
                                      blank,
                                      prefix,
                                      octal_zero};
    IntegerCall<Integer> call = {static_cast<Integer>(random.bits() >> random.between(0, 63))};
    if (random.one_in(2))
      call.value = static_cast<Integer>(0 - static_cast<std::uint64_t>(call.value));
    if (random.one_in(20))
      call.value = random.of({std::numeric_limits<Integer>::min(), Integer{0},
                              std::numeric_limits<Integer>::max(), Integer{1}});
    call.width = random.between(-5, 40);
    call.minimum = random.one_in(2) ? 0 : random.between(-2, 30);
    call.capacity = random.one_in(3) ? random.between(-1, 30) : random.between(30, 90);
    if (random.one_in(50)) call.width = random.of({INT32_MAX, INT32_MIN});
    if (random.one_in(50)) call.minimum = random.of({INT32_MAX, INT32_MIN});
    for (int i = random.between(0, 4); i > 0; --i) call.flags |= random.of(bits);
    ASSERT_EQ((show<Unit>(call, member<Integer, Unit>(random.one_in(2)))),
              (expected_integer<Integer, Unit>(record, call)))
        << call << ", grouping " << printable(grouping_of(record)) << " by "
        << int{record.grouping_symbol} << ", value of " << sizeof(Integer) << " bytes";
  }
};

TEST_F(IntegerTest, ShowsWhatAPersonWouldWrite) {
  const IntegerCall<std::int64_t> signed_rows[] = {{1234567, 0, 0, group},
                                                   {-5, 4, 0, zero_fill},
                                                   {0, 0, -1},
                                                   {42, 5, 0, sign},
                                                   {42, 5, 0, sign | left},
                                                   {42, 0, 0, blank},
                                                   {INT64_MIN, 0, 0, group},
                                                   {7, 0, 5, group},
                                                   {7, 6, 3, zero_fill},
                                                   {255, 0, 0, hexadecimal_small | prefix}};
  const std::u16string_view signed_texts[] = {
      u"1,234,567", u"-005",   u"000000", u"  +42", u"+42  ", u" 42", u"-9,223,372,036,854,775,808",
      u"00007",     u"   007", u"255"};
  for (std::size_t i = 0; i < std::size(signed_rows); ++i) {
    expect_text(signed_rows[i], signed_texts[i]);
  }
  const IntegerCall<std::uint32_t> unsigned_rows[] = {
      {255, 0, 0, hexadecimal_small | prefix},
      {255, 0, 0, hexadecimal_small | hexadecimal_capital},
      {0xBEEF, 8, 0, hexadecimal_capital | prefix | zero_fill},
      {8, 5, 0, octal | octal_zero},
      {8, 2, 0, octal | octal_zero},
      {4294967295, 0, 0, group | sign | blank},
      {4294967295, 0, 0, group | hexadecimal_capital},
      {7, 4, 0, prefix | octal_zero | zero_fill}};
  const std::u16string_view unsigned_texts[] = {
      u"0xff", u"ff", u"0X000BEEF", u"  010", u"10", u"4,294,967,295", u"FFFFFFFF", u"0007"};
  for (std::size_t i = 0; i < std::size(unsigned_rows); ++i) {
    expect_text(unsigned_rows[i], unsigned_texts[i]);
  }
  expect_text(IntegerCall<std::int32_t>{0, 5, 0}, u"");
}

TEST_F(IntegerTest, GroupsOneDigitASize) {
  constexpr std::pair<std::u16string_view, std::u16string_view> cases[] = {
      {u"3", u"1,234,567"}, {u"32", u"12,34,567"},  {u"3;2", u"12,34,567"}, {u"3-", u"1234,567"},
      {u"30", u"1234,567"}, {u"12", u"12,34,56,7"}, {u"0", u"1234567"},     {u"-3", u"1234567"},
      {u"", u"1234567"},    {u"ab", u"1234567"},    {u"x4y", u"123,4567"}};
  for (const auto& [pattern, text] : cases) {
    set_grouping(pattern);
    expect_text(IntegerCall<std::int64_t>{1234567, 0, 0, group}, text);
    expect_text(IntegerCall<std::uint64_t>{1234567, 0, 0, group}, text);
  }
}

TEST_F(IntegerTest, FollowsTheRulesForAnyCall) {
  Random random(4);
  constexpr std::u16string_view patterns[] = {u"3", u"3;2", u"321", u"",     u"0",  u"3-", u"30",
                                              u"-", u"9;9", u"1",   u"3;-1", u"ab", u"x2"};
  constexpr char16_t separators[] = {u',', u'.', u' ', u'\u00A0', u'\u202F', u'\u2019', u'\0'};
  for (int i = 0; i < 8000; ++i) {
    const std::u16string_view pattern = random.of(patterns);
    set_grouping(pattern, random.one_in(30) ? INT64_MIN : std::ssize(pattern));
    record.grouping_symbol = random.of(separators);
    ASSERT_NO_FATAL_FAILURE((compare<std::int64_t, char16_t>(random)));
    ASSERT_NO_FATAL_FAILURE((compare<std::uint64_t, char16_t>(random)));
    ASSERT_NO_FATAL_FAILURE((compare<std::int32_t, char16_t>(random)));
    ASSERT_NO_FATAL_FAILURE((compare<std::uint32_t, char16_t>(random)));
    ASSERT_NO_FATAL_FAILURE((compare<std::int64_t, char>(random)));
    ASSERT_NO_FATAL_FAILURE((compare<std::uint64_t, char>(random)));
    ASSERT_NO_FATAL_FAILURE((compare<std::int32_t, char>(random)));
    ASSERT_NO_FATAL_FAILURE((compare<std::uint32_t, char>(random)));
  }
}

TEST_F(IntegerTest, ShowsPointers) {
  struct Row {
    IntegerCall<std::uint64_t> call;
    std::u16string_view text;  // what is written, without zero units behind it
    std::int64_t length;
  };
  constexpr Row rows[] = {{{0}, u"NIL", 3},
                          {{0, 5}, u"  NIL", 5},
                          {{0, -5, 9, pointer_left | pointer_prefix}, u"NIL  ", 5},
                          {{31, 0, 9, pointer_prefix}, u"0x1F", 4},
                          {{31, 6, 0, 0}, u"    1F", 6},
                          {{31, -6, INT32_MAX, pointer_prefix}, u"  0x1F", 6},
                          {{31, 6, 0, pointer_left}, u"1F    ", 6},
                          {{UINT64_MAX, 0, 0, pointer_prefix}, u"0xFFFFFFFFFFFFFFFF", 18},
                          {{31, 10, 0, 0, 5}, u"   1F", 10},
                          {{31, 10, 0, pointer_left, 5}, u"1F   ", 10},
                          {{0x12345678, 10, 0, pointer_left, 5}, u"45678", 10},
                          {{0x12345678, 0, 0, pointer_prefix, 5}, u"45678", 10},
                          {{31, INT32_MIN, 0, 0, 3}, u" 1F", 2147483648},
                          {{31, INT32_MIN, 0, pointer_left, 3}, u"1F ", 2147483648},
                          {{0, 0, 0, 0, -1}, u"", 3}};
  for (const auto& [call, text, length] : rows) {
    const auto room = static_cast<std::size_t>(std::max<std::int64_t>(call.capacity, 0));
    std::u16string written(text);
    written.resize(room, u'\0');
    const Status status = length > call.capacity ? Status::does_not_fit : Status::ok;
    EXPECT_EQ((show<char16_t>(call, services.format_pointer)),
              (Outcome<char16_t>{status, length, written}))
        << call;
  }
}

}  // namespace
}  // namespace jwnls::test
