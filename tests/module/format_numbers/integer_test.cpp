// The integer members and the pointer member, compared with the stated way of building their texts:
// least significant character first.

#include <limits>

#include "module/format_numbers/integer_services.h"
#include "tests/module/format_numbers/integer_model.h"
#include "tests/module/format_numbers/numbers_test.h"
#include "tests/support/seed.h"

namespace jwnls::test {
namespace {

using namespace integer_flags;

class IntegerTest : public NumbersTest {
 protected:
  template <typename Unit, typename Integer>
  Outcome<Unit> show(const IntegerCall<Integer>& call, FormatInteger<Integer, Unit>* service) {
    return run<Unit>(call.capacity, [&](Unit* out, std::int64_t capacity, std::int64_t* length) {
      return service(handle, call.value, call.width, call.minimum, call.flags, out, capacity,
                     length);
    });
  }

  template <typename Unit, typename Integer>
  void expect_text(FormatInteger<Integer, Unit>* service, const IntegerCall<Integer>& call,
                   const std::basic_string<Unit>& text) {
    std::basic_string<Unit> whole = text;
    whole.resize(60, Unit{0});
    EXPECT_EQ((show<Unit>(call, service)), (Outcome<Unit>{Status::ok, std::ssize(text), whole}))
        << call;
  }

  template <typename Integer, typename Unit>
  void compare(Random& random, FormatInteger<Integer, Unit>* first,
               FormatInteger<Integer, Unit>* second) {
    IntegerCall<Integer> call = {static_cast<Integer>(random.bits() >> random.between(0, 63))};
    if (random.one_in(2))
      call.value = static_cast<Integer>(~static_cast<std::uint64_t>(call.value));
    if (random.one_in(20)) {
      call.value = random.of(
          {std::numeric_limits<Integer>::min(), Integer{0}, std::numeric_limits<Integer>::max()});
    }
    call.width = random.one_in(50) ? random.of({INT32_MAX, INT32_MIN}) : random.between(-5, 40);
    call.minimum = random.one_in(50)  ? random.of({INT32_MAX, INT32_MIN})
                   : random.one_in(2) ? 0
                                      : random.between(-2, 30);
    call.capacity = random.one_in(3) ? random.between(-1, 30) : random.between(30, 90);
    for (int i = random.between(0, 5); i > 0; --i) call.flags |= 1u << random.between(7, 24);
    ASSERT_EQ((show<Unit>(call, random.one_in(2) ? first : second)),
              (expected_integer<Integer, Unit>(record, call)))
        << call << ", grouping " << printable(std::u16string(grouping_of(record))) << " by "
        << int{record.grouping_symbol} << ", value of " << sizeof(Integer) << " bytes";
  }
};

TEST_F(IntegerTest, ShowsWhatAPersonWouldWrite) {
  const auto shows_signed = [this](const IntegerCall<std::int64_t>& call, std::string_view text) {
    expect_text(services.format_int64, call, {text.begin(), text.end()});
    expect_text(services.format_int64_8bit, call, std::string(text));
  };
  shows_signed({-5, 4, 0, zero_fill}, "-005");
  shows_signed({42, 5, 0, sign}, "  +42");
  shows_signed({INT64_MIN, 0, 0, group}, "-9,223,372,036,854,775,808");
  shows_signed({7, 6, 3, zero_fill}, "   007");
  const auto shows = [this](const IntegerCall<std::uint32_t>& call, std::string_view text) {
    expect_text(services.format_uint32, call, {text.begin(), text.end()});
    expect_text(services.format_uint32_8bit, call, std::string(text));
  };
  shows({255, 0, 0, hexadecimal_small | prefix}, "0xff");
  shows({0xBEEF, 8, 0, hexadecimal_capital | prefix | zero_fill}, "0X000BEEF");
  shows({4294967295, 0, 0, group | sign | blank}, "4,294,967,295");
}

TEST_F(IntegerTest, GroupsOneDigitASize) {
  constexpr std::pair<std::u16string_view, std::u16string_view> cases[] = {
      {u"3", u"1,234,567"}, {u"32", u"12,34,567"},  {u"3;2", u"12,34,567"}, {u"3-", u"1234,567"},
      {u"30", u"1234,567"}, {u"12", u"12,34,56,7"}, {u"0", u"1234567"},     {u"-3", u"1234567"},
      {u"", u"1234567"},    {u"ab", u"1234567"},    {u"x4y", u"123,4567"}};
  for (const auto& [pattern, text] : cases) {
    set_grouping(pattern);
    expect_text(services.format_int32, {1234567, 0, 0, group}, std::u16string(text));
  }
}

TEST_F(IntegerTest, ShowsEveryLength) {
  const auto check = [this]<typename Integer, typename Unit>(
                         std::uint64_t value, FormatInteger<Integer, Unit>* service) {
    for (const std::uint32_t flags : {0u, group, hexadecimal_small, hexadecimal_capital}) {
      for (const std::int64_t capacity : {31, 32, 60}) {
        const IntegerCall<Integer> call = {static_cast<Integer>(value), 0, 1, flags, capacity};
        ASSERT_EQ((show<Unit>(call, service)), (expected_integer<Integer, Unit>(record, call)))
            << call;
      }
    }
  };
  std::uint64_t power = 1;
  for (int digits = 1; digits <= 20; ++digits, power *= 10) {
    for (const std::uint64_t value : {power - 1, power, power + power / 7, 0 - power}) {
      ASSERT_NO_FATAL_FAILURE(check(value, services.format_int64));
      ASSERT_NO_FATAL_FAILURE(check(value, services.format_uint64));
      ASSERT_NO_FATAL_FAILURE(check(value, services.format_uint32));
      ASSERT_NO_FATAL_FAILURE(check(value, services.format_int64_8bit));
      ASSERT_NO_FATAL_FAILURE(check(value, services.format_uint64_8bit));
      ASSERT_NO_FATAL_FAILURE(check(value, services.format_int32_8bit));
    }
  }
}

TEST_F(IntegerTest, FollowsTheRulesForAnyCall) {
  Random random(test_seed(4));
  constexpr std::u16string_view patterns[] = {u"3", u"3;2", u"321", u"",     u"0",  u"3-", u"30",
                                              u"-", u"9;9", u"1",   u"3;-1", u"ab", u"x2"};
  constexpr char16_t separators[] = {u',', u'.', u' ', u'\u00A0', u'\u202F', u'\u2019', u'\0'};
  for (int i = 0; i < 8000; ++i) {
    const std::u16string_view pattern = random.of(patterns);
    set_grouping(pattern, random.one_in(30) ? INT64_MIN : std::ssize(pattern));
    record.grouping_symbol = random.of(separators);
    if (random.one_in(10)) corrupt_record(random);
    compare(random, services.format_int64, services.format_int64_too);
    compare(random, services.format_uint64, services.format_uint64_too);
    compare(random, services.format_int32, services.format_int32_too);
    compare(random, services.format_uint32, services.format_uint32_too);
    compare(random, services.format_int64_8bit, services.format_int64_8bit_too);
    compare(random, services.format_uint64_8bit, services.format_uint64_8bit_too);
    compare(random, services.format_int32_8bit, services.format_int32_8bit_too);
    compare(random, services.format_uint32_8bit, services.format_uint32_8bit_too);
    if (HasFatalFailure()) return;
  }
}

TEST_F(IntegerTest, ShowsPointers) {
  const auto check = [&](IntegerCall<std::uint64_t> call, std::u16string_view text,
                         std::int64_t length) {
    const auto room = static_cast<std::size_t>(std::max<std::int64_t>(call.capacity, 0));
    std::u16string written(text);
    written.resize(room, u'\0');
    const Status status = length > call.capacity ? Status::does_not_fit : Status::ok;
    EXPECT_EQ((show<char16_t>(call, services.format_pointer)),
              (Outcome<char16_t>{status, length, written}))
        << call;
  };
  check({0}, u"NIL", 3);
  check({0, -5, 9, pointer_left | pointer_prefix}, u"NIL  ", 5);
  check({31, 0, 9, pointer_prefix}, u"0x1F", 4);
  check({31, -6, INT32_MAX, pointer_prefix}, u"  0x1F", 6);
  check({31, 6, 0, pointer_left}, u"1F    ", 6);
  check({UINT64_MAX, 0, 0, pointer_prefix}, u"0xFFFFFFFFFFFFFFFF", 18);
  check({31, 10, 0, 0, 5}, u"   1F", 10);
  check({0x12345678, 10, 0, pointer_left, 5}, u"45678", 10);
  check({0x12345678, 0, 0, pointer_prefix, 5}, u"45678", 10);
  check({31, INT32_MIN, 0, 0, 3}, u" 1F", 2147483648);
  check({0, 0, 0, 0, -1}, u"", 3);
}

}  // namespace
}  // namespace jwnls::test
