#include "tool/tables/column_locales.h"

#include <algorithm>
#include <optional>

#include "tool/exit_code.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

// A text's value in a locale; none: it is not read there.
using Value = std::optional<std::string>;

class Decision {
 public:
  Decision(const std::string& name, const std::string& remedy,
           const std::vector<LocaleChoice>& choices, const ColumnSample& sample)
      : name_(name), remedy_(remedy), choices_(choices), sample_(sample) {}

  std::size_t decide() {
    read_all();
    const std::size_t most = *std::max_element(reads_.begin(), reads_.end());
    if (most * 2 < there_) refuse_all();
    std::vector<std::size_t> complete;
    for (std::size_t i = 0; i < choices_.size(); ++i) {
      if (reads_[i] == readable_) complete.push_back(i);
    }
    if (complete.empty()) refuse_contradiction(most);
    if (witness_) refuse_ambiguous(complete);
    return complete.front();
  }

 private:
  void read_all() {
    reads_.assign(choices_.size(), 0);
    // Two passes: only when it is known who reads everything, their values are compared.
    for (std::size_t text = 0; text < sample_.texts.size(); ++text) count(text);
    for (std::size_t text = 0; text < sample_.texts.size() && !witness_; ++text) {
      if (differ(text)) witness_ = text;
    }
  }

  void count(std::size_t text) {
    bool is_there = false;
    bool is_read = false;
    for (std::size_t i = 0; i < choices_.size(); ++i) {
      const FieldOutcome outcome = convert(i, text).outcome;
      is_there = is_there || outcome != FieldOutcome::missing;
      if (outcome != FieldOutcome::read) continue;
      ++reads_[i];
      is_read = true;
    }
    there_ += is_there ? 1 : 0;
    readable_ += is_read ? 1 : 0;
    if (is_there && !is_read && !first_unread_) first_unread_ = text;
  }

  bool differ(std::size_t text) {
    Value first;
    for (std::size_t i = 0; i < choices_.size(); ++i) {
      if (reads_[i] != readable_) continue;
      const Value value = value_of(i, text);
      if (!value) continue;
      if (!first) first = value;
      if (*first != *value) return true;
    }
    return false;
  }

  FieldValue convert(std::size_t choice, std::size_t text) {
    return choices_[choice].values->convert(sample_.texts[text], room_);
  }

  Value value_of(std::size_t choice, std::size_t text) {
    const FieldValue value = convert(choice, text);
    if (value.outcome != FieldOutcome::read) return std::nullopt;
    return std::string(room_, value.length);
  }

  // "'04/10/2024' (line 2)"
  [[nodiscard]] std::string place(std::size_t text) const {
    return in_quotes(sample_.texts[text]) + " (line " + std::to_string(sample_.lines[text]) + ")";
  }

  // "2024-10-04 in en_GB, 2024-04-10 in en_US"
  std::string values_in(const std::vector<std::size_t>& choices, std::size_t text) {
    std::string list;
    for (const std::size_t i : choices) {
      const Value value = value_of(i, text);
      if (value) list += (list.empty() ? "" : ", ") + *value + " in " + choices_[i].locale;
    }
    return list;
  }

  [[nodiscard]] std::string advice(std::size_t choice) const {
    return "; say " + remedy_ + choices_[choice].locale + "' or the like";
  }

  [[noreturn]] void refuse(const std::string& problem) const {
    throw Failure{ExitCode::undecided, "column " + in_quotes(name_) + " " + problem};
  }

  [[noreturn]] void refuse_ambiguous(const std::vector<std::size_t>& complete) {
    refuse("is ambiguous: " + place(*witness_) + " is " + values_in(complete, *witness_) +
           advice(complete.front()));
  }

  [[noreturn]] void refuse_contradiction(std::size_t most) {
    const auto best =
        static_cast<std::size_t>(std::find(reads_.begin(), reads_.end(), most) - reads_.begin());
    std::size_t other = 0;
    while (value_of(best, other) || values_in(all(), other).empty()) ++other;
    refuse("contradicts itself: " + choices_[best].locale + " reads " + std::to_string(most) +
           " of " + std::to_string(readable_) + " values, but not " + place(other) + ", which is " +
           values_in(all(), other) + advice(best));
  }

  [[noreturn]] void refuse_all() const {
    std::string list;
    for (const LocaleChoice& choice : choices_) list += (list.empty() ? "" : ", ") + choice.locale;
    refuse("fits none of " + list + ": " + std::to_string(there_ - readable_) + " of " +
           std::to_string(there_) + " values are not read" +
           (first_unread_ ? "; the first is " + place(*first_unread_) : std::string()));
  }

  [[nodiscard]] std::vector<std::size_t> all() const {
    std::vector<std::size_t> indices(choices_.size());
    for (std::size_t i = 0; i < indices.size(); ++i) indices[i] = i;
    return indices;
  }

  const std::string& name_;
  const std::string& remedy_;
  const std::vector<LocaleChoice>& choices_;
  const ColumnSample& sample_;
  char room_[ColumnValues::room];
  std::vector<std::size_t> reads_;  // how many texts each locale reads
  std::size_t readable_ = 0;        // texts that any of them reads
  std::size_t there_ = 0;           // texts that are not missing
  std::optional<std::size_t> first_unread_;
  std::optional<std::size_t> witness_;  // to which complete locales give different values
};

}  // namespace

std::size_t decide_locale(const std::string& name, const std::string& remedy,
                          const std::vector<LocaleChoice>& choices, const ColumnSample& sample) {
  return Decision(name, remedy, choices, sample).decide();
}

}  // namespace jwnls::tool
