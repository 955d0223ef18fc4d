#include "tool/reports/date_form.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <utility>

namespace jwnls::tool {
namespace {

enum class Is : std::uint8_t { number, word, other };

// Characters of one kind that stand together.
struct Run {
  Is is;
  std::string_view text;
  std::size_t characters;
};

Is kind_of(utf8proc_int32_t character) {
  switch (utf8proc_category(character)) {
    case UTF8PROC_CATEGORY_ND:
      return Is::number;
    case UTF8PROC_CATEGORY_LU:
    case UTF8PROC_CATEGORY_LL:
    case UTF8PROC_CATEGORY_LT:
    case UTF8PROC_CATEGORY_LM:
    case UTF8PROC_CATEGORY_LO:
    case UTF8PROC_CATEGORY_MN:
    case UTF8PROC_CATEGORY_MC:
      return Is::word;
    default:
      return Is::other;
  }
}

std::vector<Run> runs_of(std::string_view text) {
  std::vector<Run> runs;
  for (std::size_t at = 0; at < text.size();) {
    utf8proc_int32_t character = 0;
    const auto bytes =
        utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data() + at),
                         static_cast<utf8proc_ssize_t>(text.size() - at), &character);
    if (bytes <= 0) return {};
    const auto size = static_cast<std::size_t>(bytes);
    const Is is = kind_of(character);
    if (runs.empty() || runs.back().is != is) runs.push_back({is, text.substr(at, 0), 0});
    Run& run = runs.back();
    run.text = {run.text.data(), run.text.size() + size};
    ++run.characters;
    at += size;
  }
  return runs;
}

// Of digits that are ASCII; -1: of others.
int value_of(std::string_view digits) {
  int value = 0;
  for (const char each : digits.substr(0, 4)) {
    if (each < '0' || each > '9') return -1;
    value = value * 10 + (each - '0');
  }
  return value;
}

class Form {
 public:
  Form(std::string_view text, std::string_view date, bool month_first)
      : runs_(runs_of(text)),
        names_(runs_.size()),
        day_(value_of(date.substr(8, 2))),
        month_(value_of(date.substr(5, 2))),
        month_first_(month_first) {}

  std::string text() {
    std::vector<std::size_t> numbers;
    for (std::size_t i = 0; i < runs_.size(); ++i) {
      if (runs_[i].is == Is::number) numbers.push_back(i);
    }
    if (numbers.size() == 1 && runs_[numbers[0]].characters == 8) {
      names_[numbers[0]] = "yyyymmdd";
    } else if (numbers.size() == 3) {
      name_three(numbers);
      name_words(runs_.size());
    } else if (numbers.size() == 2) {
      name_two(numbers);
      const std::size_t month = month_word(numbers.front());
      if (month == runs_.size()) return {};
      names_[month] = "month";
      name_words(month);
    } else {
      return {};
    }
    std::string all;
    for (std::size_t i = 0; i < runs_.size(); ++i) {
      all.append(names_[i].empty() ? runs_[i].text : names_[i]);
    }
    return all;
  }

 private:
  static constexpr std::size_t shortest_name = 3;  // in characters; particles are shorter

  void name_year(std::size_t run) { names_[run] = runs_[run].characters > 2 ? "yyyy" : "yy"; }

  void name_three(const std::vector<std::size_t>& numbers) {
    if (runs_[numbers[0]].characters > 2) {
      name_year(numbers[0]);
      names_[numbers[1]] = "m";
      names_[numbers[2]] = "d";
      return;
    }
    const int first = value_of(runs_[numbers[0]].text);
    const int second = value_of(runs_[numbers[1]].text);
    const bool is_day_first = first == day_ && second == month_;
    const bool is_month_first = first == month_ && second == day_;
    const bool swapped = is_day_first == is_month_first ? month_first_ : is_month_first;
    names_[numbers[0]] = swapped ? "m" : "d";
    names_[numbers[1]] = swapped ? "d" : "m";
    name_year(numbers[2]);
  }

  void name_two(const std::vector<std::size_t>& numbers) {
    const bool year_first = runs_[numbers[0]].characters > 2;
    name_year(numbers[year_first ? 0 : 1]);
    names_[numbers[year_first ? 1 : 0]] = "d";
  }

  [[nodiscard]] bool is_name(std::size_t run) const {
    return runs_[run].is == Is::word && runs_[run].characters >= shortest_name;
  }

  // Of two names the first is the weekday's where it stands before the first number.
  [[nodiscard]] std::size_t month_word(std::size_t first_number) const {
    std::vector<std::size_t> names;
    for (std::size_t i = 0; i < runs_.size(); ++i) {
      if (is_name(i)) names.push_back(i);
    }
    if (names.empty()) return runs_.size();
    return names.size() > 1 && names.front() < first_number ? names[1] : names.front();
  }

  // Names beside the month's.
  void name_words(std::size_t month) {
    for (std::size_t i = 0; i < runs_.size(); ++i) {
      if (i != month && is_name(i)) names_[i] = "weekday";
    }
  }

  std::vector<Run> runs_;
  std::vector<std::string_view> names_;  // of each run; empty: it stands for itself
  const int day_;
  const int month_;
  const bool month_first_;
};

}  // namespace

std::string date_form(std::string_view text, std::string_view date, bool month_first) {
  constexpr std::size_t date_bytes = 10;
  if (date.size() != date_bytes) return {};
  return Form(text, date, month_first).text();
}

void DateForms::add(std::string_view form, std::uint64_t count) {
  const auto add_to = [&](std::string_view which) {
    for (ReportedForm& known : forms_) {
      if (known.form != which) continue;
      known.count += count;
      return true;
    }
    return false;
  };
  if (add_to(form)) return;
  if (forms_.size() < most_ || form.empty()) {
    forms_.push_back({std::string(form), count});
  } else if (!add_to("")) {
    forms_.push_back({"", count});
  }
}

void DateForms::add(const DateForms& later) {
  for (const ReportedForm& each : later.forms_) add(each.form, each.count);
}

std::vector<ReportedForm> DateForms::reported() const {
  std::vector<ReportedForm> all = forms_;
  std::stable_sort(all.begin(), all.end(), [](const ReportedForm& left, const ReportedForm& right) {
    return std::pair(left.form.empty(), right.count) < std::pair(right.form.empty(), left.count);
  });
  return all;
}

}  // namespace jwnls::tool
