#include <algorithm>

#include "tool/iso_writer.h"
#include "tool/tables/layout_values.h"

namespace jwnls::tool {
namespace {

// Each fills `value`, which is as it was made, where the text is read.

int read_decimal(const jwnls_layout* layout, std::string_view text, char* out, FieldValue& value) {
  return jwnls_read_decimal(layout, text.data(), text.size(), out, ColumnValues::room,
                            &value.length, value.currency, &value.facts);
}

int read_date(const jwnls_layout* layout, std::string_view text, char* out, FieldValue& value) {
  std::int32_t days = 0;
  const int code = jwnls_read_date(layout, text.data(), text.size(), &days, &value.facts);
  if (code == JWNLS_OK) [[likely]]
    value.length = static_cast<std::size_t>(write_iso_date(out, days) - out);
  return code;
}

int read_time(const jwnls_layout* layout, std::string_view text, char* out, FieldValue& value) {
  std::int64_t microseconds = 0;
  const int code = jwnls_read_time(layout, text.data(), text.size(), &microseconds, &value.facts);
  if (code != JWNLS_OK) return code;
  value.length = static_cast<std::size_t>(write_iso_time(out, microseconds) - out);
  return code;
}

template <bool is_instant>
int read_datetime(const jwnls_layout* layout, std::string_view text, char* out, FieldValue& value) {
  std::int64_t microseconds = 0;
  const int code =
      jwnls_read_datetime(layout, text.data(), text.size(), &microseconds, &value.facts);
  if (code != JWNLS_OK) return code;
  char* end = write_iso_datetime(out, microseconds);
  if (is_instant) *end++ = 'Z';
  value.length = static_cast<std::size_t>(end - out);
  return code;
}

using ReadField = int (*)(const jwnls_layout*, std::string_view, char*, FieldValue&);

template <ReadField read>
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
        missing_.contains(text) ? JWNLS_MISSING : read(layout_.get(), text, out, value);
    if (code != JWNLS_OK) [[unlikely]] {
      value = {};
      if (code == JWNLS_MISSING) value.outcome = FieldOutcome::missing;
      return;
    }
    value.outcome = FieldOutcome::read;
    value.facts &= facts_;
  }
  [[nodiscard]] std::string reason(std::string_view text) const override {
    return refusal_reason(layout_, text);
  }
  [[nodiscard]] std::string message(std::string_view text) const override {
    return refusal_message(layout_, text);
  }
  [[nodiscard]] std::string_view kind_name() const override {
    return jwnls_kind_name(static_cast<int>(layout_.kind()));
  }
  // Digits and the marks of numbers and of ISO 8601.
  [[nodiscard]] std::string_view alphabet() const override { return "0123456789-+.:TZ"; }
  [[nodiscard]] bool is_json_number() const override { return is_numeric(layout_.kind()); }
  [[nodiscard]] std::string description() const override { return layout_.describe(); }

 private:
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
      return std::make_shared<ReadValues<read_date>>(layout, std::move(missing), facts);
    case Kind::time:
      return std::make_shared<ReadValues<read_time>>(layout, std::move(missing), facts);
    case Kind::datetime:
      return std::make_shared<ReadValues<read_datetime<false>>>(layout, std::move(missing), facts);
    case Kind::instant:
      return std::make_shared<ReadValues<read_datetime<true>>>(layout, std::move(missing), facts);
    default:
      return std::make_shared<ReadValues<read_decimal>>(layout, std::move(missing), facts);
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
