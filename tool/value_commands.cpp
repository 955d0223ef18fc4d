#include "tool/value_commands.h"

#include <map>

#include "tool/plain_values.h"
#include "tool/refusal.h"
#include "tool/session.h"

namespace jwnls::tool {
namespace {

std::string joined(const std::string& words, const std::string& word) {
  return words.empty() ? word : words + " " + word;
}

// Who says the order of a date has decided.
Undecided undecided(const LayoutWords& words) {
  if (words.gives("proved")) return Undecided::refused;
  for (const char* order : {"dmy", "mdy", "ymd"}) {
    if (words.gives("order", order)) return Undecided::ignored;
  }
  return Undecided::told;
}

// The layouts that texts are written by: one, but of amounts one for each currency.
class Targets {
 public:
  Targets(const KindRow& kind, std::string locale, std::string words)
      : kind_(kind.kind), locale_(std::move(locale)), words_(std::move(words)) {}

  const Layout& of(const std::string& currency) {
    const auto known = layouts_.find(currency);
    if (known != layouts_.end()) return known->second;
    const std::string words = currency.empty() ? words_ : joined(words_, "currency=" + currency);
    return layouts_.emplace(currency, open_layout(locale_, kind_, words)).first->second;
  }

 private:
  Kind kind_;
  std::string locale_;
  std::string words_;
  std::map<std::string, Layout> layouts_;
};

}  // namespace

ExitCode run_format(const KindRow& kind, const ValueOptions& options) {
  std::string words = options.words.of(Side::both);
  const std::string locale = find_locale(options.locale, kind.locale_category);
  if (!options.zone.empty()) (void)zone_now(options.zone);  // before any value
  if (kind.kind == Kind::instant) {
    words = joined(words, "zone=" + std::string(zone_now(options.zone).name));
  }
  const Layout layout = open_layout(locale, kind.kind, words);
  return write_values(options.lines, Undecided::ignored,
                      [&](std::string_view value) -> Result<ValueText> {
                        auto text = write_plain(layout, value, options.zone);
                        if (!text) return refusal(text.message());
                        return ValueText{*std::move(text)};
                      });
}

ExitCode run_read(const KindRow& kind, const ValueOptions& options) {
  const std::string words = options.words.of(Side::both);
  const Layout layout =
      open_layout(find_locale(options.locale, kind.locale_category), kind.kind, words);
  // Of several currencies the sums alone would mix them.
  const bool tells_currency = options.words.gives("currency", "any");
  return write_values(options.lines, undecided(options.words),
                      [&](std::string_view text) -> Result<ValueText> {
                        auto value = read_plain(layout, text);
                        if (!value) return refusal(value.message());
                        ValueText read{value->text, value->two_ways, value->decides};
                        if (tells_currency && !read.text.empty()) {
                          read.text.append(" ").append(value->currency);
                        }
                        return read;
                      });
}

ExitCode run_convert(const KindRow& kind, const ValueOptions& options) {
  const std::string reading = options.words.of(Side::reading);
  const Layout source =
      open_layout(find_locale(options.locale, kind.locale_category), kind.kind, reading);
  const std::string target = find_locale(options.target, kind.locale_category);
  Targets targets(kind, target, options.words.of(Side::writing));
  (void)targets.of(source.currency());
  return write_values(options.lines, undecided(options.words),
                      [&](std::string_view text) -> Result<ValueText> {
                        const auto value = read_plain(source, text);
                        if (!value) return refusal(value.message());
                        auto written = write_plain(targets.of(value->currency), value->text, {});
                        if (!written) return refusal(written.message());
                        return ValueText{*std::move(written), value->two_ways, value->decides};
                      });
}

}  // namespace jwnls::tool
