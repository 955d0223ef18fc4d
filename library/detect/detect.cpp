// jwnls_detect(): the kinds one by one, and the answer's accessors.

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "include/jwnls/jwnls.h"
#include "library/detect/detection.h"
#include "library/detect/locale_classes.h"
#include "library/detect/outcomes.h"
#include "library/detect/shapes.h"
#include "library/texts/failure.h"

namespace jwnls::library {
namespace {

// In the order in which equals are ranked. What is tried where no locale reads a column as it
// writes itself: only locales that the caller names are asked for these.
struct KindRow {
  int kind;
  Family family;
  const char* other_options;
};
constexpr KindRow kind_rows[] = {
    {JWNLS_INTEGER, Family::numbers, "signs=any"},
    {JWNLS_NUMBER, Family::numbers, "signs=any"},
    {JWNLS_AMOUNT, Family::numbers, "currency=any"},
    {JWNLS_PERCENT, Family::numbers, nullptr},
    {JWNLS_DATE, Family::dates, "names=english"},
    {JWNLS_DATETIME, Family::dates, "names=english"},
    {JWNLS_TIME, Family::dates, nullptr},
};

std::vector<std::string> words_of_list(const char* list) {
  std::vector<std::string> words;
  std::string_view rest = list != nullptr ? list : "";
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find_first_of(" ,\t"), rest.size());
    if (end > 0) words.emplace_back(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return words;
}

// The kinds that are asked for, as bits.
std::uint32_t kinds_of(const char* list) {
  std::uint32_t kinds = 0;
  for (const std::string& word : words_of_list(list)) {
    const int kind = jwnls_kind_of_name(word.c_str());
    const bool known = std::any_of(std::begin(kind_rows), std::end(kind_rows),
                                   [kind](const KindRow& row) { return row.kind == kind; });
    if (!known) {
      fail(JWNLS_UNKNOWN, [&](Message& message) {
        (message << "kind ").quoted(word) << ": nothing that is detected";
      });
    }
    kinds |= 1U << kind;
  }
  return kinds != 0 ? kinds : ~0U;
}

// The locales that are asked, in the caller's order. `all` is set where no other is left out.
std::vector<std::string> locales_of(const char* list, bool& all) {
  std::vector<std::string> names;
  const auto add = [&names](const std::string& name) {
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
  };
  const std::vector<std::string> words = words_of_list(list);
  all = words.empty();
  for (const std::string& word : words) {
    if (word == "*") {
      all = true;
      continue;
    }
    char canonical[64];
    int exact = 0;
    if (jwnls_match_locale(word.c_str(), canonical, &exact) != JWNLS_OK) {
      fail(JWNLS_UNKNOWN,
           [&](Message& message) { (message << "locale ").quoted(word) << ": unknown"; });
    }
    add(canonical);
  }
  return names;
}

class Detector {
 public:
  Detector(const jwnls_texts& texts, const char* locales, jwnls_detection& detection)
      : texts_(texts), detection_(detection) {
    named_ = locales_of(locales, all_);
  }

  void detect(const KindRow& row) {
    // Those of the other readers tell as well that no text can be of a kind.
    const Shapes& known = shapes_[0] ? *shapes_[0] : shapes_of(row.family);
    if (!may_be(row.kind, known)) {
      answer(row, "", known, {}, {});
      return;
    }
    const Shapes& shapes = shapes_of(row.family);
    const Detail detail = shapes.has_words() ? Detail::words : Detail::plain;
    if (all_) {
      const LocaleClasses& classes = classes_of_every_locale(row.kind, detail);
      answer(row, "", shapes, classes, every_locale());
      return;
    }
    const LocaleClasses classes = make_classes(named_, row.kind, "", detail);
    answer(row, "", shapes, classes, named_);
    if (row.other_options == nullptr || detection_.kinds.back().found.verdict != JWNLS_NONE) return;
    const LocaleClasses others = make_classes(named_, row.kind, row.other_options, detail);
    DetectedKind before = std::move(detection_.kinds.back());
    detection_.kinds.pop_back();
    answer(row, row.other_options, shapes, others, named_);
    if (detection_.kinds.back().found.verdict == JWNLS_NONE) detection_.kinds.back() = before;
  }

  void finish() {
    if (all_) {
      detection_.locales = every_locale();
      for (DetectedKind& kind : detection_.kinds) {
        for (DetectedReading& reading : kind.readings) put_named_first(reading.locales);
        std::stable_sort(kind.readings.begin(), kind.readings.end(),
                         [&](const DetectedReading& a, const DetectedReading& b) {
                           return kind.found.verdict == JWNLS_AMBIGUOUS &&
                                  rank_of(a.locales.front()) < rank_of(b.locales.front());
                         });
      }
    } else {
      detection_.locales = std::move(named_);
    }
    choose_kind();
  }

 private:
  const Shapes& shapes_of(Family family) {
    std::optional<Shapes>& shapes = shapes_[static_cast<int>(family)];
    if (!shapes) {
      shapes.emplace(texts_, family, [this]() -> const WeekdayWords& { return weekdays(); });
    }
    return *shapes;
  }

  const WeekdayWords& weekdays() {
    if (weekdays_ == nullptr && all_) weekdays_ = &weekday_words_of_every_locale();
    if (weekdays_ == nullptr) {
      own_weekdays_ = weekday_words(make_classes(named_, JWNLS_DATE, "", Detail::words));
      weekdays_ = &own_weekdays_;
    }
    return *weekdays_;
  }

  void answer(const KindRow& row, const char* options, const Shapes& shapes,
              const LocaleClasses& classes, const std::vector<std::string>& locales) {
    const Outcomes outcomes = try_classes(classes, shapes, row.kind);
    detection_.kinds.push_back(judge(shapes, outcomes, row.kind, texts_.count, locales));
    detection_.kinds.back().options = options;
  }

  // Where the caller named a locale; of the others behind all of these.
  [[nodiscard]] std::size_t rank_of(std::uint16_t locale) const {
    const std::string& name = every_locale()[locale];
    return static_cast<std::size_t>(std::find(named_.begin(), named_.end(), name) - named_.begin());
  }
  void put_named_first(std::vector<std::uint16_t>& locales) const {
    if (named_.empty()) return;
    std::stable_sort(locales.begin(), locales.end(),
                     [this](std::uint16_t a, std::uint16_t b) { return rank_of(a) < rank_of(b); });
  }

  // Eight digits are dates where all of them are, of our times.
  [[nodiscard]] bool are_dates_of_eight_digits() {
    const std::vector<Shape>& shapes = shapes_of(Family::dates).all();
    return std::all_of(shapes.begin(), shapes.end(), [](const Shape& shape) {
      const std::string_view century = shape.text.substr(0, 2);
      return shape.text.size() == 8 && (century == "19" || century == "20") &&
             shape.text.find_first_not_of("0123456789") == std::string_view::npos;
    });
  }

  void choose_kind() {
    const DetectedKind* best = nullptr;
    for (const DetectedKind& each : detection_.kinds) {
      if (each.found.verdict == JWNLS_NONE) continue;
      const bool equal = best != nullptr && each.found.read == best->found.read;
      if (best == nullptr || each.found.read > best->found.read ||
          (equal && each.kind == JWNLS_DATE && are_dates_of_eight_digits())) {
        best = &each;
      }
    }
    detection_.best = best != nullptr ? best->kind : 0;
    // Of integers that are other numbers elsewhere, "1.234", one locale's reading proves nothing.
    if (best == nullptr || best->kind != JWNLS_INTEGER) return;
    for (const DetectedKind& each : detection_.kinds) {
      const bool is_other = each.kind == JWNLS_NUMBER && each.found.verdict == JWNLS_AMBIGUOUS;
      if (is_other && each.found.read >= best->found.read) detection_.best = JWNLS_NUMBER;
    }
  }

  const jwnls_texts& texts_;
  jwnls_detection& detection_;
  std::vector<std::string> named_;
  bool all_ = false;
  std::optional<Shapes> shapes_[2];
  WeekdayWords own_weekdays_;
  const WeekdayWords* weekdays_ = nullptr;
};

const DetectedKind* find_kind(const jwnls_detection& detection, int kind) {
  if (kind == 0) kind = detection.best;
  for (const DetectedKind& each : detection.kinds) {
    if (each.kind == kind) return &each;
  }
  return nullptr;
}

// Into a struct of the caller's that begins with its size, which may be an older one.
template <typename Struct>
void give(Struct full, Struct* out) {
  full.size = out->size;
  std::memcpy(out, &full, std::min(out->size, sizeof full));
}

}  // namespace
}  // namespace jwnls::library

using jwnls::library::DetectedKind;
using jwnls::library::DetectedReading;
using jwnls::library::find_kind;

extern "C" {

int jwnls_detect(const jwnls_texts* texts, const char* kinds, const char* locales,
                 jwnls_detection** detection, jwnls_error* error) {
  *detection = nullptr;
  return jwnls::library::guarded(error, [&] {
    const std::uint32_t asked = jwnls::library::kinds_of(kinds);
    auto made = std::make_unique<jwnls_detection>();
    jwnls::library::Detector detector(*texts, locales, *made);
    for (const auto& row : jwnls::library::kind_rows) {
      if ((asked >> row.kind & 1U) != 0) detector.detect(row);
    }
    detector.finish();
    *detection = made.release();
  });
}

void jwnls_detection_close(jwnls_detection* detection) { delete detection; }

int jwnls_detection_kind(const jwnls_detection* detection) { return detection->best; }

int jwnls_detected_kind_of(const jwnls_detection* detection, int kind, jwnls_detected_kind* found) {
  const DetectedKind* const known = find_kind(*detection, kind);
  if (known == nullptr) return JWNLS_KIND;
  jwnls_detected_kind full = known->found;
  full.rival = known->rival.c_str();
  jwnls::library::give(full, found);
  return JWNLS_OK;
}

int jwnls_detected_reading_of(const jwnls_detection* detection, int kind, size_t index,
                              jwnls_detected_reading* found) {
  const DetectedKind* const known = find_kind(*detection, kind);
  if (known == nullptr) return JWNLS_KIND;
  if (index >= known->readings.size()) return JWNLS_UNKNOWN;
  const DetectedReading& reading = known->readings[index];
  jwnls::library::give({sizeof *found, known->kind, known->options, reading.locales.size(),
                        reading.read, reading.two_ways, reading.value.c_str()},
                       found);
  return JWNLS_OK;
}

const char* jwnls_detected_locale(const jwnls_detection* detection, int kind, size_t reading,
                                  size_t index) {
  const DetectedKind* const known = find_kind(*detection, kind);
  if (known == nullptr || reading >= known->readings.size()) return nullptr;
  const auto& locales = known->readings[reading].locales;
  return index < locales.size() ? detection->locales[locales[index]].c_str() : nullptr;
}

}  // extern "C"
