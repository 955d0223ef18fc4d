#include "tool/tables/layout_values.h"
#include "tool/tables/target_layouts.h"
#include "tool/tables/two_ways.h"

namespace jwnls::tool {
namespace {

// A value on its way: read by the source, and not yet written.
struct Passed {
  int read_code = JWNLS_OK;
  int write_code = JWNLS_OK;
  std::uint8_t facts = 0;
  std::size_t length = 0;
  char currency[4] = {};
};

Passed pass_decimal(const Layout& source, const TargetLayouts& targets, std::string_view text,
                    char* out) {
  Passed passed;
  char decimal[2100];  // more than any text gives, its exponent written out
  std::size_t length = 0;
  passed.read_code = jwnls_read_decimal(source.get(), text.data(), text.size(), decimal,
                                        sizeof decimal, &length, passed.currency, &passed.facts);
  if (passed.read_code != JWNLS_OK) return passed;
  const jwnls_layout* const target = targets.of({decimal, length}, passed.currency);
  passed.write_code = target == nullptr ? JWNLS_RANGE
                                        : jwnls_write_decimal(target, decimal, length, out,
                                                              ColumnValues::room, &passed.length);
  return passed;
}

Passed pass_date(const Layout& source, const TargetLayouts& targets, std::string_view text,
                 char* out) {
  Passed passed;
  std::int32_t days = 0;
  passed.read_code = jwnls_read_date(source.get(), text.data(), text.size(), &days, &passed.facts);
  if (passed.read_code != JWNLS_OK) return passed;
  passed.write_code =
      jwnls_write_date(targets.base().get(), days, out, ColumnValues::room, &passed.length);
  return passed;
}

// Times of day and datetimes, which differ in the functions alone.
template <auto read, auto write>
Passed pass_time(const Layout& source, const TargetLayouts& targets, std::string_view text,
                 char* out) {
  Passed passed;
  std::int64_t time = 0;
  passed.read_code = read(source.get(), text.data(), text.size(), &time, &passed.facts);
  if (passed.read_code != JWNLS_OK) return passed;
  passed.write_code = write(targets.base().get(), time, out, ColumnValues::room, &passed.length);
  return passed;
}

using Pass = Passed (*)(const Layout&, const TargetLayouts&, std::string_view, char*);

class ConvertValues final : public LayoutValues {
 public:
  ConvertValues(const Layout& source, const Layout& target, Pass pass, MissingWords missing,
                std::uint8_t facts)
      : source_(source),
        targets_(target),
        pass_(pass),
        missing_(std::move(missing)),
        facts_(facts),
        reading_(read_values(source, MissingWords(), 0)) {}

  FieldValue convert(std::string_view text, char* out) const noexcept override {
    FieldValue value;
    if (missing_.contains(text)) {
      value.outcome = FieldOutcome::missing;
      return value;
    }
    const Passed passed = pass_(source_, targets_, text, out);
    if (passed.read_code == JWNLS_MISSING) value.outcome = FieldOutcome::missing;
    if (passed.read_code != JWNLS_OK || passed.write_code != JWNLS_OK) return value;
    value.outcome = FieldOutcome::read;
    value.facts = passed.facts & facts_;
    value.length = passed.length;
    for (std::size_t i = 0; i < sizeof value.currency; ++i) value.currency[i] = passed.currency[i];
    return value;
  }
  [[nodiscard]] std::string reason(std::string_view text) const override {
    return is_unread(text) ? refusal_reason(source_, text) : unwritten();
  }
  [[nodiscard]] std::string message(std::string_view text) const override {
    if (is_unread(text)) return refusal_message(source_, text);
    return std::string(kind_name()) + " '" + std::string(text) + "': " + unwritten();
  }
  [[nodiscard]] std::string_view value_of(std::string_view text, std::string_view,
                                          char* out) const noexcept override {
    return {out, reading_->convert(text, out).length};
  }
  [[nodiscard]] std::optional<bool> month_first() const override { return reading_->month_first(); }
  [[nodiscard]] std::string meanings(std::string_view text) const override {
    return tool::meanings(source_, text);
  }
  [[nodiscard]] std::string_view kind_name() const override {
    return jwnls_kind_name(static_cast<int>(source_.kind()));
  }
  [[nodiscard]] bool is_json_number() const override { return false; }
  [[nodiscard]] std::string description() const override {
    return source_.describe() + " -> " + targets_.base().describe();
  }

 private:
  [[nodiscard]] bool is_unread(std::string_view text) const {
    char out[room];
    return pass_(source_, targets_, text, out).read_code != JWNLS_OK;
  }
  [[nodiscard]] std::string unwritten() const {
    return targets_.base().locale() + " cannot write what it is";
  }

  Layout source_;
  TargetLayouts targets_;
  Pass pass_;
  MissingWords missing_;
  std::uint8_t facts_;
  LayoutValuesPointer reading_;  // for what a value is beside its text
};

Pass pass_of(Kind kind) {
  switch (kind) {
    case Kind::date:
    case Kind::period:
      return pass_date;
    case Kind::time:
      return pass_time<jwnls_read_time, jwnls_write_time>;
    case Kind::datetime:
    case Kind::instant:
      return pass_time<jwnls_read_datetime, jwnls_write_datetime>;
    default:
      return pass_decimal;
  }
}

}  // namespace

LayoutValuesPointer convert_values(const Layout& source, const Layout& target, MissingWords missing,
                                   std::uint8_t facts) {
  return std::make_shared<ConvertValues>(source, target, pass_of(source.kind()), std::move(missing),
                                         facts);
}

}  // namespace jwnls::tool
