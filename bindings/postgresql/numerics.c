#include "bindings/postgresql/numerics.h"

#include <string.h>

#include "fmgr.h"
#include "utils/builtins.h"
#include "utils/numeric.h"

/* A numeric is stored as a head and groups of four digits, the first of them at a power of 10,000
   that is called the weight; zeros at both ends are left out. The short head has two bytes: */
enum {
  short_form = 0x8000,
  short_negative = 0x2000,
  short_scale_shift = 7,
  short_scale_mask = 0x1F80,
  short_weight_mask = 0x7F, /* of seven bits, two's complement */
  /* the long one four: sign and scale, then the weight. */
  form_mask = 0xC000,
  long_negative = 0x4000,
  special_form = 0xC000,
  long_scale_mask = 0x3FFF,
  group_digits = 4,
  longest_quick = 100 /* digits, so that the short head can say scale and weight */
};

static Datum numeric_by_server(const char* decimal) {
  return DirectFunctionCall3(numeric_in, CStringGetDatum(decimal), ObjectIdGetDatum(InvalidOid),
                             Int32GetDatum(-1));
}

static inline int16 four_digits(const char* at) {
  return (int16)(at[0] * 1000 + at[1] * 100 + at[2] * 10 + at[3] - '0' * 1111);
}

Datum numeric_of_decimal(char* decimal, size_t length) {
  if (length > longest_quick) return numeric_by_server(decimal);
  const bool negative = *decimal == '-';
  char* const digits = decimal + negative;
  char* const end = decimal + length;
  const char* point = end;
  while (point != digits && *--point != '.') continue;
  if (*point != '.') point = end;
  const int integers = (int)(point - digits);
  const int scale = point == end ? 0 : (int)(end - point - 1);
  if (scale > short_scale_mask >> short_scale_shift) return numeric_by_server(decimal);

  /* Zeros make whole groups of the first and the last one. */
  memset(digits - (group_digits - 1), '0', group_digits - 1);
  memset(end, '0', group_digits - 1);
  const int integer_groups = (integers + group_digits - 1) / group_digits;
  int16 groups[longest_quick / group_digits + 2];
  int count = 0;
  const char* at = point - integer_groups * group_digits;
  for (; at < point; at += group_digits) groups[count++] = four_digits(at);
  for (++at; at < end; at += group_digits) groups[count++] = four_digits(at);
  int weight = integer_groups - 1;
  const int16* first = groups;
  while (count > 0 && *first == 0) ++first, --count, --weight;
  while (count > 0 && first[count - 1] == 0) --count;
  if (count == 0) weight = 0;

  const uint16 head = (uint16)(short_form | (negative && count > 0 ? short_negative : 0) |
                               scale << short_scale_shift | (weight & short_weight_mask));
  const Size size = VARHDRSZ + sizeof head + (Size)count * sizeof *groups;
  char* numeric = palloc(size);
  SET_VARSIZE(numeric, size);
  memcpy(VARDATA(numeric), &head, sizeof head);
  memcpy(VARDATA(numeric) + sizeof head, first, (size_t)count * sizeof *groups);
  return PointerGetDatum(numeric);
}

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
    weight = (int)((head & short_weight_mask) ^ 0x40) - 0x40;
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
