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

/* What four groups, as two pairs, count for where ten to a power is divided out of them: times
   these, the division by the power of five is done, as a product with its inverse modulo 2^64 is
   one where nothing is left; that by the power of two follows. */
typedef struct PairWeights {
  uint64 first;
  uint64 second;
} PairWeights;

static inline uint64 integer_of_groups(uint64 groups, unsigned power) {
#define FIFTH UINT64CONST(0xCCCCCCCCCCCCCCCD)
#define FIFTH_2 (FIFTH * FIFTH)
#define FIFTH_4 (FIFTH_2 * FIFTH_2)
#define FIFTH_8 (FIFTH_4 * FIFTH_4)
#define PAIR(inverse) \
  { UINT64CONST(100000000) * (inverse), (inverse) }
#define FOUR_FROM(first) \
  PAIR(first), PAIR((first)*FIFTH), PAIR((first)*FIFTH_2), PAIR((first)*FIFTH_2* FIFTH)
  static const PairWeights weights[] = {FOUR_FROM(1), FOUR_FROM(FIFTH_4), FOUR_FROM(FIFTH_8),
                                        FOUR_FROM(FIFTH_8 * FIFTH_4), PAIR(FIFTH_8 * FIFTH_8)};
#undef FOUR_FROM
#undef PAIR
#undef FIFTH_8
#undef FIFTH_4
#undef FIFTH_2
#undef FIFTH
  const uint64 pairs = (groups & UINT64CONST(0x0000FFFF0000FFFF)) * 10000 +
                       (groups >> 16 & UINT64CONST(0x0000FFFF0000FFFF));
  return ((pairs & 0xFFFFFFFF) * weights[power].first + (pairs >> 32) * weights[power].second) >>
         power;
}

/* A numeric as value / 10^scale; false of what takes more than sixteen digits, is stored apart, or
   no number. */
static inline bool scaled_of_numeric(Datum numeric, int64* value, int32* scale) {
  const char* at = DatumGetPointer(numeric);
  unsigned bytes = 0;
  if (likely(VARATT_IS_SHORT(at))) { /* as it stands in a row; apart: of one byte, too few */
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
  const unsigned decimals = (head & short_scale_mask) >> short_scale_shift;
  const int twice_weight = (signed char)(head << 1);
  /* Four groups, from the first one stored on, have so many digits behind those decimals: zeros. */
  const unsigned surplus = (unsigned)(3 * group_digits - twice_weight * 2) - decimals;
  const unsigned most_bytes = sizeof head + 4 * sizeof(int16);
  if ((head & form_mask) != short_form || bytes > most_bytes || surplus > 16) return false;
  uint64 groups = 0;
  const unsigned two_groups_bytes = sizeof head + 2 * sizeof(int16);
  if (likely(bytes >= two_groups_bytes)) {
    /* Two from both ends, which may be the same ones. */
    uint32 first, last;
    memcpy(&first, at + sizeof head, sizeof first);
    memcpy(&last, at + bytes - sizeof last, sizeof last);
    groups = first | (uint64)last << 8 * (bytes - two_groups_bytes);
  } else if (bytes > sizeof head) {
    memcpy(&groups, at + sizeof head, sizeof(int16));
  }
  const int64 magnitude = (int64)integer_of_groups(groups, surplus);
  *value = (head & short_negative) != 0 ? -magnitude : magnitude;
  *scale = (int32)decimals;
  return true;
}

#endif

#endif /* JWNLS_BINDINGS_POSTGRESQL_NUMERICS_H_ */
