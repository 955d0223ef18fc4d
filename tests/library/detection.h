// Detections for tests: of columns of texts, closed by themselves.

#ifndef JWNLS_TESTS_LIBRARY_DETECTION_H_
#define JWNLS_TESTS_LIBRARY_DETECTION_H_

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "include/jwnls/jwnls.h"

namespace jwnls::test {

struct CloseDetection {
  void operator()(jwnls_detection* detection) const { jwnls_detection_close(detection); }
};
using Detection = std::unique_ptr<jwnls_detection, CloseDetection>;
using Column = std::vector<std::string>;

inline Detection detect(const Column& column, const char* kinds = nullptr,
                        const char* locales = nullptr) {
  std::vector<jwnls_text> texts;
  for (const std::string& text : column) texts.push_back({text.data(), text.size()});
  const jwnls_texts all = {sizeof all, texts.size(), texts.data(), nullptr,
                           nullptr,    nullptr,      nullptr};
  jwnls_detection* detection = nullptr;
  jwnls_error error;
  EXPECT_EQ(jwnls_detect(&all, kinds, locales, &detection, &error), JWNLS_OK) << error.text;
  return Detection(detection);
}

inline jwnls_detected_kind found(const Detection& detection, int kind = 0) {
  jwnls_detected_kind found = {};
  found.size = sizeof found;
  found.rival = "";
  if (jwnls_detected_kind_of(detection.get(), kind, &found) != JWNLS_OK) found.verdict = 0;
  return found;
}

inline jwnls_detected_reading reading(const Detection& detection, std::size_t index, int kind = 0) {
  jwnls_detected_reading reading = {};
  reading.size = sizeof reading;
  EXPECT_EQ(jwnls_detected_reading_of(detection.get(), kind, index, &reading), JWNLS_OK);
  return reading;
}

inline bool has_locale(const Detection& detection, std::size_t reading, std::string_view name) {
  for (std::size_t i = 0;; ++i) {
    const char* const locale = jwnls_detected_locale(detection.get(), 0, reading, i);
    if (locale == nullptr) return false;
    if (locale == name) return true;
  }
}

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_LIBRARY_DETECTION_H_
