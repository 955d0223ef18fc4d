// The services of a locale handle: the signature and contract of each slot, and the service table.
//
// The module makes the table, a part of every handle (abi/locale_handle.h); its slots never change.
// A host calls `handle->services.<slot>(handle, ...)`. Slot numbers are the interface, pinned
// below.
//
// What holds for every service:
// - Any number of threads may call services on one handle at once. Only `set_time_zone` changes the
//   handle, by one pointer store. Services allocate nothing and take no lock, but for a text that
//   names a time zone which the handle does not know yet.
// - The result is a status (abi/status.h) unless it says otherwise. Statuses that are not listed
//   with a service do not come from it.
// - Pointers are required unless the service says which may be null.
// - Texts are counted, never terminated. UTF-16 services count 16-bit units, 8-bit services bytes
// of
//   UTF-8; each unit is encoded by itself, a surrogate as three bytes. A capacity below 0 counts
//   as 0.
// - Formatting never writes past the capacity, but the room behind a delivered text, up to the
//   capacity, may be used as scratch. Where a failure says that nothing is written, `out` and
//   `*length` are as they were.
// - Values are doubles: a date value counts days from 1 January 1960 (-138,061 to below 6,589,336,
//   the years 1582 to 20000), a datetime value seconds from its 0:00 (the same days times 86,400),
//   a time value seconds from midnight. Missing values: abi/missing_value.h. The calendar is
//   Gregorian, but that years divisible by 4000 have 365 days.

#ifndef JWNLS_ABI_SERVICES_H_
#define JWNLS_ABI_SERVICES_H_

#include "abi/host_tables.h"

typedef struct jw_locale_handle jw_locale_handle;

// Each signature stands once, as a list of arguments, of which C has a type for each unit and
// integer and C++ a template besides. (clang-format takes such a list for a product.)
// clang-format off
// NOLINTBEGIN(bugprone-macro-parentheses): the arguments are types

// ---- Formatting of dates and datetimes

/// Formats a date by a date pattern of the record. Style 1: date pattern 2; 2: date pattern 3; any
/// other: date pattern 1. A year of 0 to 99 stands for 1950 to 2049. Trailing blanks go.
/// JW_OK; JW_DOES_NOT_FIT with what fits, and its length. Nothing is written on JW_OUT_OF_RANGE
/// (parts that form no date from 1582 to 20000), JW_NOT_POSSIBLE (the pattern holds a directive
/// that a date does not have) and JW_CALENDAR_FAILED.
#define JW_FORMAT_DATE_ARGUMENTS(unit)                                                 \
  (jw_locale_handle* handle, int32_t month, int32_t day, int32_t year, uint32_t style, \
   unit* out, int64_t capacity, int64_t* length)

/// Formats a datetime value: slots 44 and 80 by the time pattern (style not read), slots 23 and 82
/// by the style-0 pattern for style 0 and the datetime pattern for any other. Statuses as above,
/// and JW_MISSING_VALUE for a special missing value, with nothing written; any other NaN is
/// JW_OUT_OF_RANGE.
#define JW_FORMAT_DATETIME_ARGUMENTS(unit)                                              \
  (jw_locale_handle* handle, double value, uint32_t style, unit* out, int64_t capacity, \
   int64_t* length)

// ---- Formatting of numbers; the flags are those of abi/number_flags.h

/// Slot 24: formats a number.
///   width     the field, in units: its absolute value, 0 for none; below 0 the text stands left
///   decimals  digits behind the point; in the general kind significant digits, and 0 counts as 6.
///             Below 0 counts as 6, above 350 as 350; 99 asks for the best-fit kind
///   length    receives the field or the text, whichever is longer; may be null in the plain kinds
/// Halves are rounded up on the exact expansion of the stored value. A special missing value shows
/// as its character, any other NaN as ".". Infinities show as "Inf" and "-Inf", and need a width.
/// JW_OK. JW_DOES_NOT_FIT: the field, but not past the capacity, is filled with "*", and `*length`
/// is what was needed. JW_GROUPING_FAILED: ungrouped text. JW_DECIMALS_DROPPED (decimal-aligned):
/// the text with fewer decimals or in exponent form. JW_INVALID_WIDTH (width-bound kinds): "*",
/// nothing for a width of 0. Nothing is written on JW_NOT_POSSIBLE (more than 350 digits) and
/// JW_NO_MISSING_SYMBOL.
/// When the kernel's formatter_state is 0 and it has a formatter, the host's is called instead.
///
/// Slot 30: a currency amount, the record's currency symbol directly in front of the grouped number
/// in the field. JW_GROUPING_FAILED counts as JW_OK. Any other failure is that of the number in
/// what the symbol leaves of field and capacity, and `*length` counts the symbol in; the symbol may
/// then be missing. A capacity below the symbol writes the needed length alone: JW_DOES_NOT_FIT.
///
/// Slot 31: a percentage, a hundred times the value with "%" behind it. Statuses are those of the
/// number in what "%" and parentheses leave of field and capacity; `*length` counts them in.
/// Slots 30 and 31 require `length`.
#define JW_FORMAT_NUMBER_ARGUMENTS(unit)                                                    \
  (jw_locale_handle* handle, double value, int32_t width, int32_t decimals, uint32_t flags, \
   unit* out, int64_t capacity, int64_t* length)

/// What slots 55 and 59 may be told besides.
typedef struct jw_float_options {
  uint8_t flags;  // bit 0: `missing_symbol` is what the "." missing value shows; else "." is
  uint8_t zero_1[3];
  char16_t missing_symbol;  // 0 with bit 0: JW_NO_MISSING_SYMBOL
} jw_float_options;

/// Slots 55 and 59: as slot 24; `options` may be null. Slot 59's field, capacity test and needed
/// length count units; where the units fit and their bytes do not, the whole units that fit are
/// written, `*length` is their bytes, and the status is JW_DOES_NOT_FIT.
#define JW_FORMAT_NUMBER_WITH_OPTIONS_ARGUMENTS(unit)                                       \
  (jw_locale_handle* handle, double value, int32_t width, int32_t decimals, uint32_t flags, \
   unit* out, int64_t capacity, int64_t* length, const jw_float_options* options)

/// Formats an integer.
///   width           the field, below 1 none; in units of the output (bytes), like every count here
///   minimum_digits  zeros are added up to it, separators count; below 0 counts as 6. 0 with the
///                   value 0 is an empty text
/// JW_OK, or JW_DOES_NOT_FIT. Where width or minimum exceed the capacity nothing is written. Else
/// all units of the capacity are set to 0 first; a text that is longer is delivered from its
/// low-order end, and `*length` is the whole length.
///
/// Slot 29: a pointer in capital hexadecimal digits, "NIL" for 0. The width's absolute value is the
/// field, minimum_digits is not read, and a field longer than the capacity is delivered likewise.
#define JW_FORMAT_INTEGER_ARGUMENTS(integer, unit)                                 \
  (jw_locale_handle* handle, integer value, int32_t width, int32_t minimum_digits, \
   uint32_t flags, unit* out, int64_t capacity, int64_t* length)

// ---- Reading of dates, datetimes, periods and times; the modes are those of abi/reading_modes.h

/// Slots 32 and 83: reads a date value, or with JW_READ_DATETIME a datetime value. A datetime takes
/// the whole text: the datetime pattern, or a date alone (midnight), or a date and a time of day
/// with blanks and at most one of "T", "t", "," and ":" between them. Trailing blanks never matter.
/// A zone is read and not applied: the value is the wall clock's. Slots 33 and 84: reads the label
/// of a month, week or quarter ("Month3, 2024", "Week9 2024", "W9, 2024", "Quarter1 2024", "Qtr1
/// 2024", "Q1, 2024", "Mar-2024", "3/2024", in any case) as the date value of the period's first
/// day. Two digits of a year belong to the hundred years from the host's option JW_NAME_YEARCUTOFF
/// on. Slots 34 and 85: reads a time value. Text behind a single pattern's end is left to the
/// caller.
///   length    units; below 0 counts as 0
///   consumed  units read, leading blanks included
/// JW_OK. JW_NO_MATCH: the value is the standard missing value and `*consumed` 0, but that slots 34
/// and 85 leave the value alone where a single pattern fails. Parts that form no date do not match.
#define JW_READ_DATE_ARGUMENTS(unit)                                                         \
  (jw_locale_handle* handle, const unit* text, int64_t length, uint32_t mode, double* value, \
   uint64_t* consumed)

// ---- Reading of numbers

/// Reads a number: digits with grouping symbols anywhere before the decimal symbol, an exponent
/// ("E", "e", "D", "d"), blanks (spaces and tabs) around. An empty or blank text and "." are the
/// standard missing value; ".A" to ".Z", in any case, and "._" the special ones. The handle may be
/// null: then the symbols are "." and ",".
///   text, length  8-bit text is read byte by byte and compared with the record's symbols as they
///                 are, so that a symbol above 255 does not occur in it
///   value         always written; the standard missing value on failure
///   consumed      always written: units up to the blanks behind the number; on JW_INVALID_NUMBER
///                 the place that offends, which is the length for a sign or symbol at the end
/// JW_OK; JW_INVALID_NUMBER, also for a negative length; JW_OUT_OF_RANGE, with `*consumed` 0, for
/// an exponent above 30,800 or a value beyond the doubles. The digits are summed up in double
/// steps, which round from the 16th digit on. Digits past the 150th are dropped, and count for
/// nothing but a fraction's length.
#define JW_READ_NUMBER_ARGUMENTS(unit)                                                           \
  (jw_locale_handle* handle, const unit* text, int32_t length, double* value, int64_t* consumed)

/// Slots 76 and 77: the same with JW_READ_NUMBER_BLANK_GROUPS.
#define JW_READ_NUMBER_WITH_FLAGS_ARGUMENTS(unit)                                                \
  (jw_locale_handle* handle, const unit* text, int32_t length, double* value, int64_t* consumed, \
   uint32_t flags)

/// The same with a converter, which may be null, for symbols above 127 other than the no-break
/// space; where it fails, the symbol is ",". Slot 57 reads 8-bit text and converts the grouping
/// symbol alone; slot 58 reads EBCDIC (code page 037, but "[" 0xAD, "]" 0xBD, "^" 0x5F) and
/// converts both.
#define JW_READ_CONVERTED_NUMBER_ARGUMENTS                                                       \
  (jw_locale_handle* handle, const char* text, int32_t length, double* value, int64_t* consumed, \
   jw_converter* converter)

/// Reads an integer: a sign (not "-" for unsigned types), digits with grouping symbols anywhere but
/// in front. Spaces may stand before the sign and the digits; a text of nothing else is 0.
///   flags     JW_READ_INTEGER_... of abi/number_flags.h
///   consumed  units up to where the digits end, or what offends
/// JW_OK, with whatever follows a space or zero unit left to the caller; JW_INVALID_NUMBER with the
/// digits so far as value; JW_INTEGER_OVERFLOW with 0; JW_DOES_NOT_FIT when a fraction other than
/// zero was dropped; JW_NEGATIVE_LENGTH with nothing written.
#define JW_READ_INTEGER_ARGUMENTS(integer, unit)                                               \
  (jw_locale_handle* handle, const unit* text, int64_t length, uint32_t flags, integer* value, \
   int64_t* consumed)

// NOLINTEND(bugprone-macro-parentheses)
// clang-format on

#ifdef __cplusplus
extern "C" {
#endif

typedef uint32_t jw_format_date JW_FORMAT_DATE_ARGUMENTS(char16_t);
typedef uint32_t jw_format_date_8bit JW_FORMAT_DATE_ARGUMENTS(char);
typedef uint32_t jw_format_datetime JW_FORMAT_DATETIME_ARGUMENTS(char16_t);
typedef uint32_t jw_format_datetime_8bit JW_FORMAT_DATETIME_ARGUMENTS(char);
typedef uint32_t jw_format_number JW_FORMAT_NUMBER_ARGUMENTS(char16_t);
typedef uint32_t jw_format_number_with_options JW_FORMAT_NUMBER_WITH_OPTIONS_ARGUMENTS(char16_t);
typedef uint32_t jw_format_number_8bit JW_FORMAT_NUMBER_WITH_OPTIONS_ARGUMENTS(char);
typedef uint32_t jw_format_int64 JW_FORMAT_INTEGER_ARGUMENTS(int64_t, char16_t);
typedef uint32_t jw_format_int64_8bit JW_FORMAT_INTEGER_ARGUMENTS(int64_t, char);
typedef uint32_t jw_format_uint64 JW_FORMAT_INTEGER_ARGUMENTS(uint64_t, char16_t);
typedef uint32_t jw_format_uint64_8bit JW_FORMAT_INTEGER_ARGUMENTS(uint64_t, char);
typedef uint32_t jw_format_int32 JW_FORMAT_INTEGER_ARGUMENTS(int32_t, char16_t);
typedef uint32_t jw_format_int32_8bit JW_FORMAT_INTEGER_ARGUMENTS(int32_t, char);
typedef uint32_t jw_format_uint32 JW_FORMAT_INTEGER_ARGUMENTS(uint32_t, char16_t);
typedef uint32_t jw_format_uint32_8bit JW_FORMAT_INTEGER_ARGUMENTS(uint32_t, char);
typedef uint32_t jw_read_date JW_READ_DATE_ARGUMENTS(char16_t);
typedef uint32_t jw_read_date_8bit JW_READ_DATE_ARGUMENTS(char);
typedef uint32_t jw_read_number JW_READ_NUMBER_ARGUMENTS(char16_t);
typedef uint32_t jw_read_number_8bit JW_READ_NUMBER_ARGUMENTS(char);
typedef uint32_t jw_read_number_with_flags JW_READ_NUMBER_WITH_FLAGS_ARGUMENTS(char16_t);
typedef uint32_t jw_read_number_8bit_with_flags JW_READ_NUMBER_WITH_FLAGS_ARGUMENTS(char);
typedef uint32_t jw_read_converted_number JW_READ_CONVERTED_NUMBER_ARGUMENTS;
typedef uint32_t jw_read_int64 JW_READ_INTEGER_ARGUMENTS(int64_t, char16_t);
typedef uint32_t jw_read_int64_8bit JW_READ_INTEGER_ARGUMENTS(int64_t, char);
typedef uint32_t jw_read_uint64 JW_READ_INTEGER_ARGUMENTS(uint64_t, char16_t);
typedef uint32_t jw_read_uint64_8bit JW_READ_INTEGER_ARGUMENTS(uint64_t, char);
typedef uint32_t jw_read_int32 JW_READ_INTEGER_ARGUMENTS(int32_t, char16_t);
typedef uint32_t jw_read_int32_8bit JW_READ_INTEGER_ARGUMENTS(int32_t, char);
typedef uint32_t jw_read_uint32 JW_READ_INTEGER_ARGUMENTS(uint32_t, char16_t);
typedef uint32_t jw_read_uint32_8bit JW_READ_INTEGER_ARGUMENTS(uint32_t, char);

// ---- The handle's own services

/// Does nothing. The handle may be null. Returns 0.
typedef uint32_t jw_no_operation(jw_locale_handle* handle);

/// Compares two UTF-16 texts by unit value: -1, 0 or 1. A null text or a negative length is an
/// empty text. Mode 1 pads the shorter text with blanks. The handle may be null.
typedef int32_t jw_compare_texts(jw_locale_handle* handle, const char16_t* a, int64_t a_length,
                                 const char16_t* b, int64_t b_length, uint32_t mode);

/// Points `area` into the locale record, by selector (enum jw_record_area). The area is the
/// handle's and not to be written. JW_OK; JW_UNKNOWN_SELECTOR writes nothing.
typedef uint32_t jw_record_area_service(jw_locale_handle* handle, uint32_t selector, void** area);

/// Copies the canonical locale name into a buffer of 64 units. JW_OK; JW_NULL_ARGUMENT when name or
/// length is null, with nothing written.
typedef uint32_t jw_copy_locale_name(jw_locale_handle* handle, char16_t* name, int64_t* length);

/// Makes a track that destroys locale handles with its entries, for the host to keep as its cache
/// of handles (word 144 of the NLS context) and to destroy; null when it could not be created.
typedef jw_track* jw_create_handle_cache(jw_locale_handle* handle);

/// Gives the handle another time zone. `zone` is UTF-16, `length` units; null or 0 units: JW_OK,
/// nothing changes. JW_LOOKUP_FAILED when the zone cannot be opened or the length is negative; the
/// handle then keeps the zone that it has. The handle owns its zones and caches the previous ones.
/// Threads that format meanwhile see either.
typedef uint32_t jw_set_time_zone(jw_locale_handle* handle, const char16_t* zone, int64_t length);

#ifdef __cplusplus
}  // extern "C"
#endif

// ---- The table: slot, type and name of each service. Where two slots hold the same service, the
// second is named `..._too`.

// clang-format off
#define JW_SERVICES(slot)                                               \
  slot(22, jw_format_date, format_date)                                 \
  slot(23, jw_format_datetime, format_datetime)                         \
  slot(24, jw_format_number, format_number)                             \
  slot(25, jw_format_int64, format_int64)                               \
  slot(26, jw_format_int64, format_int64_too)                           \
  slot(27, jw_format_uint64, format_uint64)                             \
  slot(28, jw_format_uint64, format_uint64_too)                         \
  slot(29, jw_format_uint64, format_pointer)                            \
  slot(30, jw_format_number, format_currency)                           \
  slot(31, jw_format_number, format_percent)                            \
  slot(32, jw_read_date, read_date)                                     \
  slot(33, jw_read_date, read_period)                                   \
  slot(34, jw_read_date, read_time)                                     \
  slot(35, jw_read_number, read_number)                                 \
  slot(36, jw_read_int64, read_int64)                                   \
  slot(37, jw_read_int64, read_int64_too)                               \
  slot(38, jw_read_uint64, read_uint64)                                 \
  slot(39, jw_read_uint64, read_uint64_too)                             \
  slot(40, jw_no_operation, no_operation_40)                            \
  slot(41, jw_no_operation, no_operation_41)                            \
  slot(42, jw_no_operation, no_operation_42)                            \
  slot(43, jw_compare_texts, compare_texts)                             \
  slot(44, jw_format_datetime, format_time)                             \
  slot(45, jw_record_area_service, record_area)                         \
  slot(46, jw_copy_locale_name, copy_locale_name)                       \
  slot(47, jw_format_int32, format_int32)                               \
  slot(48, jw_format_uint32, format_uint32)                             \
  slot(49, jw_read_int32, read_int32)                                   \
  slot(50, jw_read_uint32, read_uint32)                                 \
  slot(51, jw_format_int32, format_int32_too)                           \
  slot(52, jw_format_uint32, format_uint32_too)                         \
  slot(53, jw_read_int32, read_int32_too)                               \
  slot(54, jw_read_uint32, read_uint32_too)                             \
  slot(55, jw_format_number_with_options, format_number_with_options)   \
  slot(56, jw_read_number_8bit, read_number_8bit)                       \
  slot(57, jw_read_converted_number, read_number_converted)             \
  slot(58, jw_read_converted_number, read_number_ebcdic)                \
  slot(59, jw_format_number_8bit, format_number_8bit)                   \
  slot(60, jw_format_int64_8bit, format_int64_8bit)                     \
  slot(61, jw_format_int64_8bit, format_int64_8bit_too)                 \
  slot(62, jw_format_uint64_8bit, format_uint64_8bit)                   \
  slot(63, jw_format_uint64_8bit, format_uint64_8bit_too)               \
  slot(64, jw_read_int64_8bit, read_int64_8bit)                         \
  slot(65, jw_read_int64_8bit, read_int64_8bit_too)                     \
  slot(66, jw_read_uint64_8bit, read_uint64_8bit)                       \
  slot(67, jw_read_uint64_8bit, read_uint64_8bit_too)                   \
  slot(68, jw_format_int32_8bit, format_int32_8bit)                     \
  slot(69, jw_format_uint32_8bit, format_uint32_8bit)                   \
  slot(70, jw_read_int32_8bit, read_int32_8bit)                         \
  slot(71, jw_read_uint32_8bit, read_uint32_8bit)                       \
  slot(72, jw_format_int32_8bit, format_int32_8bit_too)                 \
  slot(73, jw_format_uint32_8bit, format_uint32_8bit_too)               \
  slot(74, jw_read_int32_8bit, read_int32_8bit_too)                     \
  slot(75, jw_read_uint32_8bit, read_uint32_8bit_too)                   \
  slot(76, jw_read_number_with_flags, read_number_with_flags)           \
  slot(77, jw_read_number_8bit_with_flags, read_number_8bit_with_flags) \
  slot(78, jw_create_handle_cache, create_handle_cache)                 \
  slot(79, jw_set_time_zone, set_time_zone)                             \
  slot(80, jw_format_datetime_8bit, format_time_8bit)                   \
  slot(81, jw_format_date_8bit, format_date_8bit)                       \
  slot(82, jw_format_datetime_8bit, format_datetime_8bit)               \
  slot(83, jw_read_date_8bit, read_date_8bit)                           \
  slot(84, jw_read_date_8bit, read_period_8bit)                         \
  slot(85, jw_read_date_8bit, read_time_8bit)
// clang-format on

#define JW_FIRST_SLOT 22

#define JW_SERVICE_MEMBER(slot, type, name) type* name;
typedef struct jw_service_table {
  JW_SERVICES(JW_SERVICE_MEMBER)
} jw_service_table;
#undef JW_SERVICE_MEMBER

#define JW_SERVICE_PLACE(slot, type, name) JW_AT_WORD(jw_service_table, name, (slot)-JW_FIRST_SLOT);
JW_SERVICES(JW_SERVICE_PLACE)
#undef JW_SERVICE_PLACE
JW_SIZE_IS(jw_service_table, 64 * 8);
JW_AT_OFFSET(jw_float_options, missing_symbol, 4);

#ifdef __cplusplus
namespace jwnls {

using LocaleHandle = ::jw_locale_handle;
using ServiceTable = ::jw_service_table;
using FloatOptions = ::jw_float_options;

template <typename Unit>
using FormatDate = std::uint32_t JW_FORMAT_DATE_ARGUMENTS(Unit);
template <typename Unit>
using FormatDatetime = std::uint32_t JW_FORMAT_DATETIME_ARGUMENTS(Unit);
template <typename Unit>
using FormatNumber = std::uint32_t JW_FORMAT_NUMBER_ARGUMENTS(Unit);
template <typename Unit>
using FormatNumberWithOptions = std::uint32_t JW_FORMAT_NUMBER_WITH_OPTIONS_ARGUMENTS(Unit);
template <typename Integer, typename Unit>
using FormatInteger = std::uint32_t JW_FORMAT_INTEGER_ARGUMENTS(Integer, Unit);
template <typename Unit>
using ReadDate = std::uint32_t JW_READ_DATE_ARGUMENTS(Unit);
template <typename Unit>
using ReadNumber = std::uint32_t JW_READ_NUMBER_ARGUMENTS(Unit);
template <typename Unit>
using ReadNumberWithFlags = std::uint32_t JW_READ_NUMBER_WITH_FLAGS_ARGUMENTS(Unit);
template <typename Integer, typename Unit>
using ReadInteger = std::uint32_t JW_READ_INTEGER_ARGUMENTS(Integer, Unit);

}  // namespace jwnls
#endif

#endif  // JWNLS_ABI_SERVICES_H_
