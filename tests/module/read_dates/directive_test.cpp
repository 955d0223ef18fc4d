// What each directive reads in either dialect, seen through the time service: its value shows the
// fields, its consumed count how far the walk came.

#include "tests/module/read_dates/reading.h"

namespace jwnls::test {
namespace {

constexpr std::uint32_t strict = 1;   // walks time pattern 1
constexpr std::uint32_t lenient = 8;  // walks time pattern 2; not recognition
constexpr std::optional<double> fails;

constexpr double h = 3600;
constexpr double m = 60;

class DirectiveTest : public ReadingTest {
 protected:
  // What either dialect consumes, when it is not the whole text.
  static constexpr std::size_t all = std::u16string_view::npos;

  void expect(const char16_t* pattern, std::u16string_view text, std::optional<double> strict_value,
              std::optional<double> lenient_value, std::size_t consumed = all,
              std::size_t lenient_consumed = all) {
    set_time_patterns(pattern, pattern);
    const std::size_t end = std::min(consumed, text.size());
    expect_read(Service::time, text, strict, strict_value, end);
    expect_read(Service::time, text, lenient, lenient_value,
                lenient_consumed == all ? end : lenient_consumed);
  }
  // Texts that neither dialect reads.
  template <typename... Texts>
  void refuse(const char16_t* pattern, Texts... texts) {
    (expect(pattern, texts, fails, fails), ...);
  }
};

TEST_F(DirectiveTest, NumbersHaveTheirWidthAndRange) {
  expect(u"%H", u"7", 7 * h, 7 * h);
  expect(u"%H:", u"7:", fails, 7 * h);
  expect(u"%#H:", u"7:", 7 * h, 7 * h);
  expect(u"%H", u"  07", 7 * h, 7 * h);    // blanks before the pattern are skipped
  expect(u"x%H:", u"x 7:", 7 * h, 7 * h);  // a blank takes one of the two units
  expect(u"x%H:", u"x  7:", fails, 7 * h);
  expect(u"x%H:", u"x 07:", fails, 7 * h);
  expect(u"x%#H:", u"x   07:", 7 * h, 7 * h);
  expect(u"x%H", u"x ", 0, fails);
  expect(u"%H%M", u"0730", 7 * h + 30 * m, fails);
  expect(u"%H", u"123", 12 * h, fails, 2);
  expect(u"%k", u"24", fails, 0);
  expect(u"%l", u"0", 0, 12 * h);
  expect(u"%l", u"24", fails, 12 * h);
  expect(u"%l", u"12", fails, 12 * h);
  expect(u"%I", u"12", 0, 12 * h);
  expect(u"%I", u"0", fails, 0);
  expect(u"%I", u"13", fails, 13 * h);
  expect(u"%S.%s", u"59.9", 59.009, 59.009);
  expect(u"%s", u"1000", 0.1, fails, 3);
  expect(u"%d", u"5/06", fails, 0, 1);
  expect(u"%m/%O/%o/%E/%e", u"12/1/02/9/31", 0, 0);
  expect(u"%u%w", u"76", 0, fails);
  expect(u"%u,%w", u"7,6", 0, 0);
  expect(u"x%#u", u"x 7", fails, 0);
  expect(u"%Y", u"1582", 0, 0);
  expect(u"%Y", u"1581", fails, 0, 2, 2);  // falls back to two digits
  expect(u"%G", u"2024", fails, 0);
  expect(u"%U/%V/%W", u"0/53/7", fails, 0);
  expect(u"%H:%M:%S", u" 00:00:07x", 7, 7, 9);
  expect(u"%H:%M:%S", u"23:59:591", 86399, fails, 8);
  expect(u"%H:%M:%S", u"2:03:04", fails, 2 * h + 3 * m + 4);
  refuse(u"x%H", u"x  ");
  refuse(u"x%d", u"x ");
  refuse(u"%H", u"24", u"\uFF11", u"\u0131");
  refuse(u"%M", u"60");
  refuse(u"%d", u"32");
  refuse(u"%u", u"0");
  refuse(u"%#Y", u"1581");
  refuse(u"%U", u"54");
  refuse(u"%H:%M:%S", u"24:00:00", u"23:60:00", u"23:59:60", u"23:59:\u0135\u0139");
}

TEST_F(DirectiveTest, LiteralsMatchByDialect) {
  expect(u"%%H", u"7", 7 * h, 7 * h);  // the second '%' opens anew
  expect(u"%0%?H", u"7", 7 * h, 7 * h);
  expect(u"%#?H:", u"07:", 7 * h, 7 * h);
  expect(u"%H%#", u"07x", 7 * h, 7 * h, 2);
  expect(u"%#H%#", u"7x", 7 * h, 7 * h, 1);
  expect(u"%#H h", u"7 H", fails, 7 * h);
  expect(u"%#H h", u"7 h", 7 * h, 7 * h);
  expect(u"%#H\u00DC\u03A3", u"7\u00FC\u03C2", fails, 7 * h);
  expect(u"%#HS", u"7\u017F", fails, 7 * h);
  expect(u"\U0001F319%H", u"\U0001F31907", 7 * h, 7 * h);
  expect(u"\u65F6%H", u"\u65F607", 7 * h, 7 * h);
  expect(u"%H", u"07 and more", 7 * h, 7 * h, 2);
  expect(u"", u"   ", 0, 0);
  expect(u"", u"  x", 0, 0, 2);
  refuse(u"%H%", u"7");
  refuse(u"\u65F6%H", u"\u65F707");
  refuse(u"%H:%M", u"07");
  refuse(u"%H", u"", u"   ");
}

TEST_F(DirectiveTest, KnowsNoOtherLetters) {
  constexpr std::u16string_view strictly = u"YymOodEeBCbAFauwHIklMSspZz";
  constexpr std::u16string_view leniently = u"YyGmOodEeBCbAFafQqUVWHIklMSsuwpZz";
  // A text that each known letter reads something of.
  const auto text_for = [](char16_t letter) {
    const auto is = [letter](std::u16string_view set) { return set.find(letter) != set.npos; };
    return is(u"BCb")    ? u"May"
           : is(u"AFaf") ? u"Sunday"
           : is(u"Qq")   ? u"Q1"
           : is(u"p")    ? u"AM"
           : is(u"Z")    ? u"xst"
           : is(u"YyG")  ? u"2024"
                         : u"1";
  };
  for (char16_t letter = 0x21; letter < 0x180; ++letter) {
    if (letter == u'%' || letter == u'#' || letter == u'0' || letter == u'?') continue;
    const std::u16string pattern = {u'%', letter};
    set_time_patterns(pattern, pattern);
    const std::u16string_view text = text_for(letter);
    const auto known = [letter](std::u16string_view set) { return set.find(letter) != set.npos; };
    EXPECT_EQ(read_text<char16_t>(Service::time, text, strict).value.has_value(), known(strictly))
        << unsigned{letter};
    EXPECT_EQ(read_text<char16_t>(Service::time, text, lenient).value.has_value(), known(leniently))
        << unsigned{letter};
  }
}

TEST_F(DirectiveTest, NamesComeFromTheirLists) {
  expect(u"%B!", u"march!", 0, 0);
  expect(u"%B!", u"  MAR!", fails, 0);
  expect(u"%b!", u"  mar!", 0, 0);
  expect(u"%b!", u"March!", fails, 0);
  expect(u"%B", u"Marc", fails, 0, 0, 3);
  expect(u"%A", u"sat", fails, 0);
  expect(u"%a", u"saturday", 0, 0);
  expect(u"%a", u"sat", fails, 0);  // strictly the full names, whatever the letter's case
  expect(u"%Q", u"q3", fails, 0);
  expect(u"%q", u"3RD Quarter", fails, 0);
  expect(u"%B", u"Smarch", fails, fails);
  // A byte of UTF-8 is no character of Latin-1, also behind the first eight.
  set_text(handle->record->full_months[8], u"Septembr\x80");
  set_time_patterns(u"%B", u"%B");
  for (const char* text : {"Septembr\x80 2024", "Septembr\x80"}) {
    EXPECT_FALSE(read_text<char>(Service::time, std::string_view(text), strict).value);
  }
  // A list ends where the next one begins.
  expect(u"%A", u"sun", fails, 0);
  expect(u"%B", u"jan", fails, 0);
  refuse(u"%a", u"january");
  // A name that begins a later one wins over it; a decomposed letter is another text.
  set_text(handle->record->full_months[0], u"\u00C9t\U00010437");
  set_text(handle->record->full_months[1], u"\u00C9t\U00010437s");
  expect(u"%B", u"\u00E9T\U00010437s", 0, 0, 4);
  expect(u"%B", u"E\u0301t\U00010437s", fails, fails);
  // A letter beyond Latin-1 may have an ASCII letter for its capital.
  set_text(handle->record->full_months[2], u"ma\u017Fch");
  expect(u"%B 12:34:56", u"MASCH 12:34:56", 0, 0);
  expect(u"%B 12:34:56", u"MATCH 12:34:56", fails, fails);
  // An empty name matches wherever it stands in the list, and reads nothing.
  set_text(handle->record->full_months[5], u"", -3);
  expect(u"%B", u"July", 0, 0, 0);
  expect(u"%B", u"  May", 0, 0, 5);
  // A length that claims more than an entry holds is cut to it.
  set_text(handle->record->full_months[5], std::u16string(60, u'y'), INT64_MAX);
  expect(u"%B", u"yyyy", fails, fails);
}

TEST_F(DirectiveTest, DesignatorsMoveTheHour) {
  expect(u"%I %p", u"12 am", 0, 0);
  expect(u"%I %p", u"12 PM", 12 * h, 12 * h);
  expect(u"%I %p", u"11 pm", 23 * h, 23 * h);
  expect(u"%I %p", u"0 PM", fails, fails);
  expect(u"%H %p", u"13 AM", 13 * h, fails);
  expect(u"%H %p", u"13 PM", fails, fails);
  expect(u"%p %#I", u"PM 3", 3 * h, 15 * h);  // strictly the designator moves what came before it
  expect(u"%p", u"PM", 12 * h, fails);
}

TEST_F(DirectiveTest, OffsetsHaveHoursAndMinutes) {
  expect(u"%z", u"-05:30", 0, 0);
  expect(u"%z!", u"+0530!", 0, 0);
  expect(u"%z", u"+05", 0, 0);
  expect(u"%z!", u"+12:5!", 0, fails);
  expect(u"%z!", u"+12: 5!", 0, 0);
  refuse(u"%z!", u"05 : 30!", u"+12:!", u"+12:   5!");
  refuse(u"%z", u"+5x", u"Z", u"+13", u"+12:60");
}

TEST_F(DirectiveTest, ZonesAreLookedUpByName) {
  expect(u"%H%Z", u"07Europe/Berlin", 7 * h, 7 * h);
  expect(u"%H %Z", u"07   Europe/Berlin", 7 * h, 7 * h);
  expect(u"%H %Z", u"07 xst", 7 * h, 7 * h);
  refuse(u"%H %Z", u"07 Nowhere", u"07 XSTX");
  refuse(u"%H %Z", u"07 XST and more");  // looked up as a name that ends in the blank
  host.known_zones = {u"Here "};
  expect(u"%Z%H", u"Here 07", 7 * h, 7 * h);
  refuse(u"%Z%H%Z", u"Here 07" + std::u16string(257, u'x'));  // the second is too long to look up
}

}  // namespace
}  // namespace jwnls::test
