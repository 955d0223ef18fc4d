// Fuzzes the reading of dates by the library's layouts: any text, pieces of dates in any order.
//
// Nothing outside the text is read, the value is 0 without one, the quick way and the full way say
// the same, UTF-16 reads as UTF-8 does, what is read can be written and is read back, and the
// explanation has the code of the reading.

#include <array>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/input.h"
#include "include/jwnls/jwnls.h"
#include "library/dates/date_text.h"
#include "library/layouts/layout.h"
#include "library/moments/reading.h"
#include "library/texts/utf8.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace jwnls::test {
namespace {

constexpr const char* locales[] = {"de_DE", "en_US", "es_ES", "ja_JP", "hu_HU", "cgg",
                                   "th_TH", "he_IL", "vi_VN", "ar_EG", "yo",    "ff_Adlm"};
constexpr struct {
  int kind;
  const char* options;
} kinds[] = {{JWNLS_DATE, ""},
             {JWNLS_DATETIME, ""},
             {JWNLS_TIME, ""},
             {JWNLS_INSTANT, "zone=Europe/Berlin overlap=first"},
             {JWNLS_PERIOD, ""},
             {JWNLS_DATE, "names=english order=mdy century=1900"},
             {JWNLS_DATE, "loose"},
             {JWNLS_DATETIME, "pattern=2"},
             {JWNLS_DATE, "style=long"},
             {JWNLS_DATE, "style=full"},
             {JWNLS_DATETIME, "style=full"}};

struct Subject {
  jwnls_layout* layout;
  std::vector<std::string> pieces;
};

// Layouts stay open, with what their texts are made of.
Subject& subject(std::uint8_t locale, std::uint8_t kind) {
  static std::array<std::array<Subject, std::size(kinds)>, std::size(locales)> subjects{};
  Subject& one = subjects[locale % std::size(locales)][kind % std::size(kinds)];
  if (one.layout != nullptr) return one;
  const auto& row = kinds[kind % std::size(kinds)];
  jwnls_error error;
  const int code =
      jwnls_open(locales[locale % std::size(locales)], row.kind, row.options, &one.layout, &error);
  require(code == JWNLS_OK, error.text);
  one.pieces = {" ",        ".",      ". ",     "/",      "-",      ",",      ":",      "T",
                "Z",        "(",      ")",      "st",     "\u00A0", "\u200F", "+01:00", "2024",
                "14:30:05", "\u0663", "\u5E74", "\u65E5", "Q1",     "PM"};
  for (int item = JWNLS_MONTH; item <= JWNLS_DAY_HALF; ++item) {
    std::array<char, 400> text;
    std::size_t length = 0;
    for (std::size_t i = 0;
         jwnls_convention(one.layout, item, i, text.data(), text.size(), &length) == JWNLS_OK;
         ++i) {
      one.pieces.emplace_back(text.data(), length);
    }
  }
  return one;
}

std::string text_of(const Subject& subject, Input& input) {
  std::string text;
  const std::uint8_t length = input.byte();
  const std::size_t longest = length < 0xF0 ? length % 60U : 1200;
  while (!input.used_up() && text.size() < longest) {
    const std::uint8_t choice = input.byte();
    if (choice < 0x60) {
      text += static_cast<char>('0' + choice % 10);
    } else if (choice < 0xF0) {
      text += subject.pieces[(choice * 256U + input.byte()) % subject.pieces.size()];
    } else {
      text += static_cast<char>(input.byte());
    }
  }
  return text;
}

struct Outcome {
  int code;
  std::int64_t value;
  std::uint8_t facts;
  bool operator==(const Outcome&) const = default;
};

template <typename Unit>
Outcome read(const jwnls_layout* layout, std::basic_string_view<Unit> text) {
  Outcome outcome = {0, 77, 77};
  const auto call = [&]([[maybe_unused]] auto narrow, [[maybe_unused]] auto wide, auto* value) {
    if constexpr (sizeof(Unit) == 1) {
      return narrow(layout, text.data(), text.size(), value, &outcome.facts);
    } else {
      return wide(layout, text.data(), text.size(), value, &outcome.facts);
    }
  };
  const int kind = jwnls_layout_kind(layout);
  if (kind == JWNLS_DATE || kind == JWNLS_PERIOD) {
    std::int32_t days = 77;
    outcome.code = call(jwnls_read_date, jwnls_read_date_utf16, &days);
    outcome.value = days;
  } else if (kind == JWNLS_TIME) {
    outcome.code = call(jwnls_read_time, jwnls_read_time_utf16, &outcome.value);
  } else {
    outcome.code = call(jwnls_read_datetime, jwnls_read_datetime_utf16, &outcome.value);
  }
  require(outcome.code == JWNLS_OK || (outcome.value == 0 && outcome.facts == 0), "a value");
  return outcome;
}

void check_written(const jwnls_layout* layout, const Outcome& outcome) {
  std::array<char, 600> text;
  std::size_t length = 0;
  if (jwnls_layout_kind(layout) != JWNLS_DATE) return;
  const auto days = static_cast<std::int32_t>(outcome.value);
  require(jwnls_write_date(layout, days, text.data(), text.size(), &length) == JWNLS_OK,
          "a date that cannot be written");
  if (layout->options.loose != 0 || layout->options.pattern != 0) return;
  const Outcome again = read(layout, std::string_view(text.data(), length));
  // What is written in the locale's order is not read in another one, or says that it may be wrong.
  const bool is_other = layout->options.order != library::order_locale &&
                        (again.code != JWNLS_OK || (again.facts & JWNLS_TWO_WAYS) != 0);
  require(is_other || (again.code == JWNLS_OK && again.value == outcome.value),
          "a date that is not read back");
}

void check_ways(const jwnls_layout* layout, std::string_view text) {
  const std::string_view inner = library::trimmed(text);
  if (layout->dates == nullptr || inner.empty() || text.size() > library::longest_text) return;
  const library::DateRead quick = library::quick_date(*layout->dates, inner);
  if (quick.refusal == library::Refusal::undecided) return;
  const library::DateRead full = library::full_date(*layout->dates, inner);
  // Where names have numbers, three numbers may be a date by the locale's own marks, and to the
  // grammar a name and two numbers: "2024tháng 8  5 ." in vi_VN.
  const bool has_another_form = layout->dates->names->has_numbered() &&
                                quick.refusal == library::Refusal::none &&
                                full.refusal != library::Refusal::none;
  if (has_another_form) return;
  require(code_of(quick.refusal) == code_of(full.refusal), "ways that differ");
  require(
      quick.refusal != library::Refusal::none ||
          (day_from_civil(quick.date) == day_from_civil(full.date) && quick.facts == full.facts),
      "values that differ");
  // The usual form alone is taken at one look; with a blank behind it, it goes another way.
  require(read(layout, std::string_view(std::string(text) + ' ')) == read(layout, text) ||
              text.size() == library::longest_text,
          "a blank that makes a difference");
}

}  // namespace
}  // namespace jwnls::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace jwnls::test;
  Input input(data, size);
  const std::uint8_t locale = input.byte();
  const Subject& one = subject(locale, input.byte());
  const std::string text = text_of(one, input);
  // In an allocation of its own, so that a sanitizer sees every byte too many.
  const std::vector<char> bytes(text.begin(), text.end());
  const Outcome outcome = read(one.layout, std::string_view(bytes.data(), bytes.size()));
  std::vector<char16_t> units(text.size());
  const auto count = jwnls::library::to_utf16(text, units.data(), units.size());
  if (count) {
    require(read(one.layout, std::u16string_view(units.data(), *count)) == outcome,
            "encodings that differ");
  }
  jwnls_error error;
  require(jwnls::library::explain_date(*one.layout, text, &error) == outcome.code,
          "an explanation of something else");
  require(error.at <= text.size(), "a place outside the text");
  if (outcome.code == JWNLS_OK) check_written(one.layout, outcome);
  check_ways(one.layout, text);
  return 0;
}
