#include "tool/tables/target_layouts.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace jwnls::tool {
namespace {

constexpr int own_decimals = -1;  // as many as the currency has

// How many a decimal text has, its exponent written out.
int decimals_of(std::string_view decimal) {
  const std::size_t exponent_at = std::min(decimal.find_first_of("eE"), decimal.size());
  const std::size_t point = decimal.find('.');
  int decimals = point < exponent_at ? static_cast<int>(exponent_at - point - 1) : 0;
  if (exponent_at < decimal.size()) {
    std::string_view digits = decimal.substr(exponent_at + 1);
    if (digits.starts_with('+')) digits.remove_prefix(1);
    int exponent = 0;
    (void)std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    decimals -= std::clamp(exponent, -2000, 2000);
  }
  return std::max(decimals, 0);
}

// The decimals with which an amount layout writes by itself.
int currency_decimals(const Layout& layout) {
  char text[8] = {};
  std::size_t length = 0;
  const int code =
      jwnls_convention(layout.get(), JWNLS_CURRENCY_DECIMALS, 0, text, sizeof text - 1, &length);
  int decimals = 2;
  if (code == JWNLS_OK) (void)std::from_chars(text, text + length, decimals);
  return decimals;
}

}  // namespace

struct TargetLayouts::Entry {
  std::string currency;
  int decimals;  // that were asked for, or own_decimals
  Layout layout;
  int shown;  // decimals that it writes
  const Entry* next;
};

TargetLayouts::TargetLayouts(const Layout& base)
    : base_(base),
      is_amount_(base.kind() == Kind::amount),
      rounds_((base.describe() + " ").find(" decimals=") != std::string::npos) {
  if (is_amount_) add({}, own_decimals);
}

TargetLayouts::~TargetLayouts() {
  for (const Entry* entry = first_; entry != nullptr;) {
    const std::unique_ptr<const Entry> owned(entry);
    entry = owned->next;
  }
}

const jwnls_layout* TargetLayouts::of(std::string_view decimal,
                                      std::string_view currency) const noexcept {
  if (!is_amount_) return base_.get();
  if (currency == base_.currency()) currency = {};
  const Entry* entry = find(currency, own_decimals);
  if (entry == nullptr) entry = add(currency, own_decimals);
  if (entry == nullptr) return nullptr;
  const int decimals = decimals_of(decimal);
  if (rounds_ || decimals <= entry->shown) return entry->layout.get();
  const Entry* wider = find(currency, decimals);
  if (wider == nullptr) wider = add(currency, decimals);
  return wider == nullptr ? nullptr : wider->layout.get();
}

const TargetLayouts::Entry* TargetLayouts::find(std::string_view currency,
                                                int decimals) const noexcept {
  const Entry* entry = first_.load(std::memory_order_acquire);
  while (entry != nullptr && (entry->decimals != decimals || entry->currency != currency)) {
    entry = entry->next;
  }
  return entry;
}

const TargetLayouts::Entry* TargetLayouts::add(std::string_view currency, int decimals) const {
  const std::lock_guard guard(adding_);
  if (const Entry* known = find(currency, decimals)) return known;
  std::string description = base_.describe();
  if (!currency.empty()) description.append(" currency=").append(currency);
  if (decimals != own_decimals) description += " decimals=" + std::to_string(decimals);
  const auto layout = Layout::open_described(description);
  if (!layout) return nullptr;
  const int shown = decimals != own_decimals ? decimals : currency_decimals(*layout);
  const Entry* const entry =
      new Entry{std::string(currency), decimals, *layout, shown, first_.load()};
  first_.store(entry, std::memory_order_release);
  return entry;
}

}  // namespace jwnls::tool
