#include "tool/tables/two_ways.h"

#include "tool/detection.h"
#include "tool/reports/counted.h"
#include "tool/tables/layout_values.h"

namespace jwnls::tool {
namespace {

// As programs write it; empty where the text is not read.
std::string value_in(const Layout& layout, std::string_view text) {
  std::string out(ColumnValues::room, '\0');
  out.resize(read_values(layout, MissingWords())->convert(text, out.data()).length);
  return out;
}

// "2024-02-01 with order=dmy; order= decides"
std::string in_another_order(const Layout& layout, std::string_view text, std::string_view value) {
  const Kind kind = layout.kind();
  if (kind != Kind::date && kind != Kind::datetime && kind != Kind::instant) return {};
  for (const char* order : {"order=dmy", "order=mdy", "order=ymd"}) {
    const auto other = Layout::open_described(layout.describe() + " " + order);
    if (!other) continue;
    const std::string meant = value_in(*other, text);
    if (!meant.empty() && meant != value) return meant + " with " + order + "; order= decides";
  }
  return {};
}

// "2024-10-15 in hr"
std::string in_another_locale(const Layout& layout, std::string_view text, std::string_view value) {
  if (layout.kind() == Kind::instant || layout.kind() == Kind::period) return {};
  // What is an integer here has decimals elsewhere.
  const int kind = static_cast<int>(layout.kind() == Kind::integer ? Kind::number : layout.kind());
  const jwnls_text one = {text.data(), text.size()};
  jwnls_texts texts = {};
  texts.size = sizeof texts;
  texts.count = 1;
  texts.texts = &one;
  const Detection detection(texts, "", jwnls_kind_name(kind));
  for (std::size_t i = 0; i < detection.found(kind).readings; ++i) {
    const std::string meant = detection.reading(kind, i).value;
    if (!meant.empty() && meant != value) {
      return meant + " in " + detection.locales(kind, i).front();
    }
  }
  return {};
}

}  // namespace

std::string meanings(const Layout& layout, std::string_view text) {
  const std::string value = value_in(layout, text);
  std::string other = in_another_order(layout, text, value);
  if (other.empty()) other = in_another_locale(layout, text, value);
  return other.empty() ? other : value + " here, " + other;
}

std::string undecided_values(std::uint64_t count, const std::string& first,
                             const std::string& meanings) {
  return counted(count, "value", "values") +
         " could be meant otherwise and none decides; the first is " + first +
         (meanings.empty() ? "" : ": " + meanings);
}

}  // namespace jwnls::tool
