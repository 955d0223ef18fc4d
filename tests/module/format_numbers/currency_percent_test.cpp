// Currency and percent, compared with their stated steps around the floating formatter.

#include "tests/module/format_numbers/numbers_test.h"
#include "tests/support/seed.h"

namespace jwnls::test {
namespace {

using namespace number_flags;

class CurrencyPercentTest : public NumbersTest {
 protected:
  Outcome<char16_t> show(FormatNumber<char16_t>* service, const NumberCall& call) {
    return run_floating<char16_t>(call.capacity,
                                  [&](char16_t* out, std::int64_t capacity, auto* length) {
                                    return service(handle, call.value, call.width, call.decimals,
                                                   call.flags, out, capacity, length);
                                  });
  }

  void expect_text(FormatNumber<char16_t>* service, const NumberCall& call,
                   std::u16string_view text) {
    EXPECT_EQ(show(service, call),
              (Outcome<char16_t>{Status::ok, std::ssize(text), std::u16string(text)}))
        << call;
  }

  // What the formatter does inside a field of which `taken` places belong to something else.
  Outcome<char16_t> inner(const NumberCall& call, std::int64_t taken, double value,
                          std::uint32_t kind) {
    const std::int64_t width = std::max<std::int64_t>(call.width - taken, INT32_MIN);
    Outcome<char16_t> number =
        expected_number(record, {value, static_cast<std::int32_t>(width), call.decimals, kind,
                                 std::max<std::int64_t>(call.capacity - taken, 0)});
    if (number.length == untouched_length) number.length = 0;
    number.length += taken;
    return number;
  }

  Outcome<char16_t> expected_currency(const NumberCall& call) {
    const std::u16string symbol(currency_symbol_of(record));
    const std::int64_t taken = std::ssize(symbol);
    if (call.capacity < taken) return {Status::does_not_fit, taken, u""};
    Outcome<char16_t> amount =
        inner(call, taken, call.value, group | ((call.flags & 1) != 0 ? integer_first : fixed));
    amount.text.insert(0, symbol.size(), u' ');
    if (amount.status != Status::ok && amount.status != Status::grouping_failed) return amount;
    amount.status = Status::ok;
    const auto field = static_cast<std::size_t>(std::max(call.width, 0));
    const std::size_t first =
        std::u16string_view(amount.text).substr(0, field).find_first_not_of(' ');
    amount.text.replace(first == std::u16string::npos ? 0 : first - symbol.size(), symbol.size(),
                        symbol);
    return amount;
  }

  Outcome<char16_t> expected_percent(const NumberCall& call) {
    const bool parentheses = call.value < 0 && (call.flags & 1) != 0;
    Outcome<char16_t> share = inner(call, parentheses ? 2 : 1, call.value * 100.0, fixed);
    if (share.status != Status::ok) return share;
    const bool sign_in_front = share.text[0] == u'-';
    if (parentheses) {
      share.text[0] = u'(';
      const auto minus = sign_in_front ? std::u16string::npos : share.text.find(u'-');
      if (minus != std::u16string::npos) share.text[minus] = u' ';
    }
    share.text += parentheses ? u"%)" : u"%";
    return share;
  }
};

TEST_F(CurrencyPercentTest, PutTheSymbolRightBeforeTheAmount) {
  FormatNumber<char16_t>* const currency = services.format_currency;
  set_currency(u"$");
  expect_text(currency, {-1234.5, 12, 2}, u"  $-1,234.50");
  expect_text(currency, {1234.5, 0, 2}, u"$1,234.50");
  expect_text(currency, {1234.5, -12, 2}, u"$1,234.50     ");
  expect_text(currency, {1234.5, 8, 2, 0, 8}, u"$1234.50");  // no room for separators
  set_grouping(u"0");
  expect_text(currency, {1234.5, 10, 2}, u"  $1234.50");
  set_currency(u"CHF\u00A0");
  expect_text(currency, {5, 10, 2}, u"  CHF\u00A05.00");
  set_currency(u"");
  expect_text(currency, {missing('.'), 6, 2}, u"     .");
}

TEST_F(CurrencyPercentTest, PutThePercentSignBehindTheShare) {
  FormatNumber<char16_t>* const percent = services.format_percent;
  expect_text(percent, {0.125, 6, 1}, u" 12.5%");
  expect_text(percent, {-0.5, 0, 0, 1}, u"(50%)");
  expect_text(percent, {-0.5, 8, 0, 1}, u"(   50%)");
  expect_text(percent, {-1e-12, 8, 99, 1}, u"(1E-10%)");  // the exponent keeps its minus
}

TEST_F(CurrencyPercentTest, FollowTheirStepsForAnyCall) {
  Random random(test_seed(5));
  constexpr std::u16string_view symbols[] = {u"$", u"", u"CHF\u00A0", u"\u20AC", u"R$ ", u" k"};
  constexpr std::u16string_view groupings[] = {u"3", u"3;2", u"0"};
  for (int i = 0; i < 20000; ++i) {
    set_currency(random.of(symbols));
    if (random.one_in(50))
      record.currency_symbol_length = random.of({UINT64_MAX, std::uint64_t{129}});
    set_grouping(random.of(groupings));
    if (random.one_in(10)) corrupt_record(random);
    NumberCall call = {random.number(), random.between(-20, 30), random.between(-1, 8),
                       random.between(0u, 1u), random.between(-1, 40)};
    if (random.one_in(20))
      call.value = random.of({missing('A'), missing('.'), HUGE_VAL, -HUGE_VAL});
    if (random.one_in(20)) call.decimals = random.of({99, 350, INT32_MIN, INT32_MAX});
    if (random.one_in(20)) call.width = random.of({INT32_MIN, INT32_MIN + 2, INT32_MAX});
    if (random.one_in(5)) call.capacity = 400;
    const auto symbol = printable(std::u16string(currency_symbol_of(record)));
    ASSERT_EQ(show(services.format_currency, call), expected_currency(call)) << call << symbol;
    ASSERT_EQ(show(services.format_percent, call), expected_percent(call)) << call;
  }
}

}  // namespace
}  // namespace jwnls::test
