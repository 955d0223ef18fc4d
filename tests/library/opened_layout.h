// A layout that a test opens, and closes when it is done.

#ifndef JWNLS_TESTS_LIBRARY_OPENED_LAYOUT_H_
#define JWNLS_TESTS_LIBRARY_OPENED_LAYOUT_H_

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "include/jwnls/jwnls.h"

namespace jwnls::test {

struct CloseLayout {
  void operator()(jwnls_layout* layout) const { jwnls_close(layout); }
};
using OpenedLayout = std::unique_ptr<jwnls_layout, CloseLayout>;

/// Null, and a failed test, when it cannot be opened.
inline OpenedLayout open_layout(const std::string& locale, int kind,
                                const std::string& options = "") {
  jwnls_layout* layout = nullptr;
  jwnls_error error;
  EXPECT_EQ(jwnls_open(locale.c_str(), kind, options.c_str(), &layout, &error), JWNLS_OK)
      << error.text;
  return OpenedLayout(layout);
}

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_LIBRARY_OPENED_LAYOUT_H_
