#include "bindings/postgresql/numerics.h"

#include "fmgr.h"
#include "utils/builtins.h"
#include "utils/numeric.h"

/* Digits, so that the short head can say scale and weight. */
enum { longest_quick = 100 };

static Datum numeric_by_server(const char* decimal) {
  return DirectFunctionCall3(numeric_in, CStringGetDatum(decimal), ObjectIdGetDatum(InvalidOid),
                             Int32GetDatum(-1));
}

#ifdef WORDS_BIGENDIAN

Datum numeric_of_decimal(const char* text, size_t length) { return numeric_by_server(text); }

#else

/* Of four digit values, the first lowest. */
static inline int16 group_of(uint32 values) {
  const uint32 pairs = (values * 10 + (values >> 8)) & 0x00FF00FF;
  return (int16)(pairs * 100 + (pairs >> 16));
}

/* Of eight. */
static inline uint64 two_groups(uint64 values) {
  const uint64 pairs = (values * 10 + (values >> 8)) & UINT64CONST(0x00FF00FF00FF00FF);
  const uint64 fours = (pairs * 100 + (pairs >> 16)) & UINT64CONST(0x0000FFFF0000FFFF);
  return (fours | fours >> 16) & 0xFFFFFFFF;
}

/* A decimal, its sign apart; the point is its end where it has none. */
typedef struct Decimal {
  const char* digits;
  const char* point;
  const char* end;
  unsigned integers;
  unsigned scale;
  bool negative;
} Decimal;

static inline Datum make_numeric(char* numeric, const Decimal* decimal, int weight,
                                 unsigned count) {
  const uint16 head = (uint16)(short_form | (decimal->negative && count > 0 ? short_negative : 0) |
                               decimal->scale << short_scale_shift | (weight & short_weight_mask));
  memcpy(VARDATA(numeric), &head, sizeof head);
  SET_VARSIZE(numeric, head_bytes + count * sizeof(int16));
  return PointerGetDatum(numeric);
}

/* The values of four digits, or of what stands there instead; the first lowest. */
static inline uint32 four_values(const char* digits) {
  uint32 word;
  memcpy(&word, digits, sizeof word);
  return word ^ 0x30303030;
}

/* Of up to eight digits in front of a point and up to seven behind it, all at once. */
static inline Datum short_numeric(const Decimal* decimal) {
  uint64 integers = (uint64)four_values(decimal->digits) << 8 * (8 - decimal->integers);
  if (likely(decimal->integers > 4)) {
    /* Not as one word: it would reach over what was stored last, and wait for memory. */
    integers = (uint32)integers | (uint64)four_values(decimal->point - 4) << 32;
  }
  uint64 fraction;
  memcpy(&fraction, decimal->point + 1, sizeof fraction);
  fraction =
      (fraction ^ UINT64CONST(0x3030303030303030)) & ((UINT64CONST(1) << 8 * decimal->scale) - 1);
  const uint64 groups = two_groups(integers) | two_groups(fraction) << 32;
  char* numeric = palloc(head_bytes + sizeof groups);
  if (unlikely(groups == 0)) return make_numeric(numeric, decimal, 0, 0);
  const int first = __builtin_ctzll(groups) / 16;
  const int behind = __builtin_clzll(groups) / 16;
  const uint64 stored = groups >> 16 * first;
  memcpy(numeric + head_bytes, &stored, sizeof stored);
  return make_numeric(numeric, decimal, 1 - first, (unsigned)(4 - first - behind));
}

/* Digits are read four at a time; of what is none, the values go: those in front of a group are
   shifted up to its end, those behind the last one are cleared. */
static Datum long_numeric(const Decimal* decimal) {
  int weight = (int)((decimal->integers - 1) / group_digits);
  unsigned count = (unsigned)weight + 1 + (decimal->scale + group_digits - 1) / group_digits;
  char* numeric = palloc(head_bytes + count * sizeof(int16));
  int16* const groups = (int16*)(numeric + head_bytes);
  int16* group = groups;
  const char* at = decimal->point - weight * group_digits;
  *group++ = group_of(four_values(decimal->digits) << 8 * (group_digits - (at - decimal->digits)));
  for (; at < decimal->point; at += group_digits) *group++ = group_of(four_values(at));
  for (++at; at < decimal->end; at += group_digits) {
    const ptrdiff_t missing = Max(group_digits - (decimal->end - at), 0);
    *group++ = group_of(four_values(at) << 8 * missing >> 8 * missing);
  }
  while (count > 0 && groups[count - 1] == 0) --count;
  unsigned zeros = 0;
  while (zeros < count && groups[zeros] == 0) ++zeros;
  memmove(groups, groups + zeros, (count - zeros) * sizeof *groups);
  weight = count == 0 ? 0 : weight - (int)zeros;
  return make_numeric(numeric, decimal, weight, count - zeros);
}

Datum numeric_of_decimal(const char* text, size_t length) {
  if (length > longest_quick) return numeric_by_server(text);
  Decimal decimal = {.negative = *text == '-', .end = text + length};
  decimal.digits = text + decimal.negative;
  decimal.point = decimal.end;
  while (decimal.point != decimal.digits && *--decimal.point != '.') continue;
  if (*decimal.point != '.') decimal.point = decimal.end;
  decimal.integers = (unsigned)(decimal.point - decimal.digits);
  decimal.scale = decimal.point == decimal.end ? 0 : (unsigned)(decimal.end - decimal.point - 1);
  if (likely(decimal.integers - 1 < 8 && decimal.scale <= 7)) return short_numeric(&decimal);
  if (decimal.integers == 0 || decimal.scale > short_scale_mask >> short_scale_shift) {
    return numeric_by_server(text);
  }
  return long_numeric(&decimal);
}

#endif

static const char pairs[] =
    "0001020304050607080910111213141516171819"
    "2021222324252627282930313233343536373839"
    "4041424344454647484950515253545556575859"
    "6061626364656667686970717273747576777879"
    "8081828384858687888990919293949596979899";

static inline char* write_group(char* out, int group) {
  memcpy(out, pairs + 2 * (group / 100), 2);
  memcpy(out + 2, pairs + 2 * (group % 100), 2);
  return out + group_digits;
}

/* The first group, without zeros in front. */
static inline char* write_first_group(char* out, int group) {
  const int zeros = group >= 1000 ? 0 : group >= 100 ? 1 : group >= 10 ? 2 : 3;
  char digits[2 * group_digits];
  write_group(digits, group);
  memcpy(out, digits + zeros, group_digits); /* of a size that is known: a single move */
  return out + group_digits - zeros;
}

/* The next group of digits that are stored: nothing but zeros in front of them and behind. */
typedef struct Groups {
  const char* at;
  const char* end;
  int power; /* of 10,000, that the next one stands at */
  int weight;
} Groups;

static inline int next_group(Groups* in) {
  int16 group = 0;
  if (in->power-- <= in->weight && in->at < in->end) {
    memcpy(&group, in->at, sizeof group);
    in->at += sizeof group;
  }
  return group;
}

const char* decimal_of_numeric(Datum numeric, char room[decimal_room], size_t* length) {
  struct varlena* stored = PG_DETOAST_DATUM_PACKED(numeric);
  const char* data = VARDATA_ANY(stored);
  const char* const end = data + VARSIZE_ANY_EXHDR(stored);
  uint16 head;
  memcpy(&head, data, sizeof head);
  data += sizeof head;
  if ((head & form_mask) == special_form) return NULL;
  bool negative = (head & form_mask) == long_negative;
  int scale = head & long_scale_mask;
  int weight = 0;
  if ((head & short_form) != 0) {
    negative = (head & short_negative) != 0;
    scale = (head & short_scale_mask) >> short_scale_shift;
    weight = (int)((head & short_weight_mask) ^ short_weight_sign) - short_weight_sign;
  } else {
    int16 long_weight;
    memcpy(&long_weight, data, sizeof long_weight);
    data += sizeof long_weight;
    weight = long_weight;
  }
  if (scale + group_digits * (Max(weight, 0) + 1) > decimal_room - 2 * group_digits ||
      weight < -decimal_room) {
    char* decimal = DatumGetCString(DirectFunctionCall1(numeric_out, numeric));
    *length = strlen(decimal);
    return decimal;
  }

  char* out = room;
  if (negative) *out++ = '-';
  Groups in = {data, end, Max(weight, 0), weight};
  out = write_first_group(out, next_group(&in));
  while (in.power >= 0) out = write_group(out, next_group(&in));
  if (scale > 0) {
    *out++ = '.';
    char* const point = out;
    while (out < point + scale) out = write_group(out, next_group(&in));
    out = point + scale;
  }
  *length = (size_t)(out - room);
  return room;
}
