#include "tool/commands/complete_column.h"

#include <sys/stat.h>

#include <cstdlib>
#include <string_view>

#include "jwnls/jwnls.hpp"
#include "tool/commands/command_rows.h"
#include "tool/options_table.h"
#include "tool/tables/byte_source.h"
#include "tool/tables/table_head.h"

namespace jwnls::tool {
namespace {

// The text in quotes where a -c would take it for more than a name.
std::string as_selector(const std::string& name) {
  const bool is_range = name.find_first_not_of("0123456789-") == std::string::npos;
  const bool is_plain =
      !is_range && name.find_first_of(",=:*\"") == std::string::npos && name.front() != '/';
  if (is_plain) return name;
  std::string quoted = "\"";
  for (const char each : name) quoted.append(each == '"' ? 2 : 1, each);
  return quoted + '"';
}

std::vector<Candidate> columns_of(const TableJob& job) {
  struct stat facts = {};
  // Of anything else reading may wait, or take what is there from who is to have it.
  if (job.input.empty() || ::stat(job.input.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode)) {
    return {};
  }
  ByteSource source(job.input);
  const TableHeader header = find_head(source, job).header;
  std::vector<Candidate> columns;
  for (std::size_t field = 0; field < header.fields; ++field) {
    const std::string number = std::to_string(field + 1);
    if (header.names.empty()) {
      columns.push_back({number, "column " + number});
    } else {
      columns.push_back({as_selector(header.names[field]), "column " + number});
    }
  }
  return columns;
}

// Where the part of a -c begins that the cursor is in, and what it is.
struct Place {
  enum class Part { selector, kind, word };

  Part part = Part::selector;
  std::size_t begin = 0;
  std::size_t kind_begin = 0;  // 0: none is said
};

Place place_of(std::string_view text) {
  Place place;
  char quote = '\0';
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char each = text[at];
    const bool is_begin = at == place.begin;
    if (quote != '\0') {
      if (each == quote) quote = '\0';
    } else if (each == '"' || (each == '/' && is_begin && place.part == Place::Part::selector)) {
      quote = each;
    } else if (each == ':') {
      place.part = Place::Part::word;
      place.begin = at + 1;
    } else if (place.part == Place::Part::selector && (each == ',' || each == '=')) {
      if (each == '=') place.part = Place::Part::kind;
      if (each == '=') place.kind_begin = at + 1;
      place.begin = at + 1;
    }
  }
  return place;
}

void append(std::vector<Candidate>& all, std::vector<Candidate> more) {
  all.insert(all.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

std::vector<Candidate> words(unsigned command, const KindRow* kind) {
  std::vector<Candidate> all = layout_words(command, kind);
  for (const ColumnWordRow& row : column_word_rows()) {
    if ((row.commands & command) != 0) all.push_back({std::string(row.name) + "=", row.help});
  }
  append(all, locale_candidates());
  return all;
}

}  // namespace

std::vector<Candidate> locale_candidates() {
  std::vector<Candidate> all;
  (void)each_locale([&all](const jwnls_locale_info& locale) {
    all.push_back({locale.name, locale.english_name});
  });
  return all;
}

std::vector<Candidate> layout_words(unsigned command, const KindRow* kind) {
  const unsigned kinds = kind == nullptr ? all_kinds : kind_bits({kind->kind});
  std::vector<Candidate> all;
  for (const OptionRow& row : option_rows()) {
    const bool serves = row.is_word && (row.commands & command) != 0 && (row.kinds & kinds) != 0;
    if (!serves) continue;
    all.push_back({std::string(row.name) + (row.takes == Takes::nothing ? "" : "="), row.help});
  }
  return all;
}

std::vector<Candidate> values_of_word(const std::string& name) {
  if (name == "locale" || name == "locales" || name == "from" || name == "to") {
    return locale_candidates();
  }
  std::vector<Candidate> all;
  if (name == "zone") {
    (void)jwnls_zones(
        [](void* zones, const char* zone) {
          static_cast<std::vector<Candidate>*>(zones)->push_back({zone});
          return 0;
        },
        &all);
  } else if (name == "currency") {
    all = {{"own", "the locale's"}, {"any", "to read: whatever stands there"}};
  } else if (name == "separator") {
    all = {{"tab"}, {"comma"}, {"semicolon"}, {"pipe"}};
  }
  for (const OptionRow& row : option_rows()) {
    if (row.name != name || row.choices == nullptr) continue;
    for (const std::string& choice : choices_of(row)) all.push_back({choice});
    break;
  }
  return all;
}

std::vector<Candidate> complete_column(const std::string& text, unsigned command,
                                       const KindRow* kind, const TableJob& job) {
  const Place place = place_of(text);
  std::string before = text.substr(0, place.begin);
  std::vector<Candidate> all;
  if (place.part == Place::Part::selector) {
    all = columns_of(job);
  } else if (place.part == Place::Part::kind) {
    for (const KindRow& each : kinds()) {
      if (has_kind(command, each)) all.push_back({each.name, each.plural});
    }
  } else {
    if (place.kind_begin > 0) {
      const std::size_t end = text.find(':', place.kind_begin);
      kind = find_kind(command, text.substr(place.kind_begin, end - place.kind_begin));
    }
    const std::string word = text.substr(place.begin);
    const std::size_t equals = word.find('=');
    all =
        equals == std::string::npos ? words(command, kind) : values_of_word(word.substr(0, equals));
    if (equals != std::string::npos) before.append(word.substr(0, equals + 1));
  }
  for (Candidate& each : all) each.word.insert(0, before);
  return all;
}

}  // namespace jwnls::tool
