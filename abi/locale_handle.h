// What the module hands to a host: the factory, the locale handle and its service table.
//
// A host calls through the slots, with the object as first argument. Slot and word positions are
// the interface and are pinned below. Texts are counted, never terminated; a capacity below 0
// counts as 0. Every slot may be called by any number of threads on one handle at once; only
// `set_time_zone` changes the handle, by one pointer store.

#ifndef JWNLS_ABI_LOCALE_HANDLE_H_
#define JWNLS_ABI_LOCALE_HANDLE_H_

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "abi/host_tables.h"
#include "abi/locale_record.h"

namespace jwnls {

struct LocaleHandle;

/// The characters "nevo", as word 0 of every factory and handle; the upper half is zero.
inline constexpr std::uint64_t object_tag = 0x6F76656E;

// ---- Services. Each returns a status code (see abi/status.h) unless it says otherwise.

using NoOperation = std::uint32_t(LocaleHandle*);  // returns 0

/// Formats month, day and year by the date pattern of a style: 1 date pattern 2, 2 date pattern 3,
/// else date pattern 1. missing_value; out_of_range for parts that form no date; not_possible for a
/// directive that a date cannot have; does_not_fit with the cut text delivered.
template <typename Unit>
using FormatDate = std::uint32_t(LocaleHandle*, std::int32_t month, std::int32_t day,
                                 std::int32_t year, std::uint32_t style, Unit* out,
                                 std::int64_t capacity, std::int64_t* length);

/// Formats a datetime value (seconds since 1 January 1960) by the time pattern (style not read), or
/// by the datetime pattern of a style: 0 the style-0 pattern, else the other. Statuses as above.
template <typename Unit>
using FormatDatetime = std::uint32_t(LocaleHandle*, double value, std::uint32_t style, Unit* out,
                                     std::int64_t capacity, std::int64_t* length);

/// Slots 24, 30 and 31: a number, a currency amount, a percentage.
template <typename Unit>
using FormatNumber = std::uint32_t(LocaleHandle*, double value, std::int32_t width,
                                   std::int32_t decimals, std::uint32_t flags, Unit* out,
                                   std::int64_t capacity, std::int64_t* length);

/// With bit 0 of `flags`, `missing_symbol` is what the "." missing value shows; else "." is.
struct FloatOptions {
  std::uint8_t flags;
  std::uint8_t zero_1[3];
  char16_t missing_symbol;
};

template <typename Unit>
using FormatNumberWithOptions = std::uint32_t(LocaleHandle*, double value, std::int32_t width,
                                              std::int32_t decimals, std::uint32_t flags, Unit* out,
                                              std::int64_t capacity, std::int64_t* length,
                                              const FloatOptions* options);

template <typename Integer, typename Unit>
using FormatInteger = std::uint32_t(LocaleHandle*, Integer value, std::int32_t width,
                                    std::int32_t minimum_digits, std::uint32_t flags, Unit* out,
                                    std::int64_t capacity, std::int64_t* length);

using FormatPointer = FormatInteger<std::uint64_t, char16_t>;

/// Date or datetime, period and time-of-day input. On failure the value is the standard missing
/// value and `consumed` is 0, but for a single time pattern that fails, which leaves the value as
/// it was.
template <typename Unit>
using ReadDate = std::uint32_t(LocaleHandle*, const Unit* text, std::int64_t length,
                               std::uint32_t mode, double* value, std::uint64_t* consumed);

/// Reads a number: digits with grouping symbols anywhere before the decimal symbol, an exponent
/// ("E", "e", "D", "d"), blanks (spaces and tabs) around. An empty or blank text and "." are the
/// standard missing value; ".A" to ".Z", in any case, and "._" the special ones. The handle may be
/// null: then the symbols are "." and ",".
///   text, length  units; 8-bit text is read byte by byte and compared with the record's symbols as
///                 they are, so that a symbol above 255 does not occur in it
///   value         always written; the standard missing value on failure
///   consumed      units up to the blanks behind the number; the place that offends on
///                 invalid_number, 0 on out_of_range
/// ok; invalid_number, also for a negative length; out_of_range for an exponent above 30,800 or a
/// value beyond the doubles. The digits are summed up in double steps, which round from the 16th
/// digit on. Digits past the 150th are dropped, and count for nothing but a fraction's length.
template <typename Unit>
using ReadNumber = std::uint32_t(LocaleHandle*, const Unit* text, std::int32_t length,
                                 double* value, std::int64_t* consumed);

/// The same with number_input_flags (abi/number_flags.h).
template <typename Unit>
using ReadNumberWithFlags = std::uint32_t(LocaleHandle*, const Unit* text, std::int32_t length,
                                          double* value, std::int64_t* consumed,
                                          std::uint32_t flags);

/// The same with a converter, which may be null, for symbols above 127 other than the no-break
/// space; where it fails, the symbol is ",". Slot 57 reads 8-bit text and converts the grouping
/// symbol alone; slot 58 reads EBCDIC and converts both.
using ReadConvertedNumber = std::uint32_t(LocaleHandle*, const char* text, std::int32_t length,
                                          double* value, std::int64_t* consumed, Converter*);

/// Reads an integer: a sign (not "-" for unsigned types), digits with grouping symbols anywhere but
/// in front. Spaces may stand before the sign and the digits; a text of nothing else is 0. 8-bit
/// text is UTF-8.
///   flags     integer_input_flags (abi/number_flags.h)
///   consumed  units up to where the digits end
/// ok, with whatever follows a space or zero unit left to the caller; invalid_number with the
/// digits so far as value; integer_overflow with 0; does_not_fit when a fraction other than zero
/// was dropped; negative_length with nothing written.
template <typename Integer, typename Unit>
using ReadInteger = std::uint32_t(LocaleHandle*, const Unit* text, std::int64_t length,
                                  std::uint32_t flags, Integer* value, std::int64_t* consumed);

/// Compares two UTF-16 texts by unit value: -1, 0 or 1. A null text or a negative length is an
/// empty text. Mode 1 pads the shorter text with blanks.
using CompareTexts = std::int32_t(LocaleHandle*, const char16_t* a, std::int64_t a_length,
                                  const char16_t* b, std::int64_t b_length, std::uint32_t mode);

/// Points `area` into the locale record, by selector 0 to 9; unknown_selector writes nothing.
using RecordArea = std::uint32_t(LocaleHandle*, std::uint32_t selector, void** area);

/// Copies the canonical locale name into a buffer of 64 units; null_argument when either is null.
using CopyLocaleName = std::uint32_t(LocaleHandle*, char16_t* name, std::int64_t* length);

/// Makes a track that destroys locale handles with its entries, for the host to keep as its cache
/// of handles; null when the host could not create it.
using CreateHandleCache = Track*(LocaleHandle*);

/// Gives the handle another time zone. `zone` is UTF-16, `length` units, not terminated; null or 0
/// units: ok, nothing changes. lookup_failed when the zone cannot be opened or the length is
/// negative; the handle then keeps the zone that it has. The handle owns its zones and caches the
/// previous one. Threads that format meanwhile see either.
using SetTimeZone = std::uint32_t(LocaleHandle*, const char16_t* zone, std::int64_t length);

// Where two slots hold the same service, the second is named `..._too`.
struct ServiceTable {
  FormatDate<char16_t>* format_date;                              // 22
  FormatDatetime<char16_t>* format_datetime;                      // 23
  FormatNumber<char16_t>* format_number;                          // 24
  FormatInteger<std::int64_t, char16_t>* format_int64;            // 25
  FormatInteger<std::int64_t, char16_t>* format_int64_too;        // 26
  FormatInteger<std::uint64_t, char16_t>* format_uint64;          // 27
  FormatInteger<std::uint64_t, char16_t>* format_uint64_too;      // 28
  FormatPointer* format_pointer;                                  // 29
  FormatNumber<char16_t>* format_currency;                        // 30
  FormatNumber<char16_t>* format_percent;                         // 31
  ReadDate<char16_t>* read_date;                                  // 32
  ReadDate<char16_t>* read_period;                                // 33
  ReadDate<char16_t>* read_time;                                  // 34
  ReadNumber<char16_t>* read_number;                              // 35
  ReadInteger<std::int64_t, char16_t>* read_int64;                // 36
  ReadInteger<std::int64_t, char16_t>* read_int64_too;            // 37
  ReadInteger<std::uint64_t, char16_t>* read_uint64;              // 38
  ReadInteger<std::uint64_t, char16_t>* read_uint64_too;          // 39
  NoOperation* no_operation_40;                                   // 40
  NoOperation* no_operation_41;                                   // 41
  NoOperation* no_operation_42;                                   // 42
  CompareTexts* compare_texts;                                    // 43
  FormatDatetime<char16_t>* format_time;                          // 44
  RecordArea* record_area;                                        // 45
  CopyLocaleName* copy_locale_name;                               // 46
  FormatInteger<std::int32_t, char16_t>* format_int32;            // 47
  FormatInteger<std::uint32_t, char16_t>* format_uint32;          // 48
  ReadInteger<std::int32_t, char16_t>* read_int32;                // 49
  ReadInteger<std::uint32_t, char16_t>* read_uint32;              // 50
  FormatInteger<std::int32_t, char16_t>* format_int32_too;        // 51
  FormatInteger<std::uint32_t, char16_t>* format_uint32_too;      // 52
  ReadInteger<std::int32_t, char16_t>* read_int32_too;            // 53
  ReadInteger<std::uint32_t, char16_t>* read_uint32_too;          // 54
  FormatNumberWithOptions<char16_t>* format_number_with_options;  // 55
  ReadNumber<char>* read_number_8bit;                             // 56
  ReadConvertedNumber* read_number_converted;                     // 57
  ReadConvertedNumber* read_number_ebcdic;                        // 58
  FormatNumberWithOptions<char>* format_number_8bit;              // 59
  FormatInteger<std::int64_t, char>* format_int64_8bit;           // 60
  FormatInteger<std::int64_t, char>* format_int64_8bit_too;       // 61
  FormatInteger<std::uint64_t, char>* format_uint64_8bit;         // 62
  FormatInteger<std::uint64_t, char>* format_uint64_8bit_too;     // 63
  ReadInteger<std::int64_t, char>* read_int64_8bit;               // 64
  ReadInteger<std::int64_t, char>* read_int64_8bit_too;           // 65
  ReadInteger<std::uint64_t, char>* read_uint64_8bit;             // 66
  ReadInteger<std::uint64_t, char>* read_uint64_8bit_too;         // 67
  FormatInteger<std::int32_t, char>* format_int32_8bit;           // 68
  FormatInteger<std::uint32_t, char>* format_uint32_8bit;         // 69
  ReadInteger<std::int32_t, char>* read_int32_8bit;               // 70
  ReadInteger<std::uint32_t, char>* read_uint32_8bit;             // 71
  FormatInteger<std::int32_t, char>* format_int32_8bit_too;       // 72
  FormatInteger<std::uint32_t, char>* format_uint32_8bit_too;     // 73
  ReadInteger<std::int32_t, char>* read_int32_8bit_too;           // 74
  ReadInteger<std::uint32_t, char>* read_uint32_8bit_too;         // 75
  ReadNumberWithFlags<char16_t>* read_number_with_flags;          // 76
  ReadNumberWithFlags<char>* read_number_8bit_with_flags;         // 77
  CreateHandleCache* create_handle_cache;                         // 78
  SetTimeZone* set_time_zone;                                     // 79
  FormatDatetime<char>* format_time_8bit;                         // 80
  FormatDate<char>* format_date_8bit;                             // 81
  FormatDatetime<char>* format_datetime_8bit;                     // 82
  ReadDate<char>* read_date_8bit;                                 // 83
  ReadDate<char>* read_period_8bit;                               // 84
  ReadDate<char>* read_time_8bit;                                 // 85
};

/// One locale with one time zone. Shared by every caller that asks for the pair, and immutable but
/// for `zone`. Owned by the host's handle cache, or by the caller that asked for a private one.
struct LocaleHandle {
  std::uint64_t tag;           // object_tag
  const char* type_text;       // "JWLocale handle"
  NoOperation* no_operation;   //
  NlsContext* context;         //
  MessageExtension* messages;  // owned
  std::int64_t name_length;    // units of the canonical locale name
  char16_t name[64];           //
  ServiceTable services;       //
  std::uint64_t zero_86[6];    //
  LocaleRecord* record;        // owned; read-only once the handle is made
  std::uint64_t zero_93;       //
  Lock* message_lock;          // owned
  Track* message_track;        // owned
  Lock* zone_lock;             // owned; guards insertions into zone_track
  Track* zone_track;           // owned; every zone that the handle ever had, by name
  Zone* zone;                  // the current zone, owned by zone_track; read and stored atomically
  std::uint64_t zero_99[13];   //
};

/// What `create_handle` may be asked for. Null options are the same as all zero.
struct CreationOptions {
  std::uint8_t flags;        // bit 0: a private handle, neither looked up nor registered
  std::uint8_t zero_1[7];    //
  const char16_t* zone;      // the handle's time zone; null: the operating system's
  std::int64_t zone_length;  // units; below 1: as a null zone
};
inline constexpr std::uint8_t private_handle = 0x1;

struct Factory {
  std::uint64_t tag;  // object_tag
  std::uint64_t zero_1[2];
  std::uint32_t (*version_a)(Factory*, std::int64_t*, std::int64_t*, std::int64_t*);  // 6, 1, 1
  std::uint32_t (*version_b)(Factory*, std::int64_t*, std::int64_t*, std::int64_t*);  // 6, 0, 0
  Kernel* kernel;
  std::uint32_t (*destroy)(Factory*);  // destroys the factory's pool; handles live on
  std::uint64_t zero_7[2];
  Pool* pool;
  /// Gives the shared handle of a locale and zone, made on first need, or a private one.
  /// Null on failure, with the status written where `status` is not null; a null handle with status
  /// ok is a failure too (a lock or the message track could not be created).
  LocaleHandle* (*create_handle)(NlsContext*, const char16_t* name, std::int64_t length,
                                 std::uint32_t* status, const CreationOptions*);
  /// Destroys the handle in the third word of a record such as a TrackEntry. Returns 0.
  std::uint32_t (*destroy_handle)(void* entry);
};

// ---- Exports of the module, which a host finds by name.

extern "C" {
using JwExtent = std::uint32_t(Kernel*);
using JwExtver = std::uint32_t(Kernel*, std::int64_t* major, std::int64_t* minor);
using JwFactory = Factory*(Kernel*, ErrorSink*);
using JwVersionRecord = std::uint32_t(void* record);  // copies 208 bytes
}

namespace handle_layout {
// True when `member_offset` in a ServiceTable is that of slot `slot` of the handle.
constexpr bool at_slot(std::size_t member_offset, std::size_t slot) {
  return offsetof(LocaleHandle, services) + member_offset == slot * 8;
}
static_assert(at_slot(offsetof(ServiceTable, format_date), 22));
static_assert(at_slot(offsetof(ServiceTable, format_datetime), 23));
static_assert(at_slot(offsetof(ServiceTable, format_number), 24));
static_assert(at_slot(offsetof(ServiceTable, format_int64), 25));
static_assert(at_slot(offsetof(ServiceTable, format_int64_too), 26));
static_assert(at_slot(offsetof(ServiceTable, format_uint64), 27));
static_assert(at_slot(offsetof(ServiceTable, format_uint64_too), 28));
static_assert(at_slot(offsetof(ServiceTable, format_pointer), 29));
static_assert(at_slot(offsetof(ServiceTable, format_currency), 30));
static_assert(at_slot(offsetof(ServiceTable, format_percent), 31));
static_assert(at_slot(offsetof(ServiceTable, read_date), 32));
static_assert(at_slot(offsetof(ServiceTable, read_period), 33));
static_assert(at_slot(offsetof(ServiceTable, read_time), 34));
static_assert(at_slot(offsetof(ServiceTable, read_number), 35));
static_assert(at_slot(offsetof(ServiceTable, read_int64), 36));
static_assert(at_slot(offsetof(ServiceTable, read_int64_too), 37));
static_assert(at_slot(offsetof(ServiceTable, read_uint64), 38));
static_assert(at_slot(offsetof(ServiceTable, read_uint64_too), 39));
static_assert(at_slot(offsetof(ServiceTable, no_operation_40), 40));
static_assert(at_slot(offsetof(ServiceTable, no_operation_41), 41));
static_assert(at_slot(offsetof(ServiceTable, no_operation_42), 42));
static_assert(at_slot(offsetof(ServiceTable, compare_texts), 43));
static_assert(at_slot(offsetof(ServiceTable, format_time), 44));
static_assert(at_slot(offsetof(ServiceTable, record_area), 45));
static_assert(at_slot(offsetof(ServiceTable, copy_locale_name), 46));
static_assert(at_slot(offsetof(ServiceTable, format_int32), 47));
static_assert(at_slot(offsetof(ServiceTable, format_uint32), 48));
static_assert(at_slot(offsetof(ServiceTable, read_int32), 49));
static_assert(at_slot(offsetof(ServiceTable, read_uint32), 50));
static_assert(at_slot(offsetof(ServiceTable, format_int32_too), 51));
static_assert(at_slot(offsetof(ServiceTable, format_uint32_too), 52));
static_assert(at_slot(offsetof(ServiceTable, read_int32_too), 53));
static_assert(at_slot(offsetof(ServiceTable, read_uint32_too), 54));
static_assert(at_slot(offsetof(ServiceTable, format_number_with_options), 55));
static_assert(at_slot(offsetof(ServiceTable, read_number_8bit), 56));
static_assert(at_slot(offsetof(ServiceTable, read_number_converted), 57));
static_assert(at_slot(offsetof(ServiceTable, read_number_ebcdic), 58));
static_assert(at_slot(offsetof(ServiceTable, format_number_8bit), 59));
static_assert(at_slot(offsetof(ServiceTable, format_int64_8bit), 60));
static_assert(at_slot(offsetof(ServiceTable, format_int64_8bit_too), 61));
static_assert(at_slot(offsetof(ServiceTable, format_uint64_8bit), 62));
static_assert(at_slot(offsetof(ServiceTable, format_uint64_8bit_too), 63));
static_assert(at_slot(offsetof(ServiceTable, read_int64_8bit), 64));
static_assert(at_slot(offsetof(ServiceTable, read_int64_8bit_too), 65));
static_assert(at_slot(offsetof(ServiceTable, read_uint64_8bit), 66));
static_assert(at_slot(offsetof(ServiceTable, read_uint64_8bit_too), 67));
static_assert(at_slot(offsetof(ServiceTable, format_int32_8bit), 68));
static_assert(at_slot(offsetof(ServiceTable, format_uint32_8bit), 69));
static_assert(at_slot(offsetof(ServiceTable, read_int32_8bit), 70));
static_assert(at_slot(offsetof(ServiceTable, read_uint32_8bit), 71));
static_assert(at_slot(offsetof(ServiceTable, format_int32_8bit_too), 72));
static_assert(at_slot(offsetof(ServiceTable, format_uint32_8bit_too), 73));
static_assert(at_slot(offsetof(ServiceTable, read_int32_8bit_too), 74));
static_assert(at_slot(offsetof(ServiceTable, read_uint32_8bit_too), 75));
static_assert(at_slot(offsetof(ServiceTable, read_number_with_flags), 76));
static_assert(at_slot(offsetof(ServiceTable, read_number_8bit_with_flags), 77));
static_assert(at_slot(offsetof(ServiceTable, create_handle_cache), 78));
static_assert(at_slot(offsetof(ServiceTable, set_time_zone), 79));
static_assert(at_slot(offsetof(ServiceTable, format_time_8bit), 80));
static_assert(at_slot(offsetof(ServiceTable, format_date_8bit), 81));
static_assert(at_slot(offsetof(ServiceTable, format_datetime_8bit), 82));
static_assert(at_slot(offsetof(ServiceTable, read_date_8bit), 83));
static_assert(at_slot(offsetof(ServiceTable, read_period_8bit), 84));
static_assert(at_slot(offsetof(ServiceTable, read_time_8bit), 85));
static_assert(sizeof(LocaleHandle) == 896 && std::is_standard_layout_v<LocaleHandle>);
static_assert(offsetof(LocaleHandle, no_operation) == 2 * 8);
static_assert(offsetof(LocaleHandle, context) == 3 * 8);
static_assert(offsetof(LocaleHandle, messages) == 4 * 8);
static_assert(offsetof(LocaleHandle, name_length) == 5 * 8);
static_assert(offsetof(LocaleHandle, name) == 6 * 8);
static_assert(offsetof(LocaleHandle, record) == 92 * 8);
static_assert(offsetof(LocaleHandle, message_lock) == 94 * 8);
static_assert(offsetof(LocaleHandle, message_track) == 95 * 8);
static_assert(offsetof(LocaleHandle, zone_lock) == 96 * 8);
static_assert(offsetof(LocaleHandle, zone_track) == 97 * 8);
static_assert(offsetof(LocaleHandle, zone) == 98 * 8);
static_assert(sizeof(Factory) == 96 && offsetof(Factory, version_a) == 3 * 8);
static_assert(offsetof(Factory, pool) == 9 * 8 && offsetof(Factory, destroy_handle) == 11 * 8);
static_assert(offsetof(CreationOptions, zone) == 8 && offsetof(CreationOptions, zone_length) == 16);
static_assert(offsetof(FloatOptions, missing_symbol) == 4);
}  // namespace handle_layout

}  // namespace jwnls

#endif  // JWNLS_ABI_LOCALE_HANDLE_H_
