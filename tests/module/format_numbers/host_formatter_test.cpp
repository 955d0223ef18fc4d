// Calls that the host wants to format by itself.

#include <optional>

#include "tests/module/format_numbers/numbers_test.h"

namespace jwnls::test {
namespace {

using namespace number_flags;

struct Forwarded {
  LocaleHandle* handle;
  double value;
  std::int32_t width, decimals;
  std::uint32_t flags;
  const char16_t* out;
  std::int64_t capacity;
  const std::int64_t* length;
  const FloatOptions* options;

  bool operator==(const Forwarded&) const = default;
};

std::optional<Forwarded> forwarded;  // the latest call of the host's formatter
std::u16string host_text;
std::int64_t host_length;
constexpr std::uint32_t host_status = 0x803F0BAD;
std::uint32_t answered_status;

std::uint32_t format_as_host(LocaleHandle* handle, double value, std::int32_t width,
                             std::int32_t decimals, std::uint32_t flags, char16_t* out,
                             std::int64_t capacity, std::int64_t* length,
                             const FloatOptions* options) {
  forwarded = {handle, value, width, decimals, flags, out, capacity, length, options};
  const auto room = static_cast<std::size_t>(std::max<std::int64_t>(capacity, 0));
  host_text.copy(out, room);
  *length = host_length;
  return answered_status;
}

class HostFormatterTest : public NumbersTest {
 protected:
  HostFormatterTest() {
    formatting.format_float = format_as_host;
    kernel.formatting = &formatting;
    store_kernel_handle(&kernel);
    forwarded.reset();
    answer(u"host");
    answered_status = 0;
  }
  void TearDown() override { store_kernel_handle(nullptr); }

  static void answer(std::u16string_view text) {
    host_text = text;
    host_length = std::ssize(text);
  }

  HostFormatting formatting{};
  Kernel kernel{};
};

TEST_F(HostFormatterTest, IsAskedOnlyWhenItsStateIsZeroAndItExists) {
  expect({1.5, 9, 1, fixed}, u"host");
  for (const std::uint64_t state : {std::uint64_t{1}, std::uint64_t{1} << 32, UINT64_MAX}) {
    kernel.formatter_state = state;
    expect({1.5, 9, 1, fixed}, u"      1.5");
  }
  kernel.formatter_state = 0;
  formatting.format_float = nullptr;
  expect({1.5, 0, 1, fixed}, u"1.5");
  kernel.formatting = nullptr;
  expect({1.5, 0, 1, fixed}, u"1.5");
  store_kernel_handle(nullptr);
  expect({1.5, 0, 1, fixed}, u"1.5");
}

TEST_F(HostFormatterTest, GetsTheCallUnchanged) {
  char16_t out[8];
  std::int64_t length = 0;
  const FloatOptions options = {1, {}, u','};
  answered_status = host_status;
  EXPECT_EQ(services.format_number(handle, -0.5, -7, 99, 0xFFFFFFFF, out, 5, &length), host_status);
  EXPECT_EQ(forwarded, (Forwarded{handle, -0.5, -7, 99, 0xFFFFFFFF, out, 5, &length, nullptr}));
  EXPECT_EQ(services.format_number_with_options(handle, 2, 7, -3, 2, out, 8, &length, &options),
            host_status);
  EXPECT_EQ(forwarded, (Forwarded{handle, 2, 7, -3, 2, out, 8, &length, &options}));
  // By way of the services that are built on slot 24, too.
  answered_status = 0;
  set_currency(u"$");
  EXPECT_EQ(services.format_currency(handle, 5, 6, 2, 0, out, 8, &length), 0u);
  EXPECT_EQ(std::u16string_view(out, 5), u"$host");
  EXPECT_EQ(forwarded->flags, fixed | group);
  EXPECT_EQ(services.format_percent(handle, 5, 6, 2, 0, out, 8, &length), 0u);
  EXPECT_EQ(std::u16string_view(out, 5), u"host%");
  EXPECT_EQ(forwarded->value, 500);
}

TEST_F(HostFormatterTest, IsConvertedForTheEightBitSlot) {
  const FloatOptions options = {1, {}, u','};
  NumberCall call = {2.5, 7, 3, exponent_small, 9, &options};
  answer(u"1\u202F2\u00B7x");
  EXPECT_EQ(format_8bit(call), (Outcome<char>{Status::ok, 8, "1\u202F2\u00B7x"}));
  EXPECT_EQ(forwarded->value, 2.5);
  EXPECT_EQ(forwarded->width, 7);
  EXPECT_EQ(forwarded->decimals, 3);
  EXPECT_EQ(forwarded->flags, exponent_small);
  EXPECT_EQ(forwarded->options, &options);
  // Whole units that fit; the host's own status wins.
  call.capacity = 6;
  EXPECT_EQ(format_8bit(call), (Outcome<char>{Status::does_not_fit, 5, "1\u202F2"}));
  answered_status = host_status;
  EXPECT_EQ(format_8bit(call), (Outcome<char>{Status{host_status}, 5, "1\u202F2"}));
  // Lengths that are not to be trusted; what the host says it needs, and has not written.
  for (const std::int64_t claimed : {INT64_MIN, std::int64_t{-1}, std::int64_t{0}}) {
    host_length = claimed;
    EXPECT_EQ(format_8bit(call), (Outcome<char>{Status{host_status}, 0, ""}));
  }
  answer(u"**");
  for (const std::int64_t claimed : {std::int64_t{7}, std::int64_t{5000}, INT64_MAX}) {
    host_length = claimed;
    for (const std::int64_t capacity : {std::int64_t{0}, std::int64_t{6}, std::int64_t{3000}}) {
      call.capacity = capacity;
      const Outcome<char> outcome = format_8bit(call);
      EXPECT_LE(outcome.length, capacity);
      EXPECT_EQ(outcome.text.find_first_not_of('*'), std::string::npos) << claimed;
    }
  }
}

}  // namespace
}  // namespace jwnls::test
