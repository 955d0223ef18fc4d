#include "tool/options_table.h"

#include <algorithm>
#include <iterator>

namespace jwnls::tool {
namespace {

constexpr unsigned amounts = kind_bits({Kind::amount});
constexpr unsigned percentages = kind_bits({Kind::percent});
constexpr unsigned measures = kind_bits({Kind::number, Kind::amount, Kind::percent});
constexpr unsigned numbers = measures | kind_bits({Kind::integer});
constexpr unsigned moments = kind_bits({Kind::datetime, Kind::instant});
constexpr unsigned dates = moments | kind_bits({Kind::date});
constexpr unsigned times = dates | kind_bits({Kind::time});

constexpr unsigned reading = read_command | convert_command;
constexpr unsigned writing = format_command | convert_command;
constexpr unsigned every_command = table_commands | show_command | locales_command | zones_command;

// An option word of layouts.
constexpr OptionRow word(const char* name, const char* value, unsigned kinds, unsigned commands,
                         const char* choices, const char* help, char short_name = 0) {
  const OptionGroup group = commands == writing ? OptionGroup::writing : OptionGroup::reading;
  return {name,  short_name, value == nullptr ? Takes::nothing : Takes::one,
          value, commands,   kinds,
          group, true,       choices,
          help};
}

constexpr OptionRow general(const char* name, char short_name, const char* value, unsigned commands,
                            const char* help) {
  return {name,
          short_name,
          value == nullptr ? Takes::nothing : Takes::one,
          value,
          commands,
          all_kinds,
          OptionGroup::general,
          false,
          nullptr,
          help};
}

// An option of tables.
constexpr OptionRow table(const char* name, char short_name, Takes takes, const char* value,
                          const char* choices, const char* help,
                          unsigned commands = value_commands) {
  return {name,      short_name,         takes, value,   commands,
          all_kinds, OptionGroup::table, false, choices, help};
}

// An option of lines and of tables.
constexpr OptionRow both(const char* name, Takes takes, const char* value, const char* choices,
                         const char* help, unsigned commands = value_commands) {
  return {name, 0, takes, value, commands, all_kinds, OptionGroup::lines, false, choices, help};
}

constexpr OptionRow rows[] = {
    general("locale", 'l', "NAME", format_command | read_command,
            "The locale; default: LC_ALL, LC_NUMERIC, LC_MONETARY or LC_TIME, or LANG. To read "
            "tables also several, separated by commas: each column's values decide"),
    general("locales", 'l', "NAMES", detect_command,
            "Ask these alone, separated by commas, in this order; \"*\": all others"),
    general("from", 'f', "NAME", convert_command, "The locale of the values"),
    general("to", 't', "NAME", convert_command, "The locale to write in"),
    {"zone", 'z', Takes::one, "ZONE", format_command, times, OptionGroup::writing, false, nullptr,
     "The time zone of instants; default: the system's"},

    word("style", "STYLE", dates, writing, "short|medium|long|full",
         "short, medium (the default), long or full", 's'),
    word("decimals", "COUNT", measures, writing, nullptr,
         "So many decimals; default: those of the value, of amounts those of the currency", 'd'),
    word("no-group", nullptr, numbers, writing, nullptr, "Do not group digits"),
    word("plus", nullptr, numbers, writing, nullptr, "A sign always"),
    word("digits", "WHICH", numbers, writing, "latn|own",
         "latn (the default) or own: the locale's own digits"),
    word("exact", nullptr, numbers, writing, nullptr, "Narrow blanks as CLDR has them"),
    word("rounding", "HOW", measures, writing, "half-away|half-even",
         "half-away (the default) or half-even"),
    word("symbol", "WHICH", amounts, writing, "own|narrow|code|none",
         "own (the default), narrow, code or none: how the currency is written"),
    word("accounting", nullptr, amounts, writing, nullptr,
         "Negative amounts as accountants write them"),
    word("currency", "CODE", amounts, value_commands, nullptr,
         "The currency: own (the locale's, the default) or a code such as EUR; to read also any"),
    word("groups", "WHICH", numbers, reading, "locale|any|none",
         "Groups of digits: locale (the default), any (of any size), none"),
    word("signs", "WHERE", numbers, reading, "front|any",
         "front (the default) or any: behind too, and parentheses"),
    word("unit", "WHETHER", amounts, reading, "optional|required",
         "A currency is optional (the default) or required"),
    word("fraction", "WHICH", amounts, reading, "currency|any",
         "Decimals: those of the currency (the default) or any count"),
    word("credit", "HOW", amounts, reading, "refuse|plus|minus",
         "CR behind an amount: refuse (the default), plus or minus"),
    word("percent-sign", "WHETHER", percentages, reading, "required|optional",
         "The sign is required (the default) or optional"),
    word("order", "ORDER", dates, reading, "locale|dmy|mdy|ymd",
         "Of three numbers: locale (the default), dmy, mdy or ymd"),
    word("years", "DIGITS", dates, reading, "locale|4|2", "locale (the default), 4 or 2"),
    word("century", "YEAR", dates, reading, nullptr,
         "The first of the hundred years that two digits stand for; default: 1960"),
    word("names", "WHOSE", dates, reading, "language|english",
         "Names of months and days: language (the default) or english too"),
    word("pattern", "NUMBER", dates, reading, "1|2|3",
         "By the locale's short (1), medium (2) or long (3) pattern alone"),
    word("loose", nullptr, times, reading, nullptr, "Whatever could be meant, without any proof"),
    word("overlap", "WHICH", moments, reading, "refuse|first|second",
         "A time that the zone has twice: refuse (the default), first or second"),
    word("year-cutoff", "YEAR", kind_bits({Kind::period}), reading, nullptr,
         "The first of the hundred years that two digits stand for; default: 1950"),
    word("zone", "ZONE", moments, reading, nullptr,
         "The time zone of what has no offset, or is to lose it", 'z'),
    word("missing", "WHAT", all_kinds, reading, "blank|module",
         "blank (the default) or module: \".\" and \".A\" are missing values too"),
    word("proved", nullptr, all_kinds, reading, nullptr,
         "Fail where values could mean another and none decides"),
    {"option", 'O', Takes::several, "WORD", value_commands, all_kinds, OptionGroup::general, false,
     nullptr, "An option word of a layout, such as groups=any"},

    {"width", 'w', Takes::one, "CELLS", value_commands, all_kinds, OptionGroup::lines, false,
     nullptr, "The least width, in cells of a terminal; blanks stand in front"},
    both("left", Takes::nothing, nullptr, nullptr, "Blanks stand behind"),
    both("invalid", Takes::one, "WHAT", "keep|empty|drop|stop",
         "What is not read: keep (the default) its own text, empty, drop the row, stop before it"),
    {"quiet", 'q', Takes::nothing, nullptr, value_commands, all_kinds, OptionGroup::lines, false,
     nullptr, "Neither messages nor counts"},
    both("null", Takes::several, "WORD", nullptr,
         "A text that stands for a missing value, as a blank one does; as often as needed",
         table_commands),
    both("null-out", Takes::one, "TEXT", nullptr, "What missing values become"),

    table(
        "columns", 'c', Takes::several, "COLUMNS", nullptr,
        "Columns of a table: NAME,2,4-6,'net*',/EXPRESSION/[=KIND][:WORD]...; as often as needed"),
    table(
        "separator", 'F', Takes::one, "CHARACTER", nullptr,
        "Between fields: a character, or tab, comma, semicolon, pipe; default: that of the header",
        table_commands),
    table("no-header", 'n', Takes::nothing, nullptr, nullptr,
          "The first row holds values, no names", table_commands),
    table("skip", 0, Takes::one, "LINES", nullptr, "So many lines stand before the header",
          table_commands),
    table("no-quotes", 0, Takes::nothing, nullptr, nullptr, "A quote is a character like any other",
          table_commands),
    table("ragged", 0, Takes::one, "WHAT", "reject|convert",
          "Rows of another length: reject (the default), or convert what is there"),
    table("rejects", 0, Takes::one, "FILE", nullptr,
          "What is not read, as a table, instead of messages"),
    table("report", 0, Takes::one, "FILE", nullptr,
          "What was found in each column: a page (.html), .json, else text; -: standard error"),
    table("max-messages", 0, Takes::one, "COUNT", nullptr, "So many messages; default: 10"),
    table("max-rejects", 0, Takes::one, "COUNT", nullptr, "Stop behind so many values not read"),
    table("summary", 0, Takes::nothing, nullptr, nullptr,
          "Counts at the end, also when all is read"),
    table("jsonl", 0, Takes::nothing, nullptr, nullptr, "An object of JSON a row", table_commands),
    table("output", 'o', Takes::one, "FILE", nullptr,
          "Write there; the file appears when all is done"),
    table("in-place", 0, Takes::maybe_one, "SUFFIX", nullptr,
          "Replace the file; with a SUFFIX, the old one stays under its name with that behind"),
    table("threads", 0, Takes::one, "COUNT", nullptr,
          "So many threads; default: one a processor, at most 4"),
    table("explain", 0, Takes::nothing, nullptr, nullptr, "Tell what would be done, and stop"),
    table("progress", 0, Takes::nothing, nullptr, nullptr, "Tell how far it is, twice a second"),
    table("no-progress", 0, Takes::nothing, nullptr, nullptr, "Do not"),

    general("all", 'a', nullptr, detect_command,
            "Name all locales, not the first ones; of tables read all rows"),
    general("names", 'n', nullptr, locales_command | zones_command, "Names only, for scripts"),
    general("html", 0, "FILE", show_command,
            "A page with its conventions and examples; -: standard output"),
    {"color", 0, Takes::one, "WHEN", every_command, all_kinds, OptionGroup::general, false,
     "auto|always|never",
     "Colour in messages: auto (the default: on a terminal, unless NO_COLOR is set), always, "
     "never"},
    general("json", 0, nullptr, locales_command | zones_command | show_command,
            "As JSON: of lists an array with an object a line"),
    general("zone", 'z', "ZONE", show_command, "The time zone of instants; default: the system's"),
};

constexpr ColumnWordRow column_words[] = {
    {"from", "LOCALE", convert_command, "the column's own --from"},
    {"to", "LOCALE", convert_command, "the column's own --to"},
    {"as", "NAME", value_commands, "a new column at the row's end; this one stays as it is"},
    {"currency-as", "NAME", reading, "a new column with the currency of amounts, as its ISO code"},
};

}  // namespace

std::span<const OptionRow> option_rows() { return rows; }

std::span<const ColumnWordRow> column_word_rows() { return column_words; }

const OptionRow* find_word(std::string_view name) {
  const auto* const row =
      std::find_if(std::begin(rows), std::end(rows),
                   [name](const OptionRow& each) { return each.is_word && each.name == name; });
  return row == std::end(rows) ? nullptr : row;
}

std::vector<std::string> choices_of(const OptionRow& row) {
  std::vector<std::string> choices;
  std::string_view rest = row.choices == nullptr ? "" : row.choices;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('|'), rest.size());
    choices.emplace_back(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return choices;
}

const char* title_of(OptionGroup group) {
  switch (group) {
    case OptionGroup::general:
      return "Options";
    case OptionGroup::reading:
      return "What is read";
    case OptionGroup::writing:
      return "How it is written";
    case OptionGroup::lines:
      return "Values that are missing or not read, and width";
    case OptionGroup::table:
      break;
  }
  return "Tables";
}

}  // namespace jwnls::tool
