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
  struct Row {
    std::u16string_view a, b;
    bool same;
  };
  constexpr Row rows[] = {
      {u"", u"", true},
      {u"March", u"mARCH", true},
      {u"march", u"marc", false},
      {u"", u"m", false},
      {u"MÄRZ", u"märz", true},
      {u"kasım", u"KASIM", true},   // dotless i
      {u"nisan", u"NİSAN", false},  // but İ is its own capital
      {u"straße", u"STRASSE", false},
      {u"\xD801\xDC28", u"\xD801\xDC00", false},  // surrogates have no case
      {u"[", u"{", false},                        // 0x20 apart, as letters are
  };
  for (const Row& row : rows) {
    EXPECT_EQ(same_text_nocase(row.a, row.b), row.same)
        << testing::PrintToString(row.a) << ' ' << testing::PrintToString(row.b);
    EXPECT_EQ(same_text_nocase(row.b, row.a), row.same);
  }
}

}  // namespace
}  // namespace jwnls::test
