// The subtags of a locale name: language, script, region, variants.

#ifndef JWNLS_HOST_LOCALES_SUBTAGS_H_
#define JWNLS_HOST_LOCALES_SUBTAGS_H_

#include <cstddef>
#include <string_view>

namespace jwnls::host {

/// Views of a name in canonical case ("sr", "Latn", "RS"), which must outlive them; absent subtags
/// are empty.
struct Subtags {
  std::string_view language;
  std::string_view script;
  std::string_view region;
  std::string_view variants;  // joined by "_"
};

/// Splits a name in canonical case, such as "sr_Latn_RS"; false when it is none:
///
///   name    = language ["_" script] ["_" region] {"_" variant}
///   language  2 or 3 letters       script   4 letters
///   region    2 letters, 3 digits  variant  5 to 8 letters and digits, or a digit and 3 of them
[[nodiscard]] bool split_subtags(std::string_view name, Subtags& subtags) noexcept;

/// Subtags joined to a name again.
class SubtagName {
 public:
  explicit SubtagName(const Subtags& subtags) noexcept;
  [[nodiscard]] std::string_view text() const noexcept { return {units_, length_}; }

 private:
  void append(std::string_view subtag) noexcept;

  static constexpr std::size_t capacity = 96;  // the longest name, and an alias's longer codes
  char units_[capacity];
  std::size_t length_ = 0;
};

/// A locale name as a person, a system's environment or a web page writes it.
///
///   written = name ["." charset] ["@" modifier]     the name with "_" or "-", in any letter case
///           | ("C" | "POSIX") ["." charset]
///
/// Behind the name's subtags may come extensions ("-u-co-phonebk"). A modifier is one of those that
/// systems use ("latin", "euro") or a list of keywords ("calendar=buddhist").
class WrittenName {
 public:
  static constexpr std::size_t capacity = 80;  // units

  WrittenName() = default;
  WrittenName(const WrittenName&) = delete;
  WrittenName& operator=(const WrittenName&) = delete;

  /// Reads a name of at most `capacity` units; false when it is not of this form.
  [[nodiscard]] bool read(std::u16string_view written) noexcept;

  /// The subtags, with the script that a modifier stands for. They live as long as this object.
  [[nodiscard]] const Subtags& subtags() const noexcept { return subtags_; }

  /// True when something was left out that the subtags do not say: an extension, a keyword.
  [[nodiscard]] bool dropped() const noexcept { return dropped_; }

 private:
  void drop_extensions(std::size_t& length) noexcept;
  void correct_case(std::size_t length) noexcept;
  bool apply_modifier(std::string_view modifier) noexcept;

  char units_[capacity];  // in canonical case
  Subtags subtags_;
  bool dropped_ = false;
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_LOCALES_SUBTAGS_H_
