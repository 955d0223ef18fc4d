#include <algorithm>
#include <array>
#include <span>

#include "tool/iso_writer.h"
#include "tool/tables/layout_values.h"
#include "tool/tables/two_ways.h"

namespace jwnls::tool {
namespace {

// How values of a kind are read and written: one by one, and a column's.

struct Decimals {
  static int read(const jwnls_layout* layout, std::string_view text, char* out,
                  FieldValue& value) noexcept {
    return jwnls_read_decimal(layout, text.data(), text.size(), out, ColumnValues::room,
                              &value.length, value.currency, &value.facts);
  }
  static void read_all(const jwnls_layout* layout, const jwnls_texts& texts, ValueBatch& values,
                       jwnls_column_facts& facts) {
    if (read_into_room(layout, texts, values, facts)) return;
    // Exponents make decimals longer than their texts.
    values.make_room(0, ValueBatch::most_room);
    facts = {};
    facts.size = sizeof facts;
    (void)read_into_room(layout, texts, values, facts);
  }

 private:
  // False where not all of them fit.
  static bool read_into_room(const jwnls_layout* layout, const jwnls_texts& texts,
                             ValueBatch& values, jwnls_column_facts& facts) noexcept {
    const jwnls_column column = {.size = sizeof column,
                                 .bytes = values.bytes.data(),
                                 .room = values.room(),
                                 .offsets = values.offsets.data(),
                                 .large_offsets = nullptr,
                                 .codes = values.codes.data(),
                                 .validity = nullptr};
    return jwnls_read_decimals(layout, &texts, &column, &facts) == texts.count;
  }
};

// Moments are read to a count of days or microseconds, and written from it.
template <typename Count, auto read_one, auto read_column, auto write>
struct Moments {
  static int read(const jwnls_layout* layout, std::string_view text, char* out,
                  FieldValue& value) noexcept {
    Count count = 0;
    const int code = read_one(layout, text.data(), text.size(), &count, &value.facts);
    if (code == JWNLS_OK) [[likely]]
      value.length = static_cast<std::size_t>(write(out, count) - out);
    return code;
  }
  static void read_all(const jwnls_layout* layout, const jwnls_texts& texts, ValueBatch& values,
                       jwnls_column_facts& facts) noexcept {
    static_assert(TextBatch::most * iso_room <= ValueBatch::first_room);
    std::array<Count, TextBatch::most> counts;
    (void)read_column(layout, &texts, counts.data(), values.codes.data(), &facts);
    char* const begin = values.bytes.data();
    char* end = begin;
    for (std::size_t i = 0; i < texts.count; ++i) {
      if (values.codes[i] == JWNLS_OK) end = write(end, counts[i]);
      values.offsets[i + 1] = static_cast<std::int32_t>(end - begin);
    }
  }
};

char* write_instant(char* out, std::int64_t microseconds) noexcept {
  char* end = write_iso_datetime(out, microseconds);
  *end++ = 'Z';
  return end;
}

using Dates = Moments<std::int32_t, jwnls_read_date, jwnls_read_dates, write_iso_date>;
using Times = Moments<std::int64_t, jwnls_read_time, jwnls_read_times, write_iso_time>;
using Datetimes =
    Moments<std::int64_t, jwnls_read_datetime, jwnls_read_datetimes, write_iso_datetime>;
using Instants = Moments<std::int64_t, jwnls_read_datetime, jwnls_read_datetimes, write_instant>;

template <typename Values>
class ReadValues final : public LayoutValues {
 public:
  ReadValues(const Layout& layout, MissingWords missing, std::uint8_t facts)
      : layout_(layout), missing_(std::move(missing)), facts_(facts) {}

  FieldValue convert(std::string_view text, char* out) const noexcept override {
    FieldValue value;
    convert_into(text, out, value);
    return value;
  }
  void convert_into(std::string_view text, char* out, FieldValue& value) const noexcept override {
    value.length = 0;
    value.facts = 0;
    value.currency[0] = '\0';
    const int code =
        missing_.contains(text) ? JWNLS_MISSING : Values::read(layout_.get(), text, out, value);
    if (code != JWNLS_OK) [[unlikely]] {
      value = {};
      if (code == JWNLS_MISSING) value.outcome = FieldOutcome::missing;
      return;
    }
    value.outcome = FieldOutcome::read;
    value.facts &= facts_;
  }
  void convert_all(const TextBatch& batch, ValueBatch& values) const override {
    // What stands for missing values is no value, even where the layout reads one.
    std::array<std::uint8_t, TextBatch::most / 8> validity;
    if (!missing_.empty()) mark_values(batch, validity);
    const jwnls_texts texts = {.size = sizeof texts,
                               .count = batch.count(),
                               .texts = nullptr,
                               .bytes = batch.bytes(),
                               .offsets = batch.offsets(),
                               .large_offsets = nullptr,
                               .validity = missing_.empty() ? nullptr : validity.data()};
    jwnls_column_facts facts = {};
    facts.size = sizeof facts;
    Values::read_all(layout_.get(), texts, values, facts);
    values.read = facts.read;
    values.two_ways = (facts_ & JWNLS_TWO_WAYS) != 0 ? facts.two_ways : 0;
    values.first_two_ways = facts.first_two_ways;
    values.deciding = (facts_ & JWNLS_DECIDES) != 0 ? facts.deciding : 0;
  }
  [[nodiscard]] std::string reason(std::string_view text) const override {
    return refusal_reason(layout_, text);
  }
  [[nodiscard]] std::string message(std::string_view text) const override {
    return refusal_message(layout_, text);
  }
  [[nodiscard]] std::string meanings(std::string_view text) const override {
    return tool::meanings(layout_, text);
  }
  [[nodiscard]] std::string_view kind_name() const override {
    return jwnls_kind_name(static_cast<int>(layout_.kind()));
  }
  [[nodiscard]] std::optional<bool> month_first() const override {
    if (layout_.kind() != Kind::date) return std::nullopt;
    constexpr std::int32_t last_of_2024 = 20088;  // 31 December
    char out[room];
    std::size_t length = 0;
    (void)jwnls_write_date(layout_.get(), last_of_2024, out, sizeof out, &length);
    // Before the day stand a month's number or name, or a mark of direction.
    constexpr std::size_t mark_bytes = 3;
    const std::string_view text(out, length);
    const std::size_t day = text.find("31");
    if (day == std::string_view::npos) return false;
    return day > mark_bytes || text.substr(0, day).find("12") != std::string_view::npos;
  }
  // Digits and the marks of numbers and of ISO 8601.
  [[nodiscard]] std::string_view alphabet() const override { return "0123456789-+.:TZ"; }
  [[nodiscard]] bool is_json_number() const override { return is_numeric(layout_.kind()); }
  [[nodiscard]] std::string description() const override { return layout_.describe(); }

 private:
  void mark_values(const TextBatch& batch, std::span<std::uint8_t> validity) const noexcept {
    std::fill(validity.begin(), validity.end(), std::uint8_t{0});
    for (std::size_t i = 0; i < batch.count(); ++i) {
      const unsigned is_value = missing_.contains(batch.text(i)) ? 0 : 1;
      validity[i / 8] |= static_cast<std::uint8_t>(is_value << (i % 8));
    }
  }

  Layout layout_;
  MissingWords missing_;
  std::uint8_t facts_;
};

// The kind and the text that a message begins with, and what would be read, at its end:
//   date '30.02.2024': no such date in the calendar; de_DE writes '15.03.2024'
//   '12.34' in de_DE: '12' fits, '.34' does not: groups of another size; de_DE writes '1.234,5'
std::string_view without_frame(std::string_view message, std::string_view text,
                               const std::string& locale) {
  // A quoted text is at least as long as the text itself, but may be cut at 60 bytes.
  constexpr std::size_t shortest_cut = 55;
  const std::size_t quoted = std::min(text.size(), shortest_cut);
  const std::string in_locale = "' in " + locale + ": ";
  for (const std::string_view end : {std::string_view(in_locale), std::string_view("': ")}) {
    const std::size_t at = message.find(end, std::min(quoted, message.size()));
    if (at == std::string_view::npos) continue;
    message.remove_prefix(at + end.size());
    break;
  }
  return message.substr(0, message.rfind("; " + locale + " writes '"));
}

// The currency of an amount that the layout refuses for it: "is in USD, not EUR"; else nothing.
std::string currency_reason(const Layout& layout, std::string_view text) {
  if (layout.kind() != Kind::amount) return {};
  const auto any = Layout::open_described(layout.describe() + " currency=any");
  if (!any) return {};
  const auto amount = any->read_decimal(text);
  if (!amount || amount->value.currency == layout.currency()) return {};
  return "is in " + amount->value.currency + ", not " + layout.currency();
}

}  // namespace

bool is_numeric(Kind kind) {
  return kind == Kind::number || kind == Kind::integer || kind == Kind::amount ||
         kind == Kind::percent;
}

LayoutValuesPointer read_values(const Layout& layout, MissingWords missing, std::uint8_t facts) {
  switch (layout.kind()) {
    case Kind::date:
    case Kind::period:
      return std::make_shared<ReadValues<Dates>>(layout, std::move(missing), facts);
    case Kind::time:
      return std::make_shared<ReadValues<Times>>(layout, std::move(missing), facts);
    case Kind::datetime:
      return std::make_shared<ReadValues<Datetimes>>(layout, std::move(missing), facts);
    case Kind::instant:
      return std::make_shared<ReadValues<Instants>>(layout, std::move(missing), facts);
    default:
      return std::make_shared<ReadValues<Decimals>>(layout, std::move(missing), facts);
  }
}

std::string refusal_message(const Layout& layout, std::string_view text) {
  jwnls_error error = {};
  const int code = jwnls_explain(layout.get(), text.data(), text.size(), &error);
  return error.text[0] != '\0' ? error.text : jwnls_code_text(code);
}

std::string refusal_reason(const Layout& layout, std::string_view text) {
  std::string reason = currency_reason(layout, text);
  if (!reason.empty()) return reason;
  reason = without_frame(refusal_message(layout, text), text, layout.locale());
  // In a column the place matters less than whose groups they are not.
  if (reason.ends_with(": groups of another size")) {
    return "groups are not as " + layout.locale() + " has them";
  }
  return reason;
}

}  // namespace jwnls::tool
