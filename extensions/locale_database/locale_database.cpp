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

const LocaleRow* find_row(const char16_t* name, std::int64_t length) noexcept {
  constexpr auto longest = static_cast<std::int64_t>(LocaleKey::max_name_length);
  if (name == nullptr || length < 1 || length > longest) return nullptr;
  const LocaleKey key = key_of(std::u16string_view(name, static_cast<std::size_t>(length)));
  const LocaleKey* end = locale_keys + locale_count;
  const LocaleKey* found = std::lower_bound(locale_keys, end, key);
  return found != end && *found == key ? locale_rows + (found - locale_keys) : nullptr;
}

void write_text(std::byte* entry, std::uint16_t text) noexcept {
  const std::int64_t length = text_offsets[text + 1] - text_offsets[text];
  std::memcpy(entry, &length, sizeof length);
  std::memcpy(entry + offsetof(TextEntry, units), texts + text_offsets[text],
              static_cast<std::size_t>(length) * sizeof(char16_t));
}

void write_16(std::byte* at, std::size_t value) noexcept {
  at[0] = static_cast<std::byte>(value & 0xFF);
  at[1] = static_cast<std::byte>(value >> 8);
}

// The block of abi/layout_data.h. The generator has seen that it fits.
void write_layout_data(std::byte* block, const LocaleRow& row) noexcept {
  std::memcpy(block, JW_LAYOUT_DATA_MAGIC, 4);
  write_16(block + 4, JW_LAYOUT_DATA_VERSION);
  std::byte* offset = block + 8;
  std::size_t size = JW_LAYOUT_DATA_HEAD;
  for (const std::uint16_t section : row.sections) {
    const std::uint32_t begin = section_offsets[section];
    const std::size_t bytes = section_offsets[section + 1] - begin;
    write_16(offset, bytes == 0 ? 0 : size);
    std::memcpy(block + size, section_bytes + begin, bytes);
    offset += 2;
    size += bytes;
  }
  write_16(block + 6, size);
}

// Writes every byte behind the head, up to the end of the layout data; the head, the locale's name,
// is the caller's. The memory comes unzeroed. What is behind the layout data, some 29 of 40 KB, is
// not touched: new memory is the most costly part of a handle.
void write_row(std::byte* record, const LocaleRow& row) noexcept {
  constexpr std::size_t head = offsetof(LocaleRecord, area_2);
  const auto write = [record](std::size_t offset, auto value) {
    std::memcpy(record + offset, &value, sizeof value);
  };
  std::memset(record + head, 0, offsetof(LocaleRecord, area_9) - head);
  for (std::size_t i = 0; i < run_count; ++i) {
    const std::uint16_t* list = list_texts + row.lists[i];
    std::byte* entry = record + runs[i].offset;
    for (std::size_t k = 0; k < runs[i].count; ++k, entry += sizeof(TextEntry)) {
      write_text(entry, list[k]);
    }
  }
  write(offsetof(LocaleRecord, decimal_symbol), row.decimal_symbol);
  write(offsetof(LocaleRecord, grouping_symbol), row.grouping_symbol);
  write(offsetof(LocaleRecord, currency_decimals), std::int64_t{row.currency_digits});
  write(offsetof(LocaleRecord, first_weekday), std::int32_t{row.first_weekday});
  write(offsetof(LocaleRecord, first_week_days), std::int32_t{row.minimal_days});
  write_layout_data(record + offsetof(LocaleRecord, area_9), row);
}

std::uint32_t fill(void* record, const char16_t* name, std::int64_t length) {
  if (record == nullptr) return code(Status::null_argument);
  const LocaleRow* row = find_row(name, length);
  if (row == nullptr) return code(Status::lookup_failed);
  write_row(static_cast<std::byte*>(record), *row);
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
