#include "tool/tables/open_columns.h"

#include <map>
#include <utility>

#include "tool/exit_code.h"
#include "tool/layout_words.h"
#include "tool/session.h"
#include "tool/tables/column_locales.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

std::vector<std::string> parts_of(const std::string& list) {
  std::vector<std::string> parts;
  std::size_t begin = 0;
  while (begin <= list.size()) {
    const std::size_t end = std::min(list.find_first_of(", ", begin), list.size());
    if (end > begin) parts.push_back(list.substr(begin, end - begin));
    begin = end + 1;
  }
  return parts;
}

class ColumnOpener {
 public:
  ColumnOpener(const ColumnRequest& request, const std::function<const TableSample&()>& sample)
      : request_(request),
        options_(*request.options),
        sample_(sample),
        missing_(options_.values("null")) {}

  OpenedColumn open(const SelectedColumn& column) {
    const ColumnSpec& spec = *column.spec;
    const KindRow* const kind = spec.kind != nullptr ? spec.kind : request_.kind;
    if (kind == nullptr) {
      refuse(spec, "of which kind is it? say " + spec.text + "=number or the like");
    }
    if (kind->format_examples == nullptr && request_.command != read_command) {
      refuse(spec, std::string("a ") + kind->name + " can only be read");
    }
    auto words = options_.words(request_.command, kind->kind);
    words.insert(words.end(), spec.words.begin(), spec.words.end());
    check(spec, *kind, words);
    try {
      return {column, kind, values_of(column, *kind, words)};
    } catch (const Failure& failure) {
      const bool names_it = failure.code == ExitCode::undecided;
      throw Failure{
          failure.code,
          names_it ? failure.message : "column " + in_quotes(column.name) + ": " + failure.message};
    }
  }

 private:
  [[noreturn]] static void refuse(const ColumnSpec& spec, const std::string& problem) {
    throw Failure{ExitCode::usage, "-c " + in_quotes(spec.text) + ": " + problem};
  }

  void check(const ColumnSpec& spec, const KindRow& kind,
             const std::vector<std::string>& words) const {
    const bool converts = request_.command == convert_command;
    if (!converts && (spec.from || spec.to)) {
      refuse(spec, "from= and to= are words of convert; the column's locale stands alone");
    }
    if (converts && !spec.locale.empty()) {
      refuse(spec, "two locales are needed: from=" + spec.locale + " or to=" + spec.locale);
    }
    const bool tells_currency = kind.kind == Kind::amount && request_.command != format_command;
    if (spec.currency_as && !tells_currency) {
      refuse(spec, "currency-as= is for amounts that are read");
    }
    const bool mixes = request_.command == read_command && gives(words, "currency", "any");
    if (mixes && !spec.currency_as) {
      refuse(spec,
             "currency=any would mix amounts of several currencies; currency-as=NAME adds "
             "a column that tells them apart");
    }
  }

  // Whatever the columns, a locale is looked up once: it may be told as a near relative.
  const std::string& find(const std::string& name, const KindRow& kind) {
    const std::string key = name.empty() ? kind.locale_category : "=" + name;
    const auto known = locales_.find(key);
    if (known != locales_.end()) return known->second;
    return locales_.emplace(key, find_locale(name, kind.locale_category)).first->second;
  }

  // Canonical; one that is empty is the environment's.
  std::vector<std::string> locales_of(const std::string& own, const char* option,
                                      const KindRow& kind) {
    const std::string list = own.empty() ? options_.value(option).value_or("") : own;
    std::vector<std::string> found;
    for (const std::string& name : parts_of(list)) found.push_back(find(name, kind));
    if (found.empty()) found.push_back(find("", kind));
    return found;
  }

  std::string one_locale(const std::string& own, const char* option, const KindRow& kind) {
    const auto locales = locales_of(own, option, kind);
    if (locales.size() == 1) return locales.front();
    throw Failure{ExitCode::usage,
                  "--" + std::string(option) + ": values are written in one locale"};
  }

  LayoutValuesPointer values_of(const SelectedColumn& column, const KindRow& kind,
                                const std::vector<std::string>& words) {
    const ColumnSpec& spec = *column.spec;
    if (request_.command == format_command) {
      const std::string locale = one_locale(spec.locale, "locale", kind);
      return open_format_values(locale, kind, words, options_.value("zone").value_or(""), missing_);
    }
    const bool converts = request_.command == convert_command;
    if (converts && !(spec.from || options_.has("from"))) need("from");
    if (converts && !(spec.to || options_.has("to"))) need("to");
    const auto locales = converts ? locales_of(spec.from.value_or(""), "from", kind)
                                  : locales_of(spec.locale, "locale", kind);
    // Who says the order of a date has decided.
    const std::uint8_t facts = give_order(words) ? 0 : all_facts;
    std::vector<LocaleChoice> choices;
    choices.reserve(locales.size());
    const Side side = converts ? Side::reading : Side::both;
    for (const std::string& locale : locales) {
      const Layout source = open_layout(locale, kind.kind, words_of(words, side));
      choices.push_back({locale, read_values(source, missing_, facts)});
    }
    const std::size_t chosen = choices.size() == 1 ? 0 : decide(column, kind, choices);
    if (!converts) return choices[chosen].values;
    const Layout source = open_layout(locales[chosen], kind.kind, words_of(words, Side::reading));
    const Layout target = open_layout(one_locale(spec.to.value_or(""), "to", kind), kind.kind,
                                      words_of(words, Side::writing));
    return convert_values(source, target, missing_, facts);
  }

  [[noreturn]] static void need(const char* option) {
    throw Failure{ExitCode::usage, std::string("--") + option + " is required, or " + option +
                                       "=LOCALE behind the column"};
  }

  std::size_t decide(const SelectedColumn& column, const KindRow& kind,
                     const std::vector<LocaleChoice>& choices) {
    const TableSample& sample = sample_();
    std::string remedy = "-c '" + column.name + "=" + kind.name + ":";
    if (request_.command == convert_command) remedy += "from=";
    return decide_locale(column.name, remedy, choices,
                         {sample.texts(column.field), sample.lines()});
  }

  const ColumnRequest& request_;
  const GivenOptions& options_;
  const std::function<const TableSample&()>& sample_;
  MissingWords missing_;
  std::map<std::string, std::string> locales_;  // names, and the category of the environment's
};

// An option word that no column takes would be lost in silence.
void refuse_unused(const ColumnRequest& request, const std::vector<OpenedColumn>& columns) {
  unsigned kinds = 0;
  for (const OpenedColumn& column : columns) kinds |= kind_bits({column.kind->kind});
  for (const OptionRow& row : option_rows()) {
    const bool is_given =
        row.is_word && (row.commands & request.command) != 0 && request.options->has(row.name);
    if (is_given && (row.kinds & kinds) == 0) {
      throw Failure{ExitCode::usage,
                    std::string("--") + row.name + ": no column is of a kind that takes it"};
    }
  }
}

}  // namespace

std::vector<OpenedColumn> open_columns(const ColumnRequest& request,
                                       const std::vector<SelectedColumn>& columns,
                                       const std::function<const TableSample&()>& sample) {
  ColumnOpener opener(request, sample);
  std::vector<OpenedColumn> opened;
  opened.reserve(columns.size());
  for (const SelectedColumn& column : columns) opened.push_back(opener.open(column));
  refuse_unused(request, opened);
  return opened;
}

LayoutValuesPointer open_format_values(const std::string& locale, const KindRow& kind,
                                       std::vector<std::string> words, std::string zone,
                                       MissingWords missing) {
  if (auto own = take_word(words, "zone")) zone = *std::move(own);
  if (!zone.empty()) (void)zone_now(zone);  // before any value
  if (kind.kind == Kind::instant) words.push_back("zone=" + std::string(zone_now(zone).name));
  const Layout layout = open_layout(locale, kind.kind, words_of(words, Side::both));
  return format_values(layout, std::move(zone), std::move(missing));
}

}  // namespace jwnls::tool
