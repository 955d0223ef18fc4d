// Date recognition over dates written in every layout, right and spoilt, against its definition:
// the first of the twenty candidates that reads the whole text decides.

#include <array>
#include <initializer_list>
#include <random>
#include <vector>

#include "tests/module/read_dates/reading.h"
#include "tests/support/seed.h"

namespace jwnls::test {
namespace {

constexpr std::uint32_t strict = 0;
constexpr std::uint32_t lenient = 4;

constexpr std::array<const char16_t*, 3> day_first = {u"%d|%m|%Y", u"%E %b %Y", u"%A, %E. %B %Y"};
constexpr std::array<const char16_t*, 3> month_first = {u"%m/%d/%Y", u"%b %E, %Y", u"%B %E, %Y"};

using Patterns = std::vector<std::u16string>;

bool is_month_first(std::u16string_view pattern) {
  const auto place = [pattern](std::initializer_list<const char16_t*> directives) {
    for (const char16_t* directive : directives) {
      const std::size_t at = pattern.find(directive);
      if (at != std::u16string_view::npos) return static_cast<int>(at);
    }
    return -1;
  };
  const int month = place({u"%m", u"%o"});
  return place({u"%Y", u"%y"}) > month && place({u"%d", u"%e", u"%b"}) > month;
}

// The twenty candidates, spelled out from the rules.
Patterns date_candidates(const LocaleRecord& record) {
  Patterns all;
  for (const TextEntry& pattern : record.date_patterns) all.emplace_back(text_of(pattern));
  const bool month_first = is_month_first(all[0]);
  const auto add = [&all](std::u16string_view pattern, std::u16string_view marks) {
    for (const char16_t mark : marks) {
      std::u16string marked(pattern);
      for (char16_t& unit : marked) {
        if (unit == u'|') unit = mark;
      }
      all.push_back(marked);
    }
  };
  add(month_first ? u"%m|%d|%Y" : u"%d|%m|%Y", u"/-.");
  add(u"%Y|%m|%d", u"/-.");
  add(u"%Y|%b|%d", u"/-.");
  all.emplace_back(u"%b %d%#Y");
  add(u"%b|%d|%Y", u"/.-");
  all.emplace_back(u"%a,%b%d,%#Y");
  if (month_first) {
    add(u"%d|%m|%Y", u".-/");
  } else {
    add(u"%m|%d|%Y", u"/-.");
  }
  return all;
}

class LayoutsTest : public ReadingTest {
 protected:
  std::size_t below(std::size_t bound) { return random_() % bound; }
  char16_t one_of(std::u16string_view units) { return units[below(units.size())]; }

  std::u16string digits(std::size_t value, std::size_t width) {
    const std::string text = std::to_string(value);
    return std::u16string(width - std::min(width, text.size()), u'0')
        .append(text.begin(), text.end());
  }

  // A date as the pattern writes it: its numbers padded or not, its year in two digits or four, its
  // names full or short, in any case, and now and then another separator throughout.
  std::u16string write(std::u16string_view pattern) {
    const bool padded = below(2) == 0;
    const char16_t separator = below(3) == 0 ? one_of(u"/-.,; |:") : u'\0';
    const TextEntry* months =
        below(2) == 0 ? handle->record->full_months : handle->record->short_months;
    std::u16string text;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
      if (pattern[at] != u'%') {
        text += separator != 0 ? separator : pattern[at];
        continue;
      }
      if (pattern[++at] == u'#') {
        text += u' ';  // a free-width year
        ++at;
      }
      const char16_t letter = pattern[at];
      if (letter == u'Y') {
        text += below(4) == 0 ? digits(below(100), 2) : digits(1582 + below(8418), 4);
      } else if (letter == u'B' || letter == u'b') {
        text += text_of(months[below(12)]);
      } else if (letter == u'A' || letter == u'a') {
        text += text_of(handle->record->full_weekdays[below(7)]);
      } else {
        text += digits(1 + below(letter == u'm' ? 13 : 31), padded ? 2 : 1);
      }
    }
    return text;
  }

  // Changes the case of a letter, or puts in, takes out or replaces a unit.
  void spoil(std::u16string& text) {
    const std::size_t at = below(text.size());
    const std::size_t kind = below(5);
    if (kind == 0) {
      text.erase(at, 1);
    } else if (kind == 1) {
      text.insert(at, 1, one_of(u" 0123/-.,"));
    } else if (kind == 2) {
      text[at] = one_of(u"0129/-., aM\u00E9\u0131\U00010400");
    } else if (text[at] >= u'A') {
      text[at] ^= 0x20;
    }
  }

  // Time input walks a pattern whatever it holds, and tells how far it got.
  bool reads_whole(std::u16string_view pattern, std::u16string_view text, std::uint32_t dialect) {
    set_text(handle->record->style_0_pattern, pattern);
    const Reading walk = read_text<char16_t>(Service::time, text, dialect == lenient ? 8 : 2);
    return walk.value && walk.consumed == text.size();
  }

  std::optional<double> by_definition(const Patterns& candidates, std::u16string_view text,
                                      std::uint32_t dialect) {
    text = text.substr(0, text.find_last_not_of(u' ') + 1);
    for (const std::u16string& pattern : candidates) {
      if (!reads_whole(pattern, text, dialect)) continue;
      set_text(handle->record->date_patterns[0], pattern);
      return read_text<char16_t>(Service::date, text, 1 | (dialect == lenient ? 8 : 0)).value;
    }
    return std::nullopt;
  }

  std::mt19937_64 random_{test_seed(20)};
};

TEST_F(LayoutsTest, TheFirstCandidateThatReadsTheWholeTextDecides) {
  constexpr int texts_of_each = 3000;
  int read = 0;
  for (const auto& locale : {day_first, month_first}) {
    const auto use_patterns = [&] {
      for (int p = 0; p < 3; ++p)
        set_text(handle->record->date_patterns[p], locale[static_cast<std::size_t>(p)]);
    };
    use_patterns();
    const Patterns candidates = date_candidates(*handle->record);
    ASSERT_EQ(candidates.size(), 20u);
    for (int i = 0; i < 20 * texts_of_each; ++i) {
      std::u16string text = write(candidates[static_cast<std::size_t>(i % 20)]);
      const std::size_t spoils = below(4);
      for (std::size_t done = 0; done < spoils && !text.empty(); ++done) spoil(text);
      for (const std::uint32_t dialect : {strict, lenient}) {
        const std::optional<double> expected = by_definition(candidates, text, dialect);
        use_patterns();
        const std::size_t whole = text.find_last_not_of(u' ') + 1;
        expect_read(Service::date, text, dialect, expected, whole);
        if (expected) ++read;
        // A field of fixed width and a single digit of a year need the text to end there.
        if (!expected || dialect == strict || spoils > 0) continue;
        if (std::u16string_view(u"0123456789").find(text[whole - 2]) == std::u16string_view::npos)
          continue;
        set_text(handle->record->style_0_pattern, u"%H:%M:%S");
        expect_read(Service::date, text + u"T10:30:15", dialect | 0x200, *expected * 86400 + 37815,
                    whole + 9);
      }
    }
  }
  EXPECT_GT(read, 10 * texts_of_each);
}

}  // namespace
}  // namespace jwnls::test
