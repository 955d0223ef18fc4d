#include "module/frame/service_table.h"

#include "module/format_dates/date_services.h"
#include "module/format_numbers/integer_services.h"
#include "module/format_numbers/number_services.h"
#include "module/frame/handle_services.h"
#include "module/read_dates/date_services.h"
#include "module/read_numbers/number_services.h"

namespace jwnls {

constexpr ServiceTable services = {
    .format_date = format_date<char16_t>,
    .format_datetime = format_datetime<char16_t>,
    .format_number = format_number,
    .format_int64 = format_integer<std::int64_t, char16_t>,
    .format_int64_too = format_integer<std::int64_t, char16_t>,
    .format_uint64 = format_integer<std::uint64_t, char16_t>,
    .format_uint64_too = format_integer<std::uint64_t, char16_t>,
    .format_pointer = format_pointer,
    .format_currency = format_currency,
    .format_percent = format_percent,
    .read_date = read_date<char16_t>,
    .read_period = read_period<char16_t>,
    .read_time = read_time<char16_t>,
    .read_number = read_number<char16_t>,
    .read_int64 = read_integer<std::int64_t, char16_t>,
    .read_int64_too = read_integer<std::int64_t, char16_t>,
    .read_uint64 = read_integer<std::uint64_t, char16_t>,
    .read_uint64_too = read_integer<std::uint64_t, char16_t>,
    .no_operation_40 = no_operation,
    .no_operation_41 = no_operation,
    .no_operation_42 = no_operation,
    .compare_texts = compare_texts,
    .format_time = format_time<char16_t>,
    .record_area = record_area,
    .copy_locale_name = copy_locale_name,
    .format_int32 = format_integer<std::int32_t, char16_t>,
    .format_uint32 = format_integer<std::uint32_t, char16_t>,
    .read_int32 = read_integer<std::int32_t, char16_t>,
    .read_uint32 = read_integer<std::uint32_t, char16_t>,
    .format_int32_too = format_integer<std::int32_t, char16_t>,
    .format_uint32_too = format_integer<std::uint32_t, char16_t>,
    .read_int32_too = read_integer<std::int32_t, char16_t>,
    .read_uint32_too = read_integer<std::uint32_t, char16_t>,
    .format_number_with_options = format_number_with_options,
    .read_number_8bit = read_number<char>,
    .read_number_converted = read_number_converted,
    .read_number_ebcdic = read_number_ebcdic,
    .format_number_8bit = format_number_8bit,
    .format_int64_8bit = format_integer<std::int64_t, char>,
    .format_int64_8bit_too = format_integer<std::int64_t, char>,
    .format_uint64_8bit = format_integer<std::uint64_t, char>,
    .format_uint64_8bit_too = format_integer<std::uint64_t, char>,
    .read_int64_8bit = read_integer<std::int64_t, char>,
    .read_int64_8bit_too = read_integer<std::int64_t, char>,
    .read_uint64_8bit = read_integer<std::uint64_t, char>,
    .read_uint64_8bit_too = read_integer<std::uint64_t, char>,
    .format_int32_8bit = format_integer<std::int32_t, char>,
    .format_uint32_8bit = format_integer<std::uint32_t, char>,
    .read_int32_8bit = read_integer<std::int32_t, char>,
    .read_uint32_8bit = read_integer<std::uint32_t, char>,
    .format_int32_8bit_too = format_integer<std::int32_t, char>,
    .format_uint32_8bit_too = format_integer<std::uint32_t, char>,
    .read_int32_8bit_too = read_integer<std::int32_t, char>,
    .read_uint32_8bit_too = read_integer<std::uint32_t, char>,
    .read_number_with_flags = read_number_with_flags<char16_t>,
    .read_number_8bit_with_flags = read_number_with_flags<char>,
    .create_handle_cache = create_handle_cache,
    .set_time_zone = set_time_zone,
    .format_time_8bit = format_time<char>,
    .format_date_8bit = format_date<char>,
    .format_datetime_8bit = format_datetime<char>,
    .read_date_8bit = read_date<char>,
    .read_period_8bit = read_period<char>,
    .read_time_8bit = read_time<char>,
};

}  // namespace jwnls
