#include <algorithm>
#include <map>
#include <ostream>
#include <stdexcept>
#include <string_view>

#include "extensions/locale_database/locale_tables.h"
#include "generators/locales/icu.h"
#include "generators/locales/layout_data.h"
#include "generators/locales/tables.h"

namespace jwnls::generator {
namespace {

// Pieces and rows, end to end. A piece is stored again where the one that is there would cost a
// page more: when it is far away and small.
class PieceStore {
 public:
  std::size_t add(const std::string& piece) {
    constexpr std::size_t large = 256;
    constexpr std::size_t near = 16 * 1024;
    const auto known = places_.find(piece);
    if (known != places_.end() && (piece.size() >= large || bytes_.size() - known->second < near)) {
      return known->second;
    }
    const std::size_t place = append(piece);
    places_[piece] = place;
    return place;
  }

  std::size_t append(const std::string& bytes) {
    const std::size_t place = bytes_.size();
    if (place >> (8 * ldb::place_bytes) != 0) throw std::runtime_error("too many bytes of pieces");
    bytes_ += bytes;
    return place;
  }

  [[nodiscard]] const std::string& bytes() const { return bytes_; }

 private:
  std::map<std::string, std::size_t> places_;  // of the last ones
  std::string bytes_;
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

std::string piece_of(const TextList& list) {
  SectionWriter out;
  for (const std::u16string& text : list) {
    const bool is_narrow = std::ranges::all_of(text, [](char16_t unit) { return unit < 0x100; });
    out.byte(text.size() | (is_narrow ? ldb::narrow_text : 0U));
    for (const char16_t unit : text) is_narrow ? out.byte(unit) : out.word(unit);
  }
  return out.all();
}

std::string piece_of(const std::string& section) {
  SectionWriter out;
  out.word(section.size());
  out.bytes(section);
  return out.all();
}

// Adds a locale's pieces, and gives its row.
std::string row_of(const CldrLocale& locale, PieceStore& store) {
  if (locale.lists.size() != ldb::run_count) {
    throw std::runtime_error(locale.name + ": a list that no run of the record takes");
  }
  SectionWriter row;
  row.word(locale.decimal_symbol);
  row.word(locale.grouping_symbol);
  for (const unsigned each : {locale.currency_digits, locale.first_weekday, locale.minimal_days}) {
    row.byte(each);
  }
  const auto name_piece = [&](const std::string& piece) {
    const std::size_t place = store.add(piece);
    row.word(place & 0xFFFF);
    row.byte(place >> 16);
  };
  for (const ldb::Run& run : ldb::runs) name_piece(piece_of(list_for(run, locale)));
  for (const std::string& section : layout_sections(locale.name)) name_piece(piece_of(section));
  return row.all();
}

template <typename Numbers>
void write_array(std::ostream& out, const char* declaration, const Numbers& numbers) {
  out << "const " << declaration << "[] = {";
  std::size_t column = 0;
  for (auto number : numbers) {
    const auto value = static_cast<std::make_unsigned_t<decltype(number)>>(number);
    out << (column++ % 16 == 0 ? "\n    " : " ") << +value << ',';
  }
  out << "\n};\n\n";
}

}  // namespace

void write_database_tables(const std::vector<CldrLocale>& locales, std::ostream& out,
                           std::ostream& counts) {
  out << "#include \"extensions/locale_database/locale_tables.h\"\n\n"
      << "namespace jwnls::ldb {\n\n";

  // The compiler that we use most lays out what is defined last first: the keys before the pieces.
  PieceStore store;
  std::vector<std::size_t> places;
  places.reserve(locales.size());
  for (const CldrLocale& locale : locales) places.push_back(store.append(row_of(locale, store)));
  write_array(out, "std::uint8_t pieces", store.bytes());
  write_array(out, "std::uint32_t locale_places", places);

  out << "const LocaleKey locale_keys[] = {\n";
  for (const CldrLocale& locale : locales) {
    if (locale.name.size() > ldb::LocaleKey::max_name_length) {
      throw std::runtime_error(locale.name + ": a name too long for its key");
    }
    const ldb::LocaleKey key = ldb::key_of(std::string_view(locale.name));
    out << std::hex << "    {0x" << key.high << ", 0x" << key.low << "},  // " << std::dec
        << locale.name << '\n';
  }
  out << "};\n\n"
      << "const std::uint32_t locale_count = " << locales.size() << ";\n\n"
      << "}  // namespace jwnls::ldb\n";

  counts << locales.size() << " locales, " << store.bytes().size() / 1024 << " KiB of their data\n";
}

}  // namespace jwnls::generator
