// What a locale writes and reads, and its names and symbols: what `jwnls show` shows.

#ifndef JWNLS_TOOL_COMMANDS_LOCALE_FACTS_H_
#define JWNLS_TOOL_COMMANDS_LOCALE_FACTS_H_

#include <optional>
#include <string>
#include <vector>

#include "jwnls/jwnls.hpp"

namespace jwnls::tool {

/// A value as a layout writes it.
struct WrittenExample {
  Kind kind;
  std::string words;  // of the layout; may be empty
  std::string value;
  std::string text;     // where it cannot be written: a message in parentheses
  std::string pattern;  // of the conventions; empty: none
};

/// What a layout makes of a text that means different things in different places.
struct ReadExample {
  Kind kind;
  std::string text;
  std::optional<std::string> value = {};  // none: it is not read
  std::string currency = {};              // of amounts
  bool two_ways = false;                  // it could be meant otherwise
  std::string reason = {};                // why it is not read; empty where nothing more is known
};

struct LocaleName {
  std::string english;
  std::string full;
  std::string abbreviated;
};

struct LocaleFacts {
  std::string name;
  std::string english_name;
  std::string own_name;
  jwnls_zone_state zone = {};  // of now
  std::vector<WrittenExample> moments;
  std::vector<WrittenExample> numbers;
  std::vector<ReadExample> readings;
  std::vector<LocaleName> weekdays;  // from Sunday
  std::vector<LocaleName> months;
  std::string before_noon;
  std::string after_noon;
  std::string decimal;
  std::string group;        // empty: none
  std::string group_sizes;  // empty: digits are not grouped
  std::string currency;
  std::string currency_code;  // of ISO 4217; empty: none
  std::optional<std::string> currency_decimals;
  std::string first_weekday;  // in English; empty: unknown
};

/// The kind and the words that people tell: "date long", "amount symbol=code".
[[nodiscard]] std::string layout_name(const WrittenExample& example);

/// The moment that is written in LocaleFacts::moments, for people.
extern const char* const example_text;

/// Of a canonical locale, and a zone (empty: the system's). Throws Failure.
[[nodiscard]] LocaleFacts locale_facts(const std::string& locale, const std::string& zone);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_COMMANDS_LOCALE_FACTS_H_
