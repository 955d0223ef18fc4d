// What each directive reads in either dialect, seen through the time service: its value shows the
// fields, its consumed count how far the walk came.

#include "tests/reading/reading.h"

namespace jwnls::test {
namespace {

constexpr std::uint32_t strict = 1;   // walks time pattern 1
constexpr std::uint32_t lenient = 8;  // walks time pattern 2; not recognition
constexpr std::optional<double> fails;

struct DirectiveRow {
  const char16_t* pattern;
  const char16_t* text;
  std::optional<double> strict_value;
  std::optional<double> lenient_value;
  int consumed = -1;          // by the strict dialect; -1: the whole text
  int lenient_consumed = -1;  // -1: as the strict dialect
};

constexpr double h = 3600;
constexpr double m = 60;

class DirectiveTest : public ReadingTest {
 protected:
  void expect(const DirectiveRow& row) {
    set_time_patterns(row.pattern, row.pattern);
    const std::u16string_view text = row.text;
    const int consumed = row.consumed < 0 ? static_cast<int>(text.size()) : row.consumed;
    const int lenient_consumed = row.lenient_consumed < 0 ? consumed : row.lenient_consumed;
    expect_read(Service::time, text, strict, row.strict_value, static_cast<std::size_t>(consumed));
    expect_read(Service::time, text, lenient, row.lenient_value,
                static_cast<std::size_t>(lenient_consumed));
  }
  // Texts that neither dialect reads.
  template <typename... Texts>
  void refuse(const char16_t* pattern, Texts... texts) {
    (expect({pattern, texts, fails, fails}), ...);
  }
};

constexpr DirectiveRow number_fields[] = {
    {u"%H", u"7", 7 * h, 7 * h},
    {u"%H:", u"7:", fails, 7 * h},
    {u"%#H:", u"7:", 7 * h, 7 * h},
    {u"%H", u"  07", 7 * h, 7 * h},    // blanks before the pattern are skipped
    {u"x%H:", u"x 7:", 7 * h, 7 * h},  // a blank takes one of the two units
    {u"x%H:", u"x  7:", fails, 7 * h},
    {u"x%H:", u"x 07:", fails, 7 * h},
    {u"x%#H:", u"x   07:", 7 * h, 7 * h},
    {u"x%H", u"x ", 0, fails},
    {u"%H%M", u"0730", 7 * h + 30 * m, fails},
    {u"%H", u"123", 12 * h, fails, 2},
    {u"%#k", u"24", 0, 0},
    {u"%k", u"24", fails, 0},
    {u"%l", u"0", 0, 12 * h},
    {u"%l", u"24", fails, 12 * h},
    {u"%l", u"12", fails, 12 * h},
    {u"%I", u"12", 0, 12 * h},
    {u"%I", u"0", fails, 0},
    {u"%I", u"13", fails, 13 * h},
    {u"%S.%s", u"59.9", 59.009, 59.009},
    {u"%s", u"1000", 0.1, fails, 3},
    {u"%d", u"5/06", fails, 0, 1},
    {u"%m/%O/%o/%E/%e", u"12/1/02/9/31", 0, 0},
    {u"%u%w", u"76", 0, fails},
    {u"%u,%w", u"7,6", 0, 0},
    {u"x%#u", u"x 7", fails, 0},
    {u"%Y", u"1582", 0, 0},
    {u"%Y", u"1581", fails, 0, 2, 2},  // falls back to two digits
    {u"%Y", u"24", fails, 0},
    {u"%G", u"2024", fails, 0},
    {u"%U/%V/%W", u"0/53/7", fails, 0},
    {u"%H:%M:%S", u"23:59:59", 86399, 86399},
    {u"%H:%M:%S", u" 00:00:07x", 7, 7, 9},
    {u"%H:%M:%S", u"23:59:591", 86399, fails, 8},
    {u"%H:%M:%S", u"2:03:04", fails, 2 * h + 3 * m + 4},
};

TEST_F(DirectiveTest, NumbersHaveTheirWidthAndRange) {
  for (const DirectiveRow& row : number_fields) expect(row);
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

constexpr DirectiveRow literals[] = {
    {u"%%H", u"7", 7 * h, 7 * h},  // the second '%' opens anew
    {u"%0%?H", u"7", 7 * h, 7 * h},
    {u"%#?H:", u"07:", 7 * h, 7 * h},
    {u"%H%#", u"07x", 7 * h, 7 * h, 2},
    {u"%#H%#", u"7x", 7 * h, 7 * h, 1},
    {u"%#H h", u"7 H", fails, 7 * h},
    {u"%#H h", u"7 h", 7 * h, 7 * h},
    {u"%#H\u00DC\u03A3", u"7\u00FC\u03C2", fails, 7 * h},
    {u"%#HS", u"7\u017F", fails, 7 * h},
    {u"\U0001F319%H", u"\U0001F31907", 7 * h, 7 * h},
    {u"\u65F6%H", u"\u65F607", 7 * h, 7 * h},
    {u"%H", u"07 and more", 7 * h, 7 * h, 2},
    {u"", u"   ", 0, 0},
    {u"", u"  x", 0, 0, 2},
};

TEST_F(DirectiveTest, LiteralsMatchByDialect) {
  for (const DirectiveRow& row : literals) expect(row);
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

constexpr DirectiveRow names[] = {
    {u"%B!", u"march!", 0, 0},
    {u"%B!", u"  MAR!", fails, 0},
    {u"%b!", u"  mar!", 0, 0},
    {u"%b!", u"March!", fails, 0},
    {u"%B", u"Marc", fails, 0, 0, 3},
    {u"%A", u"sat", fails, 0},
    {u"%a", u"saturday", 0, 0},
    {u"%a", u"sat", fails, 0},  // strictly the full names, whatever the letter's case
    {u"%Q", u"q3", fails, 0},
    {u"%q", u"3RD Quarter", fails, 0},
    {u"%B", u"Smarch", fails, fails},
};

TEST_F(DirectiveTest, NamesComeFromTheirLists) {
  for (const DirectiveRow& row : names) expect(row);
  // A name that begins a later one wins over it; a decomposed letter is another text.
  set_text(handle->record->full_months[0], u"\u00C9t\U00010437");
  set_text(handle->record->full_months[1], u"\u00C9t\U00010437s");
  expect({u"%B", u"\u00E9T\U00010437s", 0, 0, 4});
  expect({u"%B", u"E\u0301t\U00010437s", fails, fails});
  // An empty name matches wherever it stands in the list, and reads nothing.
  set_text(handle->record->full_months[5], u"", -3);
  expect({u"%B", u"July", 0, 0, 0});
  expect({u"%B", u"  May", 0, 0, 5});
  // A length that claims more than an entry holds is cut to it.
  set_text(handle->record->full_months[5], std::u16string(60, u'y'), INT64_MAX);
  expect({u"%B", u"yyyy", fails, fails});
}

constexpr DirectiveRow designators[] = {
    {u"%I %p", u"12 am", 0, 0},           {u"%I %p", u"12 PM", 12 * h, 12 * h},
    {u"%I %p", u"11 pm", 23 * h, 23 * h}, {u"%I %p", u"0 PM", fails, fails},
    {u"%H %p", u"13 AM", 13 * h, fails},  {u"%H %p", u"13 PM", fails, fails},
    {u"%p %#I", u"PM 3", 3 * h, 15 * h},  // strictly the designator moves what came before it
    {u"%p", u"PM", 12 * h, fails},
};

TEST_F(DirectiveTest, DesignatorsMoveTheHour) {
  for (const DirectiveRow& row : designators) expect(row);
}

constexpr DirectiveRow offsets[] = {
    {u"%z", u"-05:30", 0, 0},      {u"%z!", u"+0530!", 0, 0},  {u"%z", u"+05", 0, 0},
    {u"%z!", u"+12:5!", 0, fails}, {u"%z!", u"+12: 5!", 0, 0},
};

TEST_F(DirectiveTest, OffsetsHaveHoursAndMinutes) {
  for (const DirectiveRow& row : offsets) expect(row);
  refuse(u"%z!", u"05 : 30!", u"+12:!");
  refuse(u"%z", u"+5x", u"Z", u"+13", u"+12:60");
}

constexpr DirectiveRow zones[] = {
    {u"%H%Z", u"07Europe/Berlin", 7 * h, fails},  {u"%H %Z", u"07   Europe/Berlin", 7 * h, 7 * h},
    {u"%H %Z", u"07 Nowhere", fails, fails},      {u"%H %Z", u"07 xst", 7 * h, 7 * h},
    {u"%H %Z", u"07 XST and more", fails, fails},  // looked up as a name that ends in the blank
    {u"%H %Z", u"07 XSTX", fails, fails},
};

TEST_F(DirectiveTest, ZonesAreLookedUpByName) {
  for (DirectiveRow row : zones) {
    // A number that ends at a letter reads alike in both dialects.
    if (row.pattern == std::u16string_view(u"%H%Z")) row.lenient_value = row.strict_value;
    expect(row);
  }
  host.known_zones = {u"Here "};
  expect({u"%Z%H", u"Here 07", 7 * h, 7 * h});
}

}  // namespace
}  // namespace jwnls::test
