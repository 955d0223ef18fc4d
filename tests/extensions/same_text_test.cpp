// Comparison without regard to case: every unit against ICU's own copy of the Unicode database.

#include "module/text/same_text.h"

#include <gtest/gtest.h>
#include <unicode/uchar.h>

namespace jwnls::test {
namespace {

// The two may be of different Unicode releases, so a unit that ICU does not know is left out.
TEST(SameText, MapsEveryUnitAsIcuDoes) {
  int mapped = 0;
  for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
    const UChar32 upper = u_toupper(static_cast<UChar32>(unit));
    if (!u_isdefined(static_cast<UChar32>(unit)) || !u_isdefined(upper)) continue;
    const auto plain = static_cast<char16_t>(unit);
    const char16_t expected = upper <= 0xFFFF ? static_cast<char16_t>(upper) : plain;
    ASSERT_EQ(simple_upper_case(plain), expected) << std::hex << static_cast<unsigned>(unit);
    mapped += expected != plain ? 1 : 0;
  }
  EXPECT_GT(mapped, 1000);
}

TEST(SameText, ComparesUnitByUnit) {
  const auto check = [&](std::u16string_view a, std::u16string_view b, bool same) {
    EXPECT_EQ(same_text_nocase(a, b), same)
        << testing::PrintToString(a) << ' ' << testing::PrintToString(b);
    EXPECT_EQ(same_text_nocase(b, a), same);
  };
  check(u"", u"", true);
  check(u"March", u"mARCH", true);
  check(u"march", u"marc", false);
  check(u"", u"m", false);
  check(u"MÄRZ", u"märz", true);
  check(u"kasım", u"KASIM", true);   // dotless i
  check(u"nisan", u"NİSAN", false);  // but İ is its own capital
  check(u"straße", u"STRASSE", false);
  check(u"\xD801\xDC28", u"\xD801\xDC00", false);  // surrogates have no case
  check(u"[", u"{", false);                        // 0x20 apart, as letters are
}

}  // namespace
}  // namespace jwnls::test
