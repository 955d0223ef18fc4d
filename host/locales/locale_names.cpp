#include "host/locales/locale_names.h"

#include <algorithm>
#include <cstddef>
#include <span>

#include "host/locales/name_tables.h"
#include "host/locales/subtags.h"

namespace jwnls::host {
namespace {

using names::locale_rows;
using names::StoredRow;
using names::StoredText;

constexpr LocaleMatch no_match = {Status::lookup_failed, {}};
constexpr std::size_t longest_name = WrittenName::capacity;

LocaleMatch match(const StoredRow* row, bool exact) noexcept {
  if (row == nullptr) return no_match;
  return {exact ? Status::ok : Status::resolved_with_warning, row->name.view()};
}

template <typename Unit>
std::basic_string_view<Unit> value_of(const StoredText<Unit>& text) noexcept {
  return text.view();
}
char16_t value_of(char16_t unit) noexcept { return unit; }

// The row of a table whose first member is `key`, or null.
template <typename Row, typename Member, typename Key>
const Row* find(std::span<const Row> table, Member Row::*member, Key key) noexcept {
  const auto value = [member](const Row& row) { return value_of(row.*member); };
  const auto found = std::ranges::lower_bound(table, key, {}, value);
  return found != table.end() && value(*found) == key ? &*found : nullptr;
}

const StoredRow* find_available(std::string_view name) noexcept {
  return find(locale_rows, &StoredRow::name, name);
}

const StoredRow* find_in(std::span<const names::NameOf> table, std::string_view name) noexcept {
  const names::NameOf* row = find(table, &names::NameOf::name, name);
  return row != nullptr ? &locale_rows[row->locale] : nullptr;
}

const StoredRow* find_available_or_alias(const Subtags& subtags) noexcept {
  const SubtagName name(subtags);
  const StoredRow* row = find_available(name.text());
  return row != nullptr ? row : find_in(names::aliases, name.text());
}

std::string_view script_of(std::span<const names::LikelyScript> table,
                           std::string_view name) noexcept {
  const names::LikelyScript* row = find(table, &names::LikelyScript::name, name);
  return row != nullptr ? row->script.view() : std::string_view();
}

// The script that a name is written in when it names none.
std::string_view likely_script(const Subtags& subtags) noexcept {
  const SubtagName in_region({subtags.language, {}, subtags.region, {}});
  const std::string_view script = script_of(names::region_scripts, in_region.text());
  return !script.empty() ? script : script_of(names::language_scripts, subtags.language);
}

// Replaces codes that are written otherwise now. An alias's own script or region stands only where
// the name has none.
void replace_aliases(Subtags& subtags) noexcept {
  if (const auto* row = find(names::language_aliases, &names::CodeAlias::code, subtags.language)) {
    Subtags canonical;
    (void)split_subtags(row->canonical.view(), canonical);
    subtags.language = canonical.language;
    if (subtags.script.empty()) subtags.script = canonical.script;
    if (subtags.region.empty()) subtags.region = canonical.region;
  }
  if (const auto* row = find(names::region_aliases, &names::CodeAlias::code, subtags.region)) {
    subtags.region = row->canonical.view();
  }
}

// An available locale that the name is another spelling of: as it stands, with codes replaced, or
// without a script that goes without saying ("de_Latn_DE").
const StoredRow* find_equal(Subtags& subtags) noexcept {
  if (const StoredRow* row = find_available_or_alias(subtags)) return row;
  replace_aliases(subtags);
  if (const StoredRow* row = find_available_or_alias(subtags)) return row;
  if (subtags.script.empty() || subtags.script != likely_script(subtags)) return nullptr;
  Subtags without_script = subtags;
  without_script.script = {};
  return find_available_or_alias(without_script);
}

// The nearest locale above one that does not exist. It writes the same script: Azerbaijani as
// written in Iran has no parent here.
const StoredRow* find_parent(const Subtags& subtags) noexcept {
  if (!subtags.region.empty() &&
      find(names::regions, &names::Region::code, subtags.region) == nullptr) {
    return nullptr;
  }
  const SubtagName whole(subtags);
  if (const StoredRow* row = find_in(names::parents, whole.text())) return row;

  const std::string_view default_script = script_of(names::language_scripts, subtags.language);
  const std::string_view script = !subtags.script.empty() ? subtags.script : likely_script(subtags);
  if (!subtags.script.empty() || script != default_script) {
    const SubtagName with_script({subtags.language, script, {}, {}});
    if (const StoredRow* row = find_available(with_script.text())) return row;
  }
  return script == default_script ? find_available(subtags.language) : nullptr;
}

LocaleMatch match_subtags(Subtags subtags, bool dropped) noexcept {
  if (const StoredRow* row = find_equal(subtags)) return match(row, !dropped);
  if (!subtags.variants.empty()) {
    subtags.variants = {};
    if (const StoredRow* row = find_equal(subtags)) return match(row, false);
  }
  return match(find_parent(subtags), false);
}

// ---- Display names: "German", "Deutsch (Schweiz)", "German_Germany.1252".
//
//   written = (name | language "_" region) ["." charset]     in any letter case
//   name      a locale's English or own name      language  such a name of a locale without region
//   region    a region's English name

char16_t folded(char16_t unit) noexcept {
  if (unit < 0x80) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
  }
  const auto* row = find(names::folded_units, &names::FoldedUnit::unit, unit);
  return row != nullptr ? row->folded : unit;
}

const StoredRow* find_display_name(std::u16string_view folded_name) noexcept {
  const auto* row = find(names::display_names, &names::DisplayName::folded_name, folded_name);
  return row != nullptr ? &locale_rows[row->locale] : nullptr;
}

// language "_" region
const StoredRow* find_language_and_region(std::u16string_view folded_name) noexcept {
  const std::size_t cut = folded_name.find(u'_');
  if (cut == std::u16string_view::npos) return nullptr;
  const StoredRow* language = find_display_name(folded_name.substr(0, cut));
  const auto region =
      std::ranges::find(names::regions, folded_name.substr(cut + 1),
                        [](const names::Region& each) { return each.folded_name.view(); });
  Subtags subtags;
  if (language == nullptr || region == names::regions.end() ||
      !split_subtags(language->name.view(), subtags) || !subtags.region.empty()) {
    return nullptr;
  }
  subtags.region = region->code.view();
  const StoredRow* row = find_equal(subtags);
  return row != nullptr ? row : find_parent(subtags);
}

LocaleMatch match_display_name(std::u16string_view name) noexcept {
  char16_t units[longest_name];
  std::ranges::transform(name, units, folded);
  const std::u16string_view whole(units, name.size());
  const std::u16string_view without_charset = whole.substr(0, whole.rfind(u'.'));
  for (const std::u16string_view text : {whole, without_charset}) {
    if (const StoredRow* row = find_display_name(text)) return match(row, false);
  }
  return match(find_language_and_region(without_charset), false);
}

std::u16string_view trimmed(std::u16string_view text) noexcept {
  const std::size_t first = text.find_first_not_of(u' ');
  if (first == std::u16string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

}  // namespace

LocaleMatch match_locale_name(std::u16string_view name) noexcept {
  name = trimmed(name);
  if (name.empty() || name.size() > longest_name) return no_match;
  if (WrittenName written; written.read(name)) {
    const LocaleMatch found = match_subtags(written.subtags(), written.dropped());
    if (found.status != Status::lookup_failed) return found;
  }
  return match_display_name(name);
}

std::size_t LocaleRows::size() noexcept { return locale_rows.size(); }

LocaleRow LocaleRows::operator[](std::size_t index) const noexcept {
  const StoredRow& row = locale_rows[index];
  return {row.name.view(), row.english_name.view(), row.own_name.view()};
}

}  // namespace jwnls::host
