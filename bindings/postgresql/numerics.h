/* The server's numeric from decimals as text, and to integers or text, without its arithmetic: in
   the form in which numerics are stored, which no version may change. */

#ifndef JWNLS_BINDINGS_POSTGRESQL_NUMERICS_H_
#define JWNLS_BINDINGS_POSTGRESQL_NUMERICS_H_

#include <string.h>

#include "postgres.h"

/* "-1234.50", terminated, keeping its decimals. So many bytes behind it may be read, and do not
   matter. */
enum { decimal_margin = 9 };
Datum numeric_of_decimal(const char* text, size_t length);

/* The decimal that any numeric is; what does not fit the room is in memory of the context. Null of
   NaN and the infinities. */
enum { decimal_room = 128 };
const char* decimal_of_numeric(Datum numeric, char room[decimal_room], size_t* length);

/* A numeric is stored as a head and groups of four digits, the first of them at a power of 10,000
   that is called the weight; zeros at both ends are left out. The short head has two bytes: */
enum {
  short_form = 0x8000,
  short_negative = 0x2000,
  short_scale_shift = 7,
  short_scale_mask = 0x1F80,
  short_weight_mask = 0x7F, /* of seven bits, two's complement */
  short_weight_sign = 0x40,
  /* the long one four: sign and scale, then the weight. */
  form_mask = 0xC000,
  long_negative = 0x4000,
  special_form = 0xC000,
  long_scale_mask = 0x3FFF,
  group_digits = 4,
  head_bytes = VARHDRSZ + 2
};

#ifdef WORDS_BIGENDIAN

static inline bool scaled_of_numeric(Datum numeric, int64* value, int32* scale) { return false; }

#else

/* Four groups as one integer, the first lowest. */
static inline uint64 sixteen_digits(uint64 groups) {
  const uint64 eights = (groups & UINT64CONST(0x0000FFFF0000FFFF)) * 10000 +
                        (groups >> 16 & UINT64CONST(0x0000FFFF0000FFFF));
  return (eights & 0xFFFFFFFF) * 100000000 + (eights >> 32);
}

/* Where nothing is left, a product with the inverse of 5^power, modulo 2^64, divides by that. */
static inline uint64 divided_by_power_of_ten(uint64 dividend, unsigned power) {
#define FIFTH UINT64CONST(0xCCCCCCCCCCCCCCCD)
#define FIFTH_2 (FIFTH * FIFTH)
#define FIFTH_4 (FIFTH_2 * FIFTH_2)
#define FIFTH_8 (FIFTH_4 * FIFTH_4)
#define FOUR_FROM(first) (first), (first)*FIFTH, (first)*FIFTH_2, (first)*FIFTH_2* FIFTH
  static const uint64 inverses[] = {FOUR_FROM(1), FOUR_FROM(FIFTH_4), FOUR_FROM(FIFTH_8),
                                    FOUR_FROM(FIFTH_8 * FIFTH_4), FIFTH_8 * FIFTH_8};
#undef FOUR_FROM
#undef FIFTH_8
#undef FIFTH_4
#undef FIFTH_2
#undef FIFTH
  return (dividend >> power) * inverses[power];
}

/* A numeric as value / 10^scale; false of what takes more than sixteen digits, is stored apart, or
   no number. */
static inline bool scaled_of_numeric(Datum numeric, int64* value, int32* scale) {
  const char* at = DatumGetPointer(numeric);
  unsigned bytes = 0;
  if (likely(VARATT_IS_SHORT(at) && !VARATT_IS_EXTERNAL(at))) { /* as it stands in a row */
    bytes = VARSIZE_SHORT(at) - VARHDRSZ_SHORT;
    at = VARDATA_SHORT(at);
  } else if (VARATT_IS_4B_U(at)) { /* as one is computed */
    bytes = VARSIZE_4B(at) - VARHDRSZ;
    at = VARDATA_4B(at);
  } else {
    return false;
  }
  uint16 head;
  memcpy(&head, at, sizeof head);
  at += sizeof head;
  const unsigned count = (bytes - (unsigned)sizeof head) / sizeof(int16);
  const unsigned decimals = (head & short_scale_mask) >> short_scale_shift;
  const int weight = (int)((head & short_weight_mask) ^ short_weight_sign) - short_weight_sign;
  /* Four groups, from the first one stored on, have so many digits behind those decimals: zeros. */
  const unsigned surplus = (unsigned)(group_digits * (3 - weight)) - decimals;
  if ((head & form_mask) != short_form || count > 4 || surplus > 16) return false;
  uint64 groups = 0;
  if (likely(count > 1)) {
    /* Two from both ends, which may be the same ones. */
    uint32 first, last;
    memcpy(&first, at, sizeof first);
    memcpy(&last, at + (count - 2) * sizeof(int16), sizeof last);
    groups = first | (uint64)last << 16 * (count - 2);
  } else if (count == 1) {
    memcpy(&groups, at, sizeof(int16));
  }
  const int64 magnitude = (int64)divided_by_power_of_ten(sixteen_digits(groups), surplus);
  *value = (head & short_negative) != 0 ? -magnitude : magnitude;
  *scale = (int32)decimals;
  return true;
}

#endif

#endif /* JWNLS_BINDINGS_POSTGRESQL_NUMERICS_H_ */
