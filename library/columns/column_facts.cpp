#include <algorithm>
#include <cstring>

#include "library/columns/read_column.h"

namespace jwnls::library {

void FactsCounter::add_to(jwnls_column_facts* facts) const noexcept {
  if (facts == nullptr) return;
  // Of a caller with an older header only the members that it knows.
  jwnls_column_facts sum = {};
  const std::size_t size = std::min(facts->size, sizeof sum);
  std::memcpy(&sum, facts, size);
  const std::size_t before = sum.read + sum.refused + sum.missing;
  const std::size_t after = before + read_ + refused_ + missing_;
  const auto first_of = [&](std::size_t earlier, std::size_t first, std::size_t here,
                            std::size_t first_here) {
    if (earlier != 0) return first;
    return here != 0 ? before + first_here : after;
  };
  sum.first_refused = first_of(sum.refused, sum.first_refused, refused_, first_refused_);
  sum.first_two_ways = first_of(sum.two_ways, sum.first_two_ways, two_ways_, first_two_ways_);
  sum.read += read_;
  sum.refused += refused_;
  sum.missing += missing_;
  sum.two_ways += two_ways_;
  sum.deciding += deciding_;
  std::memcpy(facts, &sum, size);
}

}  // namespace jwnls::library
