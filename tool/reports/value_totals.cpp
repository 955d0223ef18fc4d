#include "tool/reports/value_totals.h"

#include <algorithm>

namespace jwnls::tool {
namespace {

// "Z" behind an instant would come after the point of a fraction.
std::string_view without_zone(std::string_view moment) {
  if (moment.ends_with('Z')) moment.remove_suffix(1);
  return moment;
}

}  // namespace

ValueTotals::ValueTotals(std::string_view kind)
    : are_decimals_(kind == "number" || kind == "integer" || kind == "amount" || kind == "percent"),
      are_added_up_(are_decimals_ && kind != "percent") {}

void ValueTotals::Bound::set(const Value& value) {
  const DecimalParts& decimal = value.decimal;
  text_ = value.text;
  is_negative_ = decimal.is_negative;
  whole_size_ = decimal.whole.size();
  whole_at_ =
      whole_size_ > 0 ? static_cast<std::size_t>(decimal.whole.data() - value.text.data()) : 0;
  fraction_size_ = decimal.fraction.size();
}

ValueTotals::Value ValueTotals::Bound::value() const {
  const std::string_view text = text_;
  return {text,
          {true, is_negative_, text.substr(whole_at_, whole_size_),
           text.substr(text.size() - fraction_size_)}};
}

bool ValueTotals::is_less(const Value& left, const Value& right) const {
  if (!are_decimals_) return without_zone(left.text) < without_zone(right.text);
  return compare(left.decimal, right.decimal) < 0;
}

ValueTotals::Group& ValueTotals::group_of(std::string_view currency) {
  for (Group& group : groups_) {
    if (group.currency == currency) return group;
  }
  return groups_.emplace_back(Group{std::string(currency)});
}

void ValueTotals::widen(Group& group, const Value& least, const Value& greatest) const {
  if (group.count == 0 || is_less(least, group.least.value())) group.least.set(least);
  if (group.count == 0 || is_less(group.greatest.value(), greatest)) group.greatest.set(greatest);
}

void ValueTotals::add(std::string_view text, std::string_view currency) {
  Group& group = group_of(currency);
  Value value{text};
  if (are_decimals_) value.decimal = decimal_parts(text);
  widen(group, value, value);
  ++group.count;
  if (!are_added_up_) return;
  if (value.decimal.is_decimal) {
    group.sum.add(value.decimal);
  } else {
    group.has_sum = false;
  }
}

void ValueTotals::add(const ValueTotals& later) {
  for (const Group& each : later.groups_) {
    Group& group = group_of(each.currency);
    widen(group, each.least.value(), each.greatest.value());
    group.count += each.count;
    group.sum += each.sum;
    group.has_sum = group.has_sum && each.has_sum;
  }
}

std::vector<ReportedValues> ValueTotals::reported() const {
  std::vector<ReportedValues> all;
  all.reserve(groups_.size());
  for (const Group& group : groups_) {
    ReportedValues values{
        group.currency, group.count, group.least.text(), group.greatest.text(), {}};
    if (are_added_up_ && group.has_sum) values.sum = group.sum.text();
    all.push_back(std::move(values));
  }
  std::sort(all.begin(), all.end(), [](const ReportedValues& left, const ReportedValues& right) {
    return left.currency < right.currency;
  });
  return all;
}

}  // namespace jwnls::tool
