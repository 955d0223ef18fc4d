#include <chrono>
#include <optional>

#include "tool/iso_writer.h"
#include "tool/moments.h"
#include "tool/refusal.h"
#include "tool/reports/decimal_sum.h"
#include "tool/tables/layout_values.h"
#include "tool/tables/target_layouts.h"
#include "tool/terminal_text.h"
#include "tool/trimmed_text.h"

namespace jwnls::tool {
namespace {

using std::chrono::days;
using std::chrono::seconds;
using std::chrono::sys_days;

FieldValue written_as(int code, std::size_t length) {
  FieldValue value;
  value.outcome = code == JWNLS_OK        ? FieldOutcome::read
                  : code == JWNLS_MISSING ? FieldOutcome::missing
                                          : FieldOutcome::refused;
  value.length = code == JWNLS_OK ? length : 0;
  return value;
}

// The days of "2024-03-15", the usual form; nothing for any other text.
std::optional<std::int32_t> days_of_iso_date(std::string_view text) {
  constexpr std::string_view form = "0000-00-00";
  if (text.size() != form.size()) return std::nullopt;
  for (std::size_t i = 0; i < form.size(); ++i) {
    const bool fits = form[i] == '-' ? text[i] == '-' : text[i] >= '0' && text[i] <= '9';
    if (!fits) return std::nullopt;
  }
  const auto number = [text](std::size_t at, std::size_t digits) {
    unsigned value = 0;
    for (; digits > 0; --digits) value = value * 10 + static_cast<unsigned>(text[at++] - '0');
    return value;
  };
  const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(number(0, 4))),
                                         std::chrono::month(number(5, 2)),
                                         std::chrono::day(number(8, 2))};
  if (!date.ok()) return std::nullopt;
  return static_cast<std::int32_t>(sys_days(date).time_since_epoch().count());
}

// A moment as the layout's functions take it; the error is the reason why it cannot be one.
Result<std::int64_t> moment_of(const Layout& layout, std::string_view text,
                               const std::string& zone) {
  auto moment = read_moment(text);
  if (!moment) return refusal(moment.message());
  if (layout.kind() == Kind::instant) {
    if (!moment->instant) {
      return refusal("no instant: \"Z\" or an offset such as +01:00 is missing");
    }
    return Microseconds(moment->instant->time_since_epoch()).count();
  }
  moment = on_the_wall(*moment, zone);
  if (!moment) return refusal(moment.message());
  if (layout.kind() == Kind::time) {
    if (!moment->time) return refusal("a date without a time of day");
    return Microseconds(*moment->time).count();
  }
  if (!moment->date) return refusal("a time without a date");
  const days date = sys_days(*moment->date).time_since_epoch();
  if (layout.kind() == Kind::date) return date.count();
  // A date alone is its midnight.
  return Microseconds(date + moment->time.value_or(seconds{0})).count();
}

int write_value(const Layout& layout, std::int64_t value, char* out, std::size_t* length) {
  constexpr std::size_t room = ColumnValues::room;
  switch (layout.kind()) {
    case Kind::date:
      return jwnls_write_date(layout.get(), static_cast<std::int32_t>(value), out, room, length);
    case Kind::time:
      return jwnls_write_time(layout.get(), value, out, room, length);
    default:
      return jwnls_write_datetime(layout.get(), value, out, room, length);
  }
}

char* write_iso(Kind kind, std::int64_t value, char* out) {
  if (kind == Kind::date) return write_iso_date(out, static_cast<std::int32_t>(value));
  if (kind == Kind::time) return write_iso_time(out, value);
  char* end = write_iso_datetime(out, value);
  if (kind == Kind::instant) *end++ = 'Z';
  return end;
}

// What the codes of writing say of a value.
std::string reason_of(Kind kind, int code) {
  if (code == JWNLS_UNREAD && is_numeric(kind)) return "not a number (as 1234.5)";
  if (code == JWNLS_RANGE && kind == Kind::integer) {
    return "no integer, or of too many digits";
  }
  if (code == JWNLS_RANGE && !is_numeric(kind)) return "outside the calendar";
  const bool too_long = code == JWNLS_RANGE || code == JWNLS_ROOM;
  return too_long ? "of too many digits" : jwnls_code_text(code);
}

// Of both kinds of writers.
class FormatValues : public LayoutValues {
 public:
  explicit FormatValues(MissingWords missing) : missing_(std::move(missing)) {}

  [[nodiscard]] std::string message(std::string_view text) const override {
    return in_quotes(text) + ": " + reason(text);
  }
  [[nodiscard]] bool is_json_number() const override { return false; }

 protected:
  [[nodiscard]] bool is_missing(std::string_view text) const noexcept {
    return missing_.contains(text);
  }

 private:
  MissingWords missing_;
};

class FormatDecimals final : public FormatValues {
 public:
  FormatDecimals(const Layout& layout, MissingWords missing)
      : FormatValues(std::move(missing)), layouts_(layout) {}

  FieldValue convert(std::string_view text, char* out) const noexcept override {
    text = trimmed(text);
    if (is_missing(text)) return written_as(JWNLS_MISSING, 0);
    std::size_t length = 0;
    const int code = write(text, out, &length);
    return written_as(code, length);
  }
  [[nodiscard]] std::string reason(std::string_view text) const override {
    char out[room];
    std::size_t length = 0;
    return reason_of(layouts_.base().kind(), write(trimmed(text), out, &length));
  }
  [[nodiscard]] std::string_view value_of(std::string_view text, std::string_view,
                                          char* out) const noexcept override {
    return plain_decimal(trimmed(text), out, room);
  }
  [[nodiscard]] std::string_view kind_name() const override {
    return jwnls_kind_name(static_cast<int>(layouts_.base().kind()));
  }
  [[nodiscard]] std::string description() const override { return layouts_.base().describe(); }

 private:
  int write(std::string_view text, char* out, std::size_t* length) const {
    const jwnls_layout* const layout = layouts_.of(text, {});
    if (layout == nullptr) return JWNLS_RANGE;
    return jwnls_write_decimal(layout, text.data(), text.size(), out, room, length);
  }

  TargetLayouts layouts_;
};

class FormatMoments final : public FormatValues {
 public:
  FormatMoments(const Layout& layout, std::string zone, MissingWords missing)
      : FormatValues(std::move(missing)), layout_(layout), zone_(std::move(zone)) {}

  FieldValue convert(std::string_view text, char* out) const noexcept override {
    text = trimmed(text);
    if (text.empty() || is_missing(text)) return written_as(JWNLS_MISSING, 0);
    std::size_t length = 0;
    if (layout_.kind() == Kind::date) {
      if (const auto date = days_of_iso_date(text)) {
        const int code = write_value(layout_, *date, out, &length);
        return written_as(code, length);
      }
    }
    const auto value = moment_of(layout_, text, zone_);
    if (!value) return written_as(JWNLS_UNREAD, 0);
    const int code = write_value(layout_, *value, out, &length);
    return written_as(code, length);
  }
  [[nodiscard]] std::string reason(std::string_view text) const override {
    const auto value = moment_of(layout_, trimmed(text), zone_);
    if (!value) return value.message();
    char out[room];
    std::size_t length = 0;
    return reason_of(layout_.kind(), write_value(layout_, *value, out, &length));
  }
  [[nodiscard]] std::string_view value_of(std::string_view text, std::string_view,
                                          char* out) const noexcept override {
    const auto value = moment_of(layout_, trimmed(text), zone_);
    if (!value) return {};
    return {out, static_cast<std::size_t>(write_iso(layout_.kind(), *value, out) - out)};
  }
  [[nodiscard]] std::string_view kind_name() const override {
    return jwnls_kind_name(static_cast<int>(layout_.kind()));
  }
  [[nodiscard]] std::string description() const override { return layout_.describe(); }

 private:
  Layout layout_;
  std::string zone_;
};

}  // namespace

LayoutValuesPointer format_values(const Layout& layout, std::string zone, MissingWords missing) {
  if (is_numeric(layout.kind()))
    return std::make_shared<FormatDecimals>(layout, std::move(missing));
  return std::make_shared<FormatMoments>(layout, std::move(zone), std::move(missing));
}

}  // namespace jwnls::tool
