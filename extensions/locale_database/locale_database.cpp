// The locale database extension: fills locale records from its tables.

#include <algorithm>
#include <cstring>

#include "abi/host_tables.h"
#include "abi/layout_data.h"
#include "abi/status.h"
#include "extensions/entry_points.h"
#include "extensions/extension_object.h"
#include "extensions/locale_database/locale_tables.h"

namespace jwnls::ldb {
namespace {

struct Database {
  LocaleDatabase base;  // what the host and the module see
  Pool* pool;           // the object's own
};

const std::uint8_t* find_row(const char16_t* name, std::int64_t length) noexcept {
  constexpr auto longest = static_cast<std::int64_t>(LocaleKey::max_name_length);
  if (name == nullptr || length < 1 || length > longest) return nullptr;
  const LocaleKey key = key_of(std::u16string_view(name, static_cast<std::size_t>(length)));
  const LocaleKey* end = locale_keys + locale_count;
  const LocaleKey* found = std::lower_bound(locale_keys, end, key);
  if (found == end || !(*found == key)) return nullptr;
  return pieces + locale_places[found - locale_keys];
}

std::uint16_t word_at(const std::uint8_t* at) noexcept {
  return static_cast<std::uint16_t>(at[0] | at[1] << 8);
}

// The piece that a row names in one of its places.
const std::uint8_t* piece_of(const std::uint8_t* row, std::size_t index) noexcept {
  const std::uint8_t* at = row + row_head + index * place_bytes;
  return pieces + (word_at(at) | std::size_t{at[2]} << 16);
}

// Writes a list of texts into consecutive entries.
void write_list(std::byte* entry, std::size_t count, const std::uint8_t* list) noexcept {
  for (; count > 0; --count, entry += sizeof(TextEntry)) {
    const std::size_t unit_bytes = (*list & narrow_text) != 0 ? 1 : 2;
    const std::int64_t length = *list++ & ~narrow_text;
    std::memcpy(entry, &length, sizeof length);
    std::byte* units = entry + offsetof(TextEntry, units);
    for (std::int64_t i = 0; i < length; ++i, list += unit_bytes, units += sizeof(char16_t)) {
      const char16_t unit = unit_bytes == 1 ? *list : word_at(list);
      std::memcpy(units, &unit, sizeof unit);
    }
  }
}

void write_16(std::byte* at, std::size_t value) noexcept {
  at[0] = static_cast<std::byte>(value & 0xFF);
  at[1] = static_cast<std::byte>(value >> 8);
}

// The block of abi/layout_data.h. The generator has seen that it fits.
void write_layout_data(std::byte* block, const std::uint8_t* row) noexcept {
  std::memcpy(block, JW_LAYOUT_DATA_MAGIC, 4);
  write_16(block + 4, JW_LAYOUT_DATA_VERSION);
  std::size_t size = JW_LAYOUT_DATA_HEAD;
  for (std::size_t i = 0; i < jw_layout_sections; ++i) {
    const std::uint8_t* section = piece_of(row, run_count + i);
    const std::size_t bytes = word_at(section);
    write_16(block + 8 + 2 * i, bytes == 0 ? 0 : size);
    std::memcpy(block + size, section + 2, bytes);
    size += bytes;
  }
  write_16(block + 6, size);
}

// Writes every byte behind the head, up to the end of the layout data; the head, the locale's name,
// is the caller's. The memory comes unzeroed. What is behind the layout data, some 29 of 40 KB, is
// not touched: new memory is the most costly part of a handle.
void write_row(std::byte* record, const std::uint8_t* row) noexcept {
  constexpr std::size_t head = offsetof(LocaleRecord, area_2);
  const auto write = [record](std::size_t offset, auto value) {
    std::memcpy(record + offset, &value, sizeof value);
  };
  std::memset(record + head, 0, offsetof(LocaleRecord, area_9) - head);
  for (std::size_t i = 0; i < run_count; ++i) {
    write_list(record + runs[i].offset, runs[i].count, piece_of(row, i));
  }
  write(offsetof(LocaleRecord, decimal_symbol), char16_t{word_at(row)});
  write(offsetof(LocaleRecord, grouping_symbol), char16_t{word_at(row + 2)});
  write(offsetof(LocaleRecord, currency_decimals), std::int64_t{row[4]});
  write(offsetof(LocaleRecord, first_weekday), std::int32_t{row[5]});
  write(offsetof(LocaleRecord, first_week_days), std::int32_t{row[6]});
  write_layout_data(record + offsetof(LocaleRecord, area_9), row);
}

std::uint32_t fill(void* record, const char16_t* name, std::int64_t length) {
  if (record == nullptr) return code(Status::null_argument);
  const std::uint8_t* row = find_row(name, length);
  if (row == nullptr) return code(Status::lookup_failed);
  write_row(static_cast<std::byte*>(record), row);
  return code(Status::ok);
}

void destroy(LocaleDatabase* database) {
  Pool* pool = reinterpret_cast<Database*>(database)->pool;
  pool->destroy(pool);
}

}  // namespace
}  // namespace jwnls::ldb

void* jwnls::create_jwnlsldb(Kernel* kernel, ErrorSink* errors) {
  auto* database = create_in_own_pool<ldb::Database>(kernel, errors, "jwnlsldb pool");
  if (database == nullptr) return nullptr;
  database->base.destroy = ldb::destroy;
  database->base.fill = ldb::fill;
  return &database->base;
}
