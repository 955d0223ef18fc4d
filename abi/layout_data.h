/* The block in record area 9: what layouts know of a locale beyond the record's fields.
 *
 * The locale database writes it, the module hands it out (service slot 45, selector 9) and never
 * looks inside. Another maker's database may leave the area zero: readers check the magic, the
 * version, the size and every offset before they use anything, and go by the record's fields where
 * the block is not there. The area's bytes behind the block are nobody's, and may hold anything.
 *
 *   block    = "JWLX" version:u16 bytes:u16 section:u16 {jw_layout_sections} { section's bytes }
 *   section  = the offset of its first byte from the block's start; 0: the block has no such
 * section u16      = two bytes, the low one first;  text = length:u8 { UTF-8 }
 *
 *   numbers  = minimum_grouping:u8 systems:u8
 *              system { system }              the digits 0 to 9, then the locale's own
 *   system   = digits:text decimal:text group:text money_decimal:text money_group:text minus:text
 *              plus:text percent:text per_mille:text infinity:text nan:text
 *              kind kind kind kind            number, amount, accounting, percent
 *   digits   = the zero, which the others follow in Unicode, or all ten
 *   kind     = primary:u8 secondary:u8        group sizes; 0: no groups
 *              prefix:text suffix:text negative_prefix:text negative_suffix:text
 *              U+00A4 stands for the currency's symbol; signs are already put in
 *   The digits, decimal and group symbols are single characters; texts of a system have at most 32
 *   bytes (what is no number: 64), symbols of currencies 64.
 *   minimum_grouping  1, 2 or 3: so many digits stand in front of the first group symbol at least;
 *                     0: nothing is grouped
 *
 *   common currencies, currencies = count:u16 { currency }    sorted by code; what the locale says
 *              of a currency goes before what is common; one that is in neither is written as its
 *              code, with two decimals
 *   currency   = code:3 bytes flags:u8 symbol:text narrow:text [ decimal:text group:text affixes ]
 *   affixes    = prefix:text suffix:text negative_prefix:text negative_suffix:text
 *                of amounts in this currency; without U+00A4: those of all amounts
 *   flags        bit 0, bit 1: the symbol's first, last character takes a blank beside a digit;
 * bits 2, 3: of the narrow symbol; bit 4: money is written otherwise in this currency bits 5 to 7:
 * decimals of the currency
 *
 *   date names = count:u16 { name } count:u8 { exact }
 *   name       = meaning:u16 text        folded as library/texts/folding.h says, sorted by bytes
 *   meaning      bits 0 to 3: month, from 1; bits 4 to 7: weekday, from 1 for Sunday, 8 for two of
 *                them; bit 8: a word that may stand between; bit 9: a name of two months; bit 10:
 *                one that a related language gives to another month; bit 11: the beginning of a
 * name exact      = month:u8 text           as it is written: a name that folds to that of another
 *
 *   date patterns = flags:u8 full:text joint joint joint joint count:u8 { text }
 *   flags        bit 0: short dates begin with two digits of the year
 *   full         full dates, in the directives of the record's patterns
 *   joint      = flags:u8 before:text between:text behind:text
 *                around date and time, with a short, medium, long and full date; bit 0: the time
 *                stands first
 *   the last texts are the weekdays in full dates from Sunday on, 7 or 0: those of the record
 */
#ifndef JWNLS_ABI_LAYOUT_DATA_H_
#define JWNLS_ABI_LAYOUT_DATA_H_

#include <stdint.h>

#define JW_LAYOUT_DATA_MAGIC "JWLX"
enum { JW_LAYOUT_DATA_VERSION = 1, JW_LAYOUT_DATA_CAPACITY = 30624 };

/* The sections, in the order of their offsets. */
enum {
  JW_LAYOUT_NUMBERS = 0,
  JW_LAYOUT_COMMON_CURRENCIES = 1,
  JW_LAYOUT_CURRENCIES = 2,
  JW_LAYOUT_DATE_NAMES = 3,
  JW_LAYOUT_DATE_PATTERNS = 4,
  jw_layout_sections = 5
};
/* Bytes in front of the first section: magic, version, size, offsets. */
enum { JW_LAYOUT_DATA_HEAD = 8 + 2 * jw_layout_sections };

/* Kinds of a system, in their order. */
enum {
  JW_LAYOUT_NUMBER = 0,
  JW_LAYOUT_AMOUNT = 1,
  JW_LAYOUT_ACCOUNTING = 2,
  JW_LAYOUT_PERCENT = 3,
  jw_layout_kinds = 4
};

#endif /* JWNLS_ABI_LAYOUT_DATA_H_ */
