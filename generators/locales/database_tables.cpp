#include <algorithm>
#include <limits>
#include <map>
#include <ostream>
#include <stdexcept>

#include "extensions/locale_database/locale_tables.h"
#include "generators/locales/icu.h"
#include "generators/locales/layout_data.h"
#include "generators/locales/tables.h"

namespace jwnls::generator {
namespace {

std::uint16_t index_16(std::size_t value, const char* what) {
  if (value > std::numeric_limits<std::uint16_t>::max()) {
    throw std::runtime_error(std::string("too many ") + what + " for a 16-bit index");
  }
  return static_cast<std::uint16_t>(value);
}

// Texts and lists of texts, each stored once.
class TextStore {
 public:
  /// Where the list begins in list_texts().
  std::uint16_t add(const TextList& list) {
    std::vector<std::uint16_t> numbers;
    for (const std::u16string& text : list) numbers.push_back(add(text));
    const auto [place, is_new] = lists_.try_emplace(numbers, index_16(list_texts_.size(), "lists"));
    if (is_new) list_texts_.insert(list_texts_.end(), numbers.begin(), numbers.end());
    return place->second;
  }

  [[nodiscard]] const std::u16string& texts() const { return texts_; }
  [[nodiscard]] const std::vector<std::uint32_t>& offsets() const { return offsets_; }
  [[nodiscard]] const std::vector<std::uint16_t>& list_texts() const { return list_texts_; }
  [[nodiscard]] std::size_t list_count() const { return lists_.size(); }

 private:
  std::uint16_t add(const std::u16string& text) {
    const auto [place, is_new] = numbers_.try_emplace(text, index_16(numbers_.size(), "texts"));
    if (is_new) {
      texts_ += text;
      offsets_.push_back(static_cast<std::uint32_t>(texts_.size()));
    }
    return place->second;
  }

  std::map<std::u16string, std::uint16_t> numbers_;
  std::map<std::vector<std::uint16_t>, std::uint16_t> lists_;
  std::u16string texts_;
  std::vector<std::uint32_t> offsets_ = {0};
  std::vector<std::uint16_t> list_texts_;
};

// Sections of layout data, each stored once.
class SectionStore {
 public:
  std::uint16_t add(const std::string& section) {
    const auto [place, is_new] =
        numbers_.try_emplace(section, index_16(numbers_.size(), "sections"));
    if (is_new) {
      bytes_.insert(bytes_.end(), section.begin(), section.end());
      offsets_.push_back(static_cast<std::uint32_t>(bytes_.size()));
    }
    return place->second;
  }

  [[nodiscard]] const std::vector<std::uint8_t>& bytes() const { return bytes_; }
  [[nodiscard]] const std::vector<std::uint32_t>& offsets() const { return offsets_; }

 private:
  std::map<std::string, std::uint16_t> numbers_;
  std::vector<std::uint8_t> bytes_;
  std::vector<std::uint32_t> offsets_ = {0};
};

// The locale's list for a run, of as many texts as it has entries.
const TextList& list_for(const ldb::Run& run, const CldrLocale& locale) {
  const TextList& list = locale.lists.at(run.offset);
  if (list.size() != run.count) {
    throw std::runtime_error(locale.name + ": a list of the wrong length at offset " +
                             std::to_string(run.offset));
  }
  for (const std::u16string& text : list) {
    if (text.size() > static_cast<std::size_t>(text_entry_capacity)) {
      throw std::runtime_error(locale.name + ": a text of " + std::to_string(text.size()) +
                               " units at offset " + std::to_string(run.offset));
    }
  }
  return list;
}

template <typename Numbers>
void write_array(std::ostream& out, const char* declaration, const Numbers& numbers) {
  out << "const " << declaration << "[] = {";
  std::size_t column = 0;
  for (const auto number : numbers) {
    out << (column++ % 16 == 0 ? "\n    " : " ") << static_cast<std::uint32_t>(number) << ',';
  }
  out << "\n};\n\n";
}

void write_row(std::ostream& out, const CldrLocale& locale, const std::vector<std::uint16_t>& lists,
               const std::vector<std::uint16_t>& sections) {
  out << "    {{";
  for (const std::uint16_t list : lists) out << list << ", ";
  out << "},\n     {";
  for (const std::uint16_t section : sections) out << section << ", ";
  out << "},\n     " << static_cast<unsigned>(locale.decimal_symbol) << ", "
      << static_cast<unsigned>(locale.grouping_symbol) << ", " << +locale.currency_digits << ", "
      << +locale.first_weekday << ", " << +locale.minimal_days << "},  // " << locale.name << '\n';
}

}  // namespace

void write_database_tables(const std::vector<CldrLocale>& locales, std::ostream& out,
                           std::ostream& counts) {
  TextStore store;
  SectionStore section_store;
  std::size_t largest_block = 0;
  out << "#include \"extensions/locale_database/locale_tables.h\"\n\n"
      << "namespace jwnls::ldb {\n\n"
      << "const std::uint32_t locale_count = " << locales.size() << ";\n\n";

  out << "const LocaleKey locale_keys[] = {\n";
  for (const CldrLocale& locale : locales) {
    if (locale.name.size() > ldb::LocaleKey::max_name_length) {
      throw std::runtime_error(locale.name + ": a name too long for its key");
    }
    const ldb::LocaleKey key = ldb::key_of(std::string_view(locale.name));
    out << std::hex << "    {0x" << key.high << ", 0x" << key.low << "},  // " << std::dec
        << locale.name << '\n';
  }
  out << "};\n\n";

  out << "const LocaleRow locale_rows[] = {\n";
  for (const CldrLocale& locale : locales) {
    if (locale.lists.size() != ldb::run_count) {
      throw std::runtime_error(locale.name + ": a list that no run of the record takes");
    }
    std::vector<std::uint16_t> lists;
    for (const ldb::Run& run : ldb::runs) lists.push_back(store.add(list_for(run, locale)));
    std::vector<std::uint16_t> sections;
    std::size_t block = JW_LAYOUT_DATA_HEAD;
    for (const std::string& section : layout_sections(locale.name)) {
      sections.push_back(section_store.add(section));
      block += section.size();
    }
    largest_block = std::max(largest_block, block);
    write_row(out, locale, lists, sections);
  }
  out << "};\n\n";

  write_array(out, "std::uint16_t list_texts", store.list_texts());
  write_array(out, "std::uint32_t text_offsets", store.offsets());
  write_array(out, "char16_t texts", store.texts());
  write_array(out, "std::uint32_t section_offsets", section_store.offsets());
  write_array(out, "std::uint8_t section_bytes", section_store.bytes());
  out << "}  // namespace jwnls::ldb\n";

  const std::size_t bytes = locales.size() * (sizeof(ldb::LocaleKey) + sizeof(ldb::LocaleRow)) +
                            store.list_texts().size() * 2 + store.offsets().size() * 4 +
                            store.texts().size() * 2 + section_store.offsets().size() * 4 +
                            section_store.bytes().size();
  counts << locales.size() << " locales, " << store.offsets().size() - 1 << " texts of "
         << store.texts().size() << " units, " << store.list_count() << " lists: " << bytes / 1024
         << " KiB\n"
         << section_store.offsets().size() - 1 << " sections of layout data, "
         << section_store.bytes().size() / 1024 << " KiB of them; the largest block "
         << largest_block << " bytes\n";
}

}  // namespace jwnls::generator
