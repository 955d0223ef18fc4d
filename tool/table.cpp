#include "tool/table.h"

#include <algorithm>
#include <numeric>

#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

constexpr std::size_t gap = 2;  // blanks between columns

// Text of a row, of which trailing blanks are not written.
class Line {
 public:
  explicit Line(std::size_t indent) : blanks_(indent) {}

  void cell(const std::string& text, std::size_t width) {
    if (!text.empty()) {
      text_.append(blanks_, ' ').append(isolated(text));
      blanks_ = 0;
    }
    blanks_ += gap + width - std::min(width, cell_width(text));
  }
  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  std::string text_;
  std::size_t blanks_;
};

}  // namespace

void Table::write(Output& output, std::size_t columns) const {
  std::vector<std::size_t> widths;
  for (const auto& row : rows_) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i)
      widths[i] = std::max(widths[i], cell_width(row[i]));
  }
  if (widths.empty()) return;
  const std::size_t last_column =
      std::accumulate(widths.begin(), widths.end() - 1, indent_ + gap * (widths.size() - 1));
  for (const auto& row : rows_) {
    const bool folded = columns != 0 && row.size() == widths.size() && row.size() > 1 &&
                        last_column + cell_width(row.back()) > columns;
    const std::size_t beside = folded ? row.size() - 1 : row.size();
    Line line(indent_);
    for (std::size_t i = 0; i < beside; ++i) line.cell(row[i], widths[i]);
    output.line(line.text());
    if (!folded) continue;
    Line below(indent_ + 2 * gap);
    below.cell(row.back(), 0);
    output.line(below.text());
  }
}

}  // namespace jwnls::tool
