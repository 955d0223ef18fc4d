#include "library/explain.h"

#include "library/layouts/layout.h"
#include "library/moments/reading.h"
#include "library/texts/utf8_input.h"

namespace jwnls::library {
namespace {

int explain(const jwnls_layout* layout, std::string_view text, jwnls_error* error) {
  switch (layout->kind) {
    case JWNLS_NUMBER:
    case JWNLS_INTEGER:
    case JWNLS_AMOUNT:
    case JWNLS_PERCENT:
      return explain_number(layout, text, error);
    default:
      return explain_date(*layout, text, error);
  }
}

}  // namespace
}  // namespace jwnls::library

extern "C" {

int jwnls_explain(const jwnls_layout* layout, const char* text, size_t length, jwnls_error* error) {
  return jwnls::library::explain(layout, {text, length}, error);
}

int jwnls_explain_utf16(const jwnls_layout* layout, const char16_t* text, size_t length,
                        jwnls_error* error) {
  const jwnls::library::Utf8Input bytes(text, length);
  const std::string_view utf8(bytes.data(), bytes.size());
  const int code = jwnls::library::explain(layout, utf8, error);
  if (error != nullptr && error->at != 0) error->at = jwnls::library::units_of(utf8, error->at);
  return code;
}

}  // extern "C"
