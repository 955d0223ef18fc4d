#include "client/utf8.h"

#include <gtest/gtest.h>

namespace jwnls::client {
namespace {

struct Pair {
  std::u16string utf16;
  std::string utf8;
};

const Pair pairs[] = {
    {u"", ""},
    {u"a\x7F", "a\x7F"},
    {u"\x80\x7FF", "\xC2\x80\xDF\xBF"},
    {u"\x800\xD7FF\xE000\xFFFF", "\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"},
    {u"\xD800\xDC00\xDBFF\xDFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
    {u"15. M\u00E4rz \U0001E900", "15. M\u00E4rz \U0001E900"},
};

TEST(Utf8, TranscodesBothWays) {
  for (const auto& [utf16, utf8] : pairs) {
    EXPECT_EQ(to_utf8(utf16), utf8);
    EXPECT_EQ(to_utf16(utf8), utf16) << utf8;
  }
}

TEST(Utf8, ReplacesSurrogatesWithoutPartner) {
  const Pair cases[] = {
      {{0xD800}, "\uFFFD"},  // the text ends
      {{0xD800, u'a'},
       "\uFFFD"
       "a"},                                           // something else follows
      {{0xDC00, 0xD800}, "\uFFFD\uFFFD"},              // the wrong way round
      {{0xD800, 0xD800, 0xDC00}, "\uFFFD\U00010000"},  // the second has its partner
  };
  for (const auto& [utf16, utf8] : cases) EXPECT_EQ(to_utf8(utf16), utf8);
}

TEST(Utf8, RefusesMalformedInput) {
  const auto refuse = [](auto... texts) {
    for (const std::string_view text : {std::string_view(texts)...}) {
      EXPECT_FALSE(to_utf16(text)) << testing::PrintToString(text);
    }
  };
  refuse("\x80", "a\xC3", "\xE2\x82", "\xF0\x9F\x98");         // alone, and cut
  refuse("\xC3(", "\xE2(\x82");                                // no continuation
  refuse("\xC0\xAF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF");      // overlong
  refuse("\xED\xA0\x80");                                      // a surrogate
  refuse("\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xFF");  // past U+10FFFF
}

}  // namespace
}  // namespace jwnls::client
