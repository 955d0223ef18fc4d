// From what each class of locales reads to an answer.

#include <algorithm>

#include "library/detect/detection.h"

namespace jwnls::library {
namespace {

// Candidates that give the same values.
using Group = std::vector<const Candidate*>;

class Judge {
 public:
  Judge(const Shapes& shapes, const Outcomes& outcomes, std::size_t count,
        const std::vector<std::string>& locales, DetectedKind& answer)
      : shapes_(shapes.all()),
        outcomes_(outcomes),
        count_(count),
        locales_(locales),
        answer_(answer),
        found_(answer.found) {
    found_.values = shapes.values();
  }

  void judge() {
    found_.verdict = JWNLS_NONE;
    found_.first_dirty = found_.first_other = found_.witness = found_.deciding = count_;
    for (std::size_t i = 0; i < shapes_.size(); ++i) {
      if (outcomes_.candidates.empty() || !outcomes_.readable[i]) {
        add(i, found_.dirty, found_.first_dirty);
      }
    }
    if (outcomes_.candidates.empty()) return;
    const Candidate& most =
        *std::max_element(outcomes_.candidates.begin(), outcomes_.candidates.end(),
                          [](const Candidate& a, const Candidate& b) { return a.read < b.read; });
    found_.read = most.read;
    if (2 * most.read < found_.values || most.read == 0) return;
    const std::vector<Group> groups = complete_groups();
    if (groups.empty()) {
      contradict(most);
    } else if (groups.size() == 1) {
      found_.verdict = outcomes_.all_complete ? JWNLS_ANY_LOCALE : JWNLS_PROVED;
      add_reading(groups[0], count_);
      name_rival();
    } else {
      found_.verdict = JWNLS_AMBIGUOUS;
      const std::size_t shape = first_difference(groups);
      found_.witness = shapes_[shape].first;
      for (const Group& group : groups) add_reading(group, shape);
    }
    found_.readings = answer_.readings.size();
  }

 private:
  void add(std::size_t shape, std::size_t& texts, std::size_t& first) const noexcept {
    texts += shapes_[shape].count;
    first = std::min(first, shapes_[shape].first);
  }

  std::vector<Group> complete_groups() const {
    std::vector<Group> groups;
    for (const Candidate& each : outcomes_.candidates) {
      if (!each.complete) continue;
      const auto same = std::find_if(groups.begin(), groups.end(), [&each](const Group& group) {
        return group.front()->outcomes == each.outcomes;
      });
      if (same != groups.end()) {
        same->push_back(&each);
      } else {
        groups.push_back({&each});
      }
    }
    return groups;
  }

  // Of groups that differ somewhere.
  std::size_t first_difference(const std::vector<Group>& groups) const noexcept {
    std::size_t first = 0;
    std::size_t first_text = count_;
    for (std::size_t i = 0; i < shapes_.size(); ++i) {
      const bool differ = std::any_of(groups.begin(), groups.end(), [&](const Group& group) {
        return !(group.front()->outcomes[i] == groups.front().front()->outcomes[i]);
      });
      if (differ && shapes_[i].first < first_text) {
        first = i;
        first_text = shapes_[i].first;
      }
    }
    return first;
  }

  //   shape  whose value is told; beyond the last: none
  void add_reading(const Group& group, std::size_t shape) {
    DetectedReading reading;
    for (const Candidate* each : group) {
      const auto& locales = each->locales->locales;
      reading.locales.insert(reading.locales.end(), locales.begin(), locales.end());
    }
    std::sort(reading.locales.begin(), reading.locales.end());
    const Candidate& first = *group.front();
    reading.read = first.read;
    for (std::size_t i = 0; i < shapes_.size(); ++i) {
      if ((first.outcomes[i].facts & JWNLS_TWO_WAYS) != 0) reading.two_ways += shapes_[i].count;
    }
    if (shape < shapes_.size()) {
      reading.value = value_text(first.locales->layout.get(), shapes_[shape].text);
    }
    answer_.readings.push_back(std::move(reading));
  }

  // Of the candidates that do not read everything the one that reads most; of equals the one that
  // fails last.
  void name_rival() {
    const Candidate* rival = nullptr;
    for (const Candidate& each : outcomes_.candidates) {
      if (each.complete) continue;
      const std::size_t deciding = first_unread(each);
      if (rival == nullptr || each.read > rival->read ||
          (each.read == rival->read && deciding > found_.deciding)) {
        rival = &each;
        found_.deciding = deciding;
      }
    }
    if (rival == nullptr) return;
    found_.rival_read = rival->read;
    answer_.rival = locales_[rival->locales->locales.front()];
  }

  // The first text that others read.
  std::size_t first_unread(const Candidate& candidate) const noexcept {
    std::size_t first = count_;
    for (std::size_t i = 0; i < shapes_.size(); ++i) {
      if (outcomes_.readable[i] && !candidate.reads(i)) first = std::min(first, shapes_[i].first);
    }
    return first;
  }

  Group same_as(const Candidate& one) const {
    Group group;
    for (const Candidate& each : outcomes_.candidates) {
      if (each.outcomes == one.outcomes) group.push_back(&each);
    }
    return group;
  }

  void contradict(const Candidate& most) {
    found_.verdict = JWNLS_CONTRADICTION;
    std::size_t other_shape = 0;
    for (std::size_t i = 0; i < shapes_.size(); ++i) {
      if (!outcomes_.readable[i] || most.reads(i)) continue;
      if (shapes_[i].first < found_.first_other) other_shape = i;
      add(i, found_.others, found_.first_other);
    }
    const Candidate* other = nullptr;
    for (const Candidate& each : outcomes_.candidates) {
      if (each.reads(other_shape) && (other == nullptr || each.read > other->read)) other = &each;
    }
    add_reading(same_as(most), other_shape);
    add_reading(same_as(*other), other_shape);
  }

  const std::vector<Shape>& shapes_;
  const Outcomes& outcomes_;
  const std::size_t count_;
  const std::vector<std::string>& locales_;
  DetectedKind& answer_;
  jwnls_detected_kind& found_;
};

}  // namespace

DetectedKind judge(const Shapes& shapes, const Outcomes& outcomes, int kind, std::size_t count,
                   const std::vector<std::string>& locales) {
  DetectedKind answer;
  answer.kind = kind;
  Judge(shapes, outcomes, count, locales, answer).judge();
  return answer;
}

}  // namespace jwnls::library
