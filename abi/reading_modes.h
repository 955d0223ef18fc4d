// The mode word of the services that read dates, datetimes, periods and times of day (slots 32 to
// 34 and 83 to 85). Bits may be combined with "|" where a comment says so.
//
// A pattern is walked in one of two dialects. Strict: literals match exactly, most numbers are
// fields of fixed width. Lenient: literals match without regard to case, a blank of the pattern may
// be absent, numbers are as long as they are, years may have two digits (60 to 99 are 1960 to 1999,
// 0 to 59 are 2000 to 2059), and more directives are known.
//
// Constants only: nothing is owned, any thread.

#ifndef JWNLS_ABI_READING_MODES_H_
#define JWNLS_ABI_READING_MODES_H_

#include "abi/language.h"

// ---- Dates and datetimes: slots 32 and 83. Periods (33 and 84) read nothing of the word: they are
// always lenient.

// Which date patterns of the record: 0 recognises the whole text among the three of them and common
// layouts; 1, 2 and 3 walk that date pattern alone, which may leave text behind its end.
#define JW_READ_PATTERN 0x3u
#define JW_READ_LENIENT 0x4u         // the lenient dialect; with 0 above: lenient recognition
#define JW_READ_LENIENT_BITS 0x1FCu  // any of these bits asks for it as well
#define JW_READ_DATETIME 0x200u      // a datetime value (seconds), not a date value (days)

// ---- Times of day: slots 34 and 85. The word is one of these values.

#define JW_READ_TIME_RECOGNITION 4u  // the whole text among the record's time patterns and layouts
#define JW_READ_TIME_PATTERN_1 1u    // the datetime pattern of the record alone, strictly
// Any other value walks the record's style-0 pattern alone, leniently when it has one of
// JW_READ_LENIENT_BITS; a single pattern may leave text behind its end.
#define JW_READ_TIME_PATTERN_2 2u
#define JW_READ_TIME_PATTERN_2_LENIENT 8u

#ifdef __cplusplus
namespace jwnls::reading_modes {
inline constexpr uint32_t pattern = JW_READ_PATTERN;
inline constexpr uint32_t lenient = JW_READ_LENIENT;
inline constexpr uint32_t lenient_bits = JW_READ_LENIENT_BITS;
inline constexpr uint32_t datetime = JW_READ_DATETIME;
inline constexpr uint32_t time_recognition = JW_READ_TIME_RECOGNITION;
inline constexpr uint32_t time_pattern_1 = JW_READ_TIME_PATTERN_1;
inline constexpr uint32_t time_pattern_2 = JW_READ_TIME_PATTERN_2;
inline constexpr uint32_t time_pattern_2_lenient = JW_READ_TIME_PATTERN_2_LENIENT;
}  // namespace jwnls::reading_modes
#endif

#endif  // JWNLS_ABI_READING_MODES_H_
