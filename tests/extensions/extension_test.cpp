// What a host meets when it loads the extensions: exports, factories, destruction, message texts.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "abi/message_texts.h"
#include "tests/extensions/loaded_extension.h"

namespace jwnls::test {
namespace {

class ExtensionTest : public testing::TestWithParam<const char*> {};

TEST_P(ExtensionTest, ReportsItsInterfaceAndItself) {
  const ExtensionLibrary library(GetParam());
  FakeHost host;
  EXPECT_EQ(library.symbol<JwExtent>("jwextent")(&host.kernel), 0u);
  std::int64_t major = 0, minor = 0;
  EXPECT_EQ(library.symbol<JwExtver>("jwextver")(&host.kernel, &major, &minor), 0u);
  EXPECT_EQ(std::pair(major, minor), (std::pair<std::int64_t, std::int64_t>(6, 1)));
  const char* texts[27] = {};
  EXPECT_EQ(library.symbol<JwVersionRecord>("jwvercn1")(texts), 0u);
  EXPECT_EQ(std::string(texts[5]).substr(0, std::strlen(GetParam())), GetParam());
  EXPECT_EQ(texts[26], nullptr) << "208 bytes, no more";
}

TEST_P(ExtensionTest, ObjectsLiveInAPoolOfTheKernelAndEndWithIt) {
  const ExtensionLibrary library(GetParam());
  FakeHost host;
  const std::vector<std::string> before = host.live();
  void* first = library.make(&host.kernel, &host.errors);
  void* second = library.make(&host.kernel, &host.errors);
  ASSERT_NE(first, nullptr);
  ASSERT_NE(second, nullptr);
  EXPECT_NE(first, second);
  EXPECT_GT(host.live().size(), before.size());
  for (void* object : {first, second}) {
    if (std::string_view(GetParam()) == "jwemsg") {
      destroy_object(static_cast<MessageExtension*>(object));
    } else {
      destroy_object(static_cast<LocaleDatabase*>(object));
    }
  }
  EXPECT_EQ(host.live(), before);
  EXPECT_EQ(host.faults, std::vector<std::string>());
}

TEST_P(ExtensionTest, GivesNothingAndLeavesNothingWithoutMemory) {
  const ExtensionLibrary library(GetParam());
  for (const int failing_call : {1, 2}) {  // the pool; the object in it
    FakeHost host;
    const std::vector<std::string> before = host.live();
    host.failing_call = failing_call;
    EXPECT_EQ(library.make(&host.kernel, &host.errors), nullptr) << failing_call;
    EXPECT_EQ(host.failed.size(), 1u) << failing_call;
    EXPECT_EQ(host.live(), before) << failing_call;
    EXPECT_EQ(host.reports.size(), failing_call == 2 ? 1u : 0u);
  }
}

INSTANTIATE_TEST_SUITE_P(Extensions, ExtensionTest, testing::Values("jwnlsldb", "jwemsg"),
                         [](const auto& info) { return std::string(info.param); });

TEST(Messages, AreDeliveredAsFarAsTheyFit) {
  const LoadedExtension<MessageTexts> extension("jwemsg");
  const auto check = [&](std::uint32_t asked, std::int64_t capacity, Status status,
                         const std::u16string& text) {
    std::u16string out(message_text_capacity + 1, u'~');
    std::int64_t length = -1;
    EXPECT_EQ(extension->message(&extension->base, asked, out.data(), capacity, &length),
              code(status));
    EXPECT_EQ(length, std::ssize(text));
    EXPECT_EQ(out, text + std::u16string(out.size() - text.size(), u'~'));
  };
  check(0x803FC002, message_text_capacity, Status::ok, u"out of memory");
  check(0x803FC002, 13, Status::ok, u"out of memory");
  check(0x803FC002, 12, Status::does_not_fit, u"out of memor");
  check(0x803FC002, -1, Status::does_not_fit, u"");
  check(0x8000ABCD, message_text_capacity, Status::lookup_failed, u"unknown status 0x8000ABCD");
  check(0x8000ABCD, 16, Status::does_not_fit, u"unknown status 0");
  char16_t unit = 0;
  std::int64_t length = 0;
  EXPECT_EQ(extension->message(nullptr, 0, &unit, 1, nullptr), code(Status::null_argument));
  EXPECT_EQ(extension->message(nullptr, 0, nullptr, 1, &length), code(Status::null_argument));
}

}  // namespace
}  // namespace jwnls::test
