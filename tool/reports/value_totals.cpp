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

bool ValueTotals::is_less(std::string_view left, std::string_view right) const {
  if (!are_decimals_) return without_zone(left) < without_zone(right);
  return compare(decimal_parts(left), decimal_parts(right)) < 0;
}

ValueTotals::Group& ValueTotals::group_of(std::string_view currency) {
  for (Group& group : groups_) {
    if (group.currency == currency) return group;
  }
  return groups_.emplace_back(Group{std::string(currency)});
}

void ValueTotals::widen(Group& group, std::string_view least, std::string_view greatest) const {
  if (group.count == 0 || is_less(least, group.least)) group.least = least;
  if (group.count == 0 || is_less(group.greatest, greatest)) group.greatest = greatest;
}

void ValueTotals::add(std::string_view value, std::string_view currency) {
  Group& group = group_of(currency);
  widen(group, value, value);
  ++group.count;
  if (!are_added_up_) return;
  const DecimalParts decimal = decimal_parts(value);
  if (decimal.is_decimal) {
    group.sum.add(decimal);
  } else {
    group.has_sum = false;
  }
}

void ValueTotals::add(const ValueTotals& later) {
  for (const Group& each : later.groups_) {
    Group& group = group_of(each.currency);
    widen(group, each.least, each.greatest);
    group.count += each.count;
    group.sum += each.sum;
    group.has_sum = group.has_sum && each.has_sum;
  }
}

std::vector<ReportedValues> ValueTotals::reported() const {
  std::vector<ReportedValues> all;
  all.reserve(groups_.size());
  for (const Group& group : groups_) {
    ReportedValues values{group.currency, group.count, group.least, group.greatest, {}};
    if (are_added_up_ && group.has_sum) values.sum = group.sum.text();
    all.push_back(std::move(values));
  }
  std::sort(all.begin(), all.end(), [](const ReportedValues& left, const ReportedValues& right) {
    return left.currency < right.currency;
  });
  return all;
}

}  // namespace jwnls::tool
