// The kinds of numbers that `read` reads, and what it writes for them.

#include <CLI/CLI.hpp>
#include <charconv>
#include <cstdint>
#include <string>

#include "tool/plain_number.h"
#include "tool/read_command.h"

namespace jwnls::tool {
namespace {

using client::Locale;
using client::Result;

// As read_number() reads it: ".A", or the fewest digits that tell the number from every other.
std::string number_text(double value) {
  if (const auto missing = client::MissingValue::of(value)) {
    const char character = missing->character();
    return character == '.' ? "." : std::string(".") + character;
  }
  char text[32];
  return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

// `read` is given whether blanks group. A failure tells of the option that would have helped.
template <typename Read>
auto read_groups(bool blank_groups, Read read) -> decltype(read(true)) {
  auto value = read(blank_groups);
  if (!value && !blank_groups && read(true)) {
    value.error().message += " (with --blank-groups it is read)";
  }
  return value;
}

Result<ValueText> read_number(const Locale& locale, const ReadOptions& options,
                              std::string_view text) {
  return read_groups(options.number.blank_groups,
                     [&](bool blank_groups) { return locale.read_number(text, {blank_groups}); })
      .map([](double value) { return ValueText(number_text(value)); });
}

template <typename Integer>
Result<ValueText> read_integer_as(const Locale& locale, const ReadOptions& options,
                                  std::string_view text) {
  Status status = Status::ok;
  const auto value = read_groups(options.integer.blank_groups, [&](bool blank_groups) {
    client::IntegerReading reading = options.integer;
    reading.blank_groups = blank_groups;
    return locale.read_integer<Integer>(text, reading, &status);
  });
  if (!value) return tl::unexpected<client::Error>(value.error());
  ValueText shown(std::to_string(*value));
  if (status != Status::ok) {
    shown.note = "integer " + client::in_quotes(text) + ": note: read without its fraction";
  }
  return shown;
}

Result<ValueText> read_integer(const Locale& locale, const ReadOptions& options,
                               std::string_view text) {
  if (read_missing(text)) return ValueText(std::string(text));  // as numbers have them
  return options.unsigned_integer || options.integer.hexadecimal
             ? read_integer_as<std::uint64_t>(locale, options, text)
             : read_integer_as<std::int64_t>(locale, options, text);
}

void add_blank_groups(CLI::App& command, bool& blank_groups) {
  command.add_flag("--blank-groups", blank_groups,
                   "A plain blank groups digits, where the locale's symbol is the no-break space");
}

void add_number_options(CLI::App& command, ReadOptions& options) {
  add_blank_groups(command, options.number.blank_groups);
}

void add_integer_options(CLI::App& command, ReadOptions& options) {
  CLI::Option* hexadecimal = command.add_flag("-x,--hex", options.integer.hexadecimal,
                                              "Values are hexadecimal, with \"0x\" or without");
  command.add_flag("-u,--unsigned", options.unsigned_integer,
                   "Up to 18446744073709551615, and no sign but \"+\"");
  CLI::Option* fraction = command.add_flag("--fraction", options.integer.fraction,
                                           "A fraction may follow; it is dropped, with a note");
  fraction->excludes(hexadecimal)->option_text(" ");
  hexadecimal->option_text(" ");
  add_blank_groups(command, options.integer.blank_groups);
}

constexpr ReadKind kinds[] = {
    {.name = "number",
     .summary = "Read numbers",
     .values_help = "Numbers as the locale writes them",
     .values_note =
         "Groups of digits may have any size, and an exponent may follow (1,5e3). Missing values,\n"
         "\".\", \".A\" to \".Z\" and \"._\", stay what they are; a blank value is \".\".",
     .examples = "  jwnls read number -l de_DE 1.234.567,89 -- -0,5\n"
                 "  jwnls read number -l fr_FR --blank-groups '1 234,5'\n"
                 "  cut -d';' -f4 orders.csv | jwnls read number -l de_CH\n"
                 "  jwnls read number -l en_US --as hi_IN -d 2 1,234,567.891",
     .convert_examples = "  jwnls convert number --from de_DE --to en_US 1.234.567,89\n"
                         "  jwnls convert number --from en_US --to fr_FR -d 2 -w 12 < sums.txt",
     .raw_help = nullptr,
     .written_as = "number",
     .add_options = add_number_options,
     .read = read_number},
    {.name = "integer",
     .summary = "Read integers",
     .values_help = "Integers as the locale writes them, of 64 bits",
     .values_note = "Groups of digits may have any size. Missing values stay what they are.",
     .examples = "  jwnls read integer -l de_DE 1.234.567 -5\n"
                 "  jwnls read integer --hex 0xFF ffff\n"
                 "  jwnls read integer -l en_US --fraction 1,234.50",
     .convert_examples = "  jwnls convert integer --from de_DE --to en_IN 12.345.678\n"
                         "  jwnls convert integer --from C --to C --radix 16 --prefix 255",
     .raw_help = nullptr,
     .written_as = "integer",
     .add_options = add_integer_options,
     .read = read_integer},
};

}  // namespace

std::span<const ReadKind> number_read_kinds() { return kinds; }

}  // namespace jwnls::tool
