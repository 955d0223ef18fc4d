#include "library/detect/outcomes.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <numeric>
#include <optional>
#include <span>

#include "library/dates/day_scale.h"
#include "library/layouts/layout.h"
#include "library/locale_data/date_characters.h"
#include "library/numbers/decimal_value.h"
#include "library/texts/folding.h"
#include "library/texts/longest_text.h"
#include "library/texts/utf8.h"
#include "module/calendar/civil.h"

namespace jwnls::library {
namespace {

// The classes that were left out are tried on so many shapes that no candidate reads.
constexpr std::size_t most_unread_tried = 64;
// They become candidates while there are not more outcomes than these.
constexpr std::size_t cheap_trials = 1U << 16;

struct ReadValue {
  std::uint64_t value;  // or a hash of it
  std::uint8_t facts;
};

std::optional<ReadValue> read_value(const jwnls_layout* layout, std::string_view text) noexcept {
  std::uint8_t facts = 0;
  switch (layout->kind) {
    case JWNLS_DATE: {
      std::int32_t days = 0;
      if (jwnls_read_date(layout, text.data(), text.size(), &days, &facts) != JWNLS_OK) return {};
      return ReadValue{static_cast<std::uint64_t>(days), facts};
    }
    case JWNLS_DATETIME:
    case JWNLS_TIME: {
      std::int64_t microseconds = 0;
      const auto read = layout->kind == JWNLS_TIME ? jwnls_read_time : jwnls_read_datetime;
      if (read(layout, text.data(), text.size(), &microseconds, &facts) != JWNLS_OK) return {};
      return ReadValue{static_cast<std::uint64_t>(microseconds), facts};
    }
    default: {
      char decimal[canonical_room];
      std::size_t size = 0;
      if (jwnls_read_decimal(layout, text.data(), text.size(), decimal, sizeof decimal, &size,
                             nullptr, &facts) != JWNLS_OK) {
        return {};
      }
      return ReadValue{std::hash<std::string_view>()({decimal, size}), facts};
    }
  }
}

// The runs of digits of a text, and what stands between them, as far as they tell what it is not,
// whatever the locale.
class Runs {
 public:
  explicit Runs(std::string_view text) noexcept {
    for (std::size_t at = 0; at < text.size();) {
      if (!is_digit(text[at])) {
        const auto byte = static_cast<unsigned char>(text[at++]);
        gap_ += byte < 0x80 || byte >= 0xC0 ? 1 : 0;
        continue;
      }
      const std::size_t begin = at;
      while (at < text.size() && is_digit(text[at])) ++at;
      add(text, begin, at);
    }
  }

  [[nodiscard]] std::size_t count() const noexcept { return count_; }

  [[nodiscard]] bool may_be(int kind) const noexcept {
    switch (kind) {
      case JWNLS_DATE:
        return count_ > 0 && !has_clock_ && !has_long_;
      case JWNLS_TIME:
        return !has_odd_ && count_ > 1 && digits_[0] <= 2 && digits_[1] <= 2;
      case JWNLS_DATETIME:
        return !has_odd_ && (count_ > 3 || (count_ == 3 && longest_ == 8));
      default:
        return !is_apart_;
    }
  }

 private:
  void add(std::string_view text, std::size_t begin, std::size_t end) noexcept {
    const std::size_t digits = end - begin;
    const char before = begin > 0 ? text[begin - 1] : '\0';
    if (count_ > 0) {
      has_clock_ = has_clock_ || (gap_ == 1 && before == ':');
      // One character, and of an exponent maybe a sign.
      is_apart_ = is_apart_ || gap_ > 2 || (gap_ == 2 && (text[begin - 2] | 0x20) != 'e');
    }
    // Some names begin with digits, "4月", which may stand directly behind others.
    if (end == text.size() || !is_letter(text[end])) {
      const bool is_long = digits > 2 && digits != 4 && digits != 8;
      const bool is_fraction = count_ > 2 && (before == '.' || before == ',');
      has_long_ = has_long_ || is_long;
      has_odd_ = has_odd_ || (is_long && digits != 6 && !is_fraction);
    }
    if (count_ < 2) digits_[count_] = digits;
    longest_ = std::max(longest_, digits);
    gap_ = 0;
    ++count_;
  }

  std::size_t count_ = 0;
  std::size_t digits_[2] = {};  // of the first two
  std::size_t longest_ = 0;
  std::size_t gap_ = 0;     // characters since the last
  bool has_clock_ = false;  // a colon alone stands between two
  bool is_apart_ = false;   // more stands between two than may do so in a number
  bool has_long_ = false;   // one that no date has
  bool has_odd_ = false;    // one that no date and no time has, nor the fraction of a second
};

// Whether a text can be of a kind at all, whatever the locale.
bool may_be(int kind, std::string_view text) noexcept {
  const bool is_date = kind == JWNLS_DATE || kind == JWNLS_TIME || kind == JWNLS_DATETIME;
  const Runs runs(text);
  if (is_ascii(text)) {
    const bool is_percent = kind != JWNLS_PERCENT || text.find('%') != std::string_view::npos;
    return runs.count() > 0 && is_percent && runs.may_be(kind);
  }
  if (!is_date || (runs.count() > 0 && runs.may_be(kind))) {
    return runs.count() == 0 || runs.may_be(kind);
  }
  // Digits of the locale's own, full-width ones, and marks among them that do not count.
  char folded[longest_text];
  const auto size = fold_text(text, folded, sizeof folded);
  return size && Runs({folded, *size}).may_be(kind);
}

// The values that a shape was given so far, numbered from 1.
class ValueNumbers {
 public:
  std::uint8_t number_of(std::uint64_t value) {
    const auto known = std::find(values_.begin(), values_.end(), value);
    if (known == values_.end() && values_.size() < UINT8_MAX - 1) values_.push_back(value);
    return static_cast<std::uint8_t>(std::find(values_.begin(), values_.end(), value) -
                                     values_.begin() + 1);
  }

 private:
  std::vector<std::uint64_t> values_;
};

class Trial {
 public:
  Trial(const LocaleClasses& classes, const Shapes& shapes, int kind)
      : classes_(classes.all),
        shapes_(shapes.all()),
        sample_(shapes.sample()),
        numbers_(shapes_.size()),
        readable_(shapes_.size()) {
    for (const Shape& shape : shapes_) possible_.push_back(may_be(kind, shape.text));
  }

  Outcomes run() {
    rank_by_sample();
    if (ranks_.empty() || 4 * ranks_.front().read < sample_.size()) return {};
    const std::size_t half = (ranks_.front().read + 1) / 2;
    std::size_t kept = 0;
    while (kept < ranks_.size() && ranks_[kept].read >= half) ++kept;
    // One more, so that there is a rival.
    if (kept < ranks_.size()) ++kept;
    for (std::size_t i = 0; i < kept; ++i) add(ranks_[i].index);
    add_readers_of_the_rest(kept);
    return finish(kept == ranks_.size());
  }

 private:
  struct Rank {
    std::size_t index;  // of a class
    std::size_t read;   // of the sample
  };

  std::optional<ReadValue> read(std::size_t index, std::size_t shape) const noexcept {
    if (!possible_[shape]) return std::nullopt;
    return read_value(classes_[index].layout.get(), shapes_[shape].text);
  }

  // Most texts are of no kind that is asked for, and most classes read none of a column: some texts
  // tell. Classes that read none of these are asked about the others where much is dirty, and about
  // as many again where there is no other rival.
  void rank_by_sample() {
    const std::size_t first_try = std::min<std::size_t>(16, sample_.size());
    for (std::size_t i = 0; i < classes_.size(); ++i) ranks_.push_back({i, 0});
    const auto count = [this](std::span<Rank> ranks, std::size_t from, std::size_t to) {
      // An odd step meets every place once where the sample is full.
      const std::size_t step = sample_.size() == 64 ? 5 : 1;
      std::size_t most = 0;
      for (Rank& rank : ranks) {
        for (std::size_t i = from; i < to; ++i) {
          const std::size_t shape = sample_[i * step % sample_.size()];
          rank.read += read(rank.index, shape).has_value() ? 1 : 0;
        }
        most = std::max(most, rank.read);
      }
      return most;
    };
    if (count(ranks_, 0, first_try) == 0) {
      ranks_.clear();
      return;
    }
    const auto middle = std::partition(ranks_.begin(), ranks_.end(),
                                       [](const Rank& rank) { return rank.read > 0; });
    const std::span<Rank> readers(ranks_.begin(), middle);
    const std::span<Rank> others(middle, ranks_.end());
    const std::size_t most = count(readers, first_try, sample_.size());
    const bool has_rival = std::any_of(readers.begin(), readers.end(),
                                       [most](const Rank& rank) { return 2 * rank.read < most; });
    const bool much_is_dirty = 4 * most < 3 * sample_.size();
    if (!has_rival || much_is_dirty) {
      const std::size_t last_try = much_is_dirty ? sample_.size() : 2 * first_try;
      count(others, first_try, std::min(last_try, sample_.size()));
    }
    std::sort(ranks_.begin(), ranks_.end(), [](const Rank& a, const Rank& b) {
      return a.read != b.read ? a.read > b.read : a.index < b.index;
    });
  }

  void add(std::size_t index) {
    Candidate candidate;
    candidate.locales = &classes_[index];
    candidate.outcomes.resize(shapes_.size());
    for (std::size_t shape = 0; shape < shapes_.size(); ++shape) {
      const auto value = read(index, shape);
      if (!value) continue;
      candidate.outcomes[shape] = {numbers_[shape].number_of(value->value), value->facts};
      candidate.read += shapes_[shape].count;
      readable_[shape] = true;
    }
    candidates_.push_back(std::move(candidate));
  }

  // Texts that no candidate reads may be another convention's.
  void add_readers_of_the_rest(std::size_t kept) {
    std::vector<std::size_t> unread;
    for (std::size_t i = 0; i < shapes_.size() && unread.size() < most_unread_tried; ++i) {
      if (!readable_[i] && possible_[i]) unread.push_back(i);
    }
    for (std::size_t i = kept; i < ranks_.size(); ++i) {
      const bool reads = std::any_of(unread.begin(), unread.end(), [&](std::size_t shape) {
        return read(ranks_[i].index, shape).has_value();
      });
      const std::size_t work = candidates_.size() * shapes_.size();
      if (reads && work < cheap_trials) add(ranks_[i].index);
    }
  }

  Outcomes finish(bool all_tried) {
    std::sort(candidates_.begin(), candidates_.end(), [](const Candidate& a, const Candidate& b) {
      return a.locales->locales.front() < b.locales->locales.front();
    });
    Outcomes outcomes;
    outcomes.all_complete = all_tried;
    for (Candidate& candidate : candidates_) {
      candidate.complete = true;
      for (std::size_t shape = 0; shape < shapes_.size() && candidate.complete; ++shape) {
        candidate.complete = candidate.reads(shape) || !readable_[shape];
      }
      outcomes.all_complete = outcomes.all_complete && candidate.complete;
    }
    outcomes.candidates = std::move(candidates_);
    outcomes.readable = std::move(readable_);
    return outcomes;
  }

  const std::vector<LocaleClass>& classes_;
  const std::vector<Shape>& shapes_;
  const std::vector<std::size_t>& sample_;
  std::vector<ValueNumbers> numbers_;
  std::vector<bool> readable_;
  std::vector<bool> possible_;  // may_be()
  std::vector<Rank> ranks_;
  std::vector<Candidate> candidates_;
};

std::string time_text(std::int64_t microseconds) {
  const std::int64_t seconds = microseconds / 1'000'000;
  char text[32];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d", static_cast<int>(seconds / 3600),
                static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60));
  std::string all = text;
  if (const std::int64_t fraction = microseconds % 1'000'000; fraction != 0) {
    std::snprintf(text, sizeof text, ".%06d", static_cast<int>(fraction));
    all += text;
  }
  return all;
}

std::string date_text(std::int64_t days_since_1970) {
  const auto day = calendar_day(days_since_1970);
  if (!day) return {};
  const CivilDate date = civil_from_day(*day);
  char text[40];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d", static_cast<int>(date.year),
                static_cast<int>(date.month), static_cast<int>(date.day));
  return text;
}

}  // namespace

Outcomes try_classes(const LocaleClasses& classes, const Shapes& shapes, int kind) {
  return Trial(classes, shapes, kind).run();
}

bool may_be(int kind, const Shapes& shapes) {
  return std::any_of(shapes.sample().begin(), shapes.sample().end(),
                     [&](std::size_t shape) { return may_be(kind, shapes.all()[shape].text); });
}

std::string value_text(const jwnls_layout* layout, std::string_view text) {
  const auto read = read_value(layout, text);
  if (!read) return {};
  const auto value = static_cast<std::int64_t>(read->value);
  constexpr std::int64_t day = 86'400'000'000;
  switch (layout->kind) {
    case JWNLS_DATE:
      return date_text(static_cast<std::int32_t>(value));
    // Asked for where locales differ, and no word is one half of the day here, the other half
    // there.
    case JWNLS_TIME:            // unreachable: therefore
      return time_text(value);  // unreachable: therefore
    case JWNLS_DATETIME: {
      const std::int64_t time = (value % day + day) % day;
      return date_text((value - time) / day) + "T" + time_text(time);
    }
    default: {
      char decimal[canonical_room];
      std::size_t size = 0;
      jwnls_read_decimal(layout, text.data(), text.size(), decimal, sizeof decimal, &size, nullptr,
                         nullptr);
      return {decimal, size};
    }
  }
}

}  // namespace jwnls::library
