#include "library/options/options.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <utility>

#include "include/jwnls/jwnls.h"
#include "library/texts/failure.h"

namespace jwnls::library {
namespace {

constexpr std::uint32_t bit(int kind) { return 1U << kind; }
constexpr std::uint32_t number = bit(JWNLS_NUMBER);
constexpr std::uint32_t amount = bit(JWNLS_AMOUNT);
constexpr std::uint32_t percent = bit(JWNLS_PERCENT);
constexpr std::uint32_t measures = number | amount | percent;
constexpr std::uint32_t numbers = measures | bit(JWNLS_INTEGER);
constexpr std::uint32_t moments = bit(JWNLS_DATETIME) | bit(JWNLS_INSTANT);
constexpr std::uint32_t dates = bit(JWNLS_DATE) | moments;
constexpr std::uint32_t all = ~0U;

struct Choice {
  std::uint8_t Options::*member = nullptr;
  const char* values[5] = {};  // the first is the default; a flag has none
};

struct Count {
  std::int32_t Options::*member = nullptr;
  std::int32_t least = 0;
  std::int32_t most = 0;
};

struct Name {
  std::string Options::*member = nullptr;
};

struct Word {
  std::string_view name;
  std::uint32_t kinds;  // that know it
  Choice choice;
  Count count;
  Name text;
};

constexpr Word choice(std::string_view name, std::uint32_t kinds, Choice values) {
  return {name, kinds, values, {}, {}};
}
constexpr Word count(std::string_view name, std::uint32_t kinds, Count range) {
  return {name, kinds, {}, range, {}};
}
constexpr Word text(std::string_view name, std::uint32_t kinds, Name member) {
  return {name, kinds, {}, {}, member};
}

constexpr Word words[] = {
    choice("missing", all, {&Options::missing, {"blank", "module"}}),
    // Numbers in.
    choice("groups", numbers, {&Options::groups, {"locale", "any", "none"}}),
    choice("signs", numbers, {&Options::signs, {"front", "any"}}),
    text("currency", amount, {&Options::currency}),
    choice("unit", amount, {&Options::unit, {"optional", "required"}}),
    choice("fraction", amount, {&Options::fraction, {"currency", "any"}}),
    choice("credit", amount, {&Options::credit, {"refuse", "plus", "minus"}}),
    choice("percent-sign", percent, {&Options::percent_sign, {"required", "optional"}}),
    // Numbers out.
    count("decimals", measures, {&Options::decimals, 0, 350}),
    choice("no-group", numbers, {&Options::no_group, {}}),
    choice("plus", numbers, {&Options::plus, {}}),
    choice("digits", numbers, {&Options::digits, {"latn", "own"}}),
    choice("exact", numbers, {&Options::exact, {}}),
    choice("rounding", measures, {&Options::rounding, {"half-away", "half-even"}}),
    choice("symbol", amount, {&Options::symbol, {"own", "narrow", "code", "none"}}),
    choice("accounting", amount, {&Options::accounting, {}}),
    // Dates in.
    choice("order", dates, {&Options::order, {"locale", "dmy", "mdy", "ymd"}}),
    choice("years", dates, {&Options::years, {"locale", "4", "2"}}),
    count("century", dates, {&Options::century, 1582, 9900}),
    choice("names", dates, {&Options::names, {"language", "english"}}),
    count("pattern", dates, {&Options::pattern, 1, 3}),
    choice("loose", dates | bit(JWNLS_TIME), {&Options::loose, {}}),
    count("year-cutoff", bit(JWNLS_PERIOD), {&Options::year_cutoff, 1582, 9900}),
    // Dates out.
    choice("style", dates, {&Options::style, {"medium", "short", "long", "full"}}),
    text("zone", moments, {&Options::zone}),
    choice("overlap", moments, {&Options::overlap, {"refuse", "first", "second"}}),
    choice("proved", all, {&Options::proved, {}}),
};

bool is_blank(char each) { return each == ' ' || each == '\t' || each == '\n' || each == '\r'; }

// Refuses a word; `tell` says what may stand there.
template <typename Tell>
[[noreturn]] void refuse(std::string_view word, Tell tell) {
  fail(JWNLS_UNKNOWN, [&](Message& message) {
    (message << "option ").quoted(word) << ": ";
    tell(message);
  });
}

[[noreturn]] void refuse_because(std::string_view word, std::string_view reason) {
  refuse(word, [reason](Message& message) { message << reason; });
}

void read_choice(const Choice& row, std::string_view word, bool has_value, std::string_view value,
                 Options& options) {
  if (row.values[0] == nullptr) {
    if (has_value) refuse_because(word, "the word takes no value");
    options.*row.member = 1;
    return;
  }
  for (std::size_t index = 0; index < std::size(row.values); ++index) {
    if (row.values[index] != nullptr && has_value && value == row.values[index]) {
      options.*row.member = static_cast<std::uint8_t>(index);
      return;
    }
  }
  refuse(word, [&row](Message& message) {
    message << "the value is one of";
    for (const char* each : row.values) {
      if (each != nullptr) message << " " << each;
    }
  });
}

void read_count(const Count& row, std::string_view word, std::string_view value, Options& options) {
  std::int32_t number_read = 0;
  const char* const end = value.data() + value.size();
  const auto [stop, error] = std::from_chars(value.data(), end, number_read);
  if (value.empty() || error != std::errc() || stop != end || number_read < row.least ||
      number_read > row.most) {
    refuse(word, [&row](Message& message) {
      message << "the value is a number from " << std::int64_t{row.least} << " to "
              << std::int64_t{row.most};
    });
  }
  options.*row.member = number_read;
}

void read_currency(std::string_view word, std::string_view value, std::string& currency) {
  if (value == "own" || value == "any") {
    currency = value == "own" ? "" : "any";
    return;
  }
  const auto upper = [](char each) {
    return static_cast<char>(each >= 'a' && each <= 'z' ? each - 'a' + 'A' : each);
  };
  std::string code(value);
  std::transform(code.begin(), code.end(), code.begin(), upper);
  if (code.size() != 3 ||
      !std::all_of(code.begin(), code.end(), [](char c) { return c >= 'A' && c <= 'Z'; })) {
    refuse_because(word, "the value is own, any, or a code such as EUR");
  }
  currency = std::move(code);
}

void read_word(int kind, std::string_view word, Options& options) {
  const std::size_t equals = word.find('=');
  const std::string_view name = word.substr(0, equals);
  const bool has_value = equals != std::string_view::npos;
  const std::string_view value = has_value ? word.substr(equals + 1) : std::string_view();
  const Word* const row = std::find_if(std::begin(words), std::end(words),
                                       [name](const Word& each) { return each.name == name; });
  if (row == std::end(words)) refuse_because(word, "no such word");
  if ((row->kinds & bit(kind)) == 0) {
    refuse(word, [kind](Message& message) {
      message << "no word of the kind " << jwnls_kind_name(kind);
    });
  }
  if (row->choice.member != nullptr) {
    read_choice(row->choice, word, has_value, value, options);
  } else if (row->count.member != nullptr) {
    read_count(row->count, word, value, options);
  } else if (value.empty()) {
    refuse_because(word, "the value is missing");
  } else if (name == "currency") {
    read_currency(word, value, options.currency);
  } else {
    options.*row->text.member = value;
  }
}

}  // namespace

void read_options(int kind, std::string_view text, Options& options) {
  const char* const end = text.data() + text.size();
  for (const char* at = text.data(); at != end;) {
    at = std::find_if_not(at, end, is_blank);
    const char* const behind = std::find_if(at, end, is_blank);
    if (at != behind) {
      read_word(kind, std::string_view(at, static_cast<std::size_t>(behind - at)), options);
    }
    at = behind;
  }
}

std::string option_words(int kind, const Options& options) {
  const Options defaults;
  std::string all_words;
  const auto add = [&](std::string_view name, std::string_view value) {
    all_words.append(" ").append(name);
    if (!value.empty()) all_words.append("=").append(value);
  };
  for (const Word& row : words) {
    if ((row.kinds & bit(kind)) == 0) continue;
    if (row.choice.member != nullptr) {
      const std::uint8_t chosen = options.*row.choice.member;
      const bool is_flag = row.choice.values[0] == nullptr;
      if (chosen != 0) add(row.name, is_flag ? "" : row.choice.values[chosen]);
    } else if (row.count.member != nullptr) {
      const std::int32_t chosen = options.*row.count.member;
      if (chosen != defaults.*row.count.member) add(row.name, std::to_string(chosen));
    } else if (!(options.*row.text.member).empty()) {
      add(row.name, options.*row.text.member);
    }
  }
  return all_words;
}

}  // namespace jwnls::library
