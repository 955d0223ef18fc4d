// Opening and describing layouts.

#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "include/jwnls/jwnls.h"
#include "library/layouts/layout.h"
#include "library/locale_data/currency_data.h"
#include "library/locale_data/number_data.h"
#include "library/options/options.h"
#include "library/texts/failure.h"
#include "library/texts/give_text.h"

namespace {

using jwnls::library::fail;
using jwnls::library::guarded;
using jwnls::library::Message;

constexpr const char* kind_names[] = {nullptr,   "number", "date",    "datetime", "time",
                                      "integer", "amount", "percent", "instant",  "period"};
constexpr int kinds = std::size(kind_names);

bool is_numeric(int kind) {
  return kind == JWNLS_NUMBER || kind == JWNLS_INTEGER || kind == JWNLS_AMOUNT ||
         kind == JWNLS_PERCENT;
}

void open_number_layout(jwnls_layout& layout) {
  const jwnls::LocaleRecord& record = *layout.locale->record;
  const jwnls::library::Options& options = layout.options;
  const jwnls::library::NumberData data(record);
  std::optional<jwnls::library::CurrencyData> currency;
  if (layout.is(JWNLS_AMOUNT)) {
    const bool is_named = !options.currency.empty() && options.currency != "any";
    layout.currency = is_named ? options.currency : jwnls::library::own_currency(record);
    currency = jwnls::library::currency_data(record, layout.currency);
  }
  const jwnls::library::CurrencyData* const unit = currency ? &*currency : nullptr;
  layout.number.style = number_style(data, layout.kind, options, unit, layout.locale->handle);
  layout.number.syntax =
      number_syntax(data, layout.kind, options, unit, record, layout.number.style);
}

std::unique_ptr<jwnls_layout> open(std::string_view locale, int kind, std::string_view words) {
  if (jwnls_kind_name(kind) == nullptr) {
    fail(JWNLS_UNKNOWN, [kind](Message& message) { message << "no such kind: " << kind; });
  }
  jwnls::library::Options options;
  read_options(kind, words, options);
  return make_layout(jwnls::library::open_locale(locale), kind, options);
}

// The next word of a description, which moves behind it.
std::string_view next_word(std::string_view& text) {
  const std::size_t begin = std::min(text.find_first_not_of(' '), text.size());
  const std::size_t end = std::min(text.find(' ', begin), text.size());
  const std::string_view word = text.substr(begin, end - begin);
  text.remove_prefix(end);
  return word;
}

}  // namespace

std::unique_ptr<jwnls_layout> jwnls::library::make_layout(const Locale& locale, int kind,
                                                          const Options& options) {
  auto layout = std::make_unique<jwnls_layout>();
  layout->kind = kind;
  layout->options = options;
  layout->locale = &locale;
  if (!layout->options.zone.empty()) {
    layout->zone = open_zone(layout->options.zone);
    layout->options.zone = layout->zone->name();
  }
  if (is_numeric(kind)) open_number_layout(*layout);
  layout->dates = make_date_layout(locale, kind, layout->options);
  const bool has_times =
      layout->is(JWNLS_TIME) || layout->is(JWNLS_DATETIME) || layout->is(JWNLS_INSTANT);
  if (has_times && !locale.passing) layout->times = &time_layout_of(locale);
  layout->description =
      locale.name + " " + jwnls_kind_name(kind) + option_words(kind, layout->options);
  return layout;
}

extern "C" {

const char* jwnls_kind_name(int kind) {
  return kind > 0 && kind < kinds ? kind_names[kind] : nullptr;
}

int jwnls_kind_of_name(const char* name) {
  for (int kind = 1; kind < kinds; ++kind) {
    if (std::strcmp(kind_names[kind], name) == 0) return kind;
  }
  return 0;
}

int jwnls_open(const char* locale, int kind, const char* options, jwnls_layout** layout,
               jwnls_error* error) {
  *layout = nullptr;
  return guarded(
      error, [&] { *layout = open(locale, kind, options != nullptr ? options : "").release(); });
}

int jwnls_open_described(const char* description, jwnls_layout** layout, jwnls_error* error) {
  *layout = nullptr;
  return guarded(error, [&] {
    std::string_view words = description;
    const std::string locale(next_word(words));
    const std::string kind(next_word(words));
    if (jwnls_kind_of_name(kind.c_str()) == 0) {
      fail(JWNLS_UNKNOWN, [&](Message& message) {
        (message << "layout ").quoted(description) << ": no kind ";
        message.quoted(kind);
      });
    }
    *layout = open(locale, jwnls_kind_of_name(kind.c_str()), words).release();
  });
}

void jwnls_close(jwnls_layout* layout) { delete layout; }

int jwnls_describe(const jwnls_layout* layout, char* out, size_t room, size_t* length) {
  return jwnls::library::give_text(layout->description, out, room, length);
}

int jwnls_layout_kind(const jwnls_layout* layout) { return layout->kind; }
const char* jwnls_layout_locale(const jwnls_layout* layout) { return layout->locale->name.c_str(); }
const char* jwnls_layout_currency(const jwnls_layout* layout) { return layout->currency.c_str(); }

}  // extern "C"
