// Texts that look alike: of a column of ten thousand numbers there are some hundred shapes.
//
// Every locale treats the texts of one shape alike: it reads all of them or none, and two locales
// give all of them the same value or none. So detection reads one text of each shape, whatever the
// column's length. What the readers look at closely is part of the shape: how many digits a number
// has, whether it begins with 0, what day or month it can be, which half of the day, which numbers
// are equal; and texts of which too little is known (years behind 29 February, weekdays) are a
// shape of their own.

#ifndef JWNLS_LIBRARY_DETECT_SHAPES_H_
#define JWNLS_LIBRARY_DETECT_SHAPES_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "include/jwnls/jwnls.h"

namespace jwnls::library {

/// Which readers the shapes are for.
enum class Family : std::uint8_t { numbers, dates };

struct Shape {
  std::string_view text;  // of the first text, without the blanks around it
  std::size_t first;      // its index
  std::size_t count;      // how many texts have this shape
};

/// The words with which some locale's names of weekdays begin, folded.
using WeekdayWords = std::unordered_set<std::string>;
/// Gives them where a text has words that may be some; what it throws, goes through.
using FindWeekdayWords = std::function<const WeekdayWords&()>;

class Shapes {
 public:
  /// Sorts the texts of a column, which has to outlive this. Throws bad_alloc.
  Shapes(const jwnls_texts& texts, Family family, const FindWeekdayWords& weekdays);

  [[nodiscard]] const std::vector<Shape>& all() const noexcept { return shapes_; }
  /// The shapes of some texts spread over the whole column; often the same one again.
  [[nodiscard]] const std::vector<std::size_t>& sample() const noexcept { return sample_; }
  /// Texts that are not blank.
  [[nodiscard]] std::size_t values() const noexcept { return values_; }
  /// Whether some text has digits, and letters or signs that are no part of a number.
  [[nodiscard]] bool has_words() const noexcept { return has_words_; }

 private:
  std::size_t add(std::string_view text, std::string_view key, std::size_t index);
  void grow();

  struct Slot {
    std::uint64_t hash;
    std::size_t shape;  // 1 more; 0: free
    std::size_t key;    // where the key begins in keys_
    std::size_t key_size;
  };

  std::vector<Shape> shapes_;
  std::vector<std::size_t> sample_;
  std::size_t values_ = 0;
  bool has_words_ = false;
  std::vector<Slot> slots_;
  std::string keys_;
};

/// Writes the shape of a text of at most longest_text bytes and gives its size, at most
/// shape_room bytes. Throws bad_alloc.
inline constexpr std::size_t shape_room = 4 * 1024;
[[nodiscard]] std::size_t write_shape(Family family, std::string_view text, char* out,
                                      const FindWeekdayWords& weekdays);

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DETECT_SHAPES_H_
