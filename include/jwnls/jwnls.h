/* jwnls.h - dates, times and numbers as each of 805 locales writes them: reads and writes. C99.

   A layout is one way to write one kind of value: a locale, a kind, options. It is made once for a
   column, never changes, and any number of threads may use it at once, before and after fork().

     jwnls_layout *amounts;
     jwnls_error error;
     double value;
     if (jwnls_open("de_DE", JWNLS_NUMBER, "decimals=2", &amounts, &error) != JWNLS_OK)
       puts(error.text);
     else if (jwnls_read_number(amounts, "1.234.567,89", 12, &value, NULL) == JWNLS_OK)
       use(value);

   Texts are counted, never terminated: UTF-8, and UTF-16 in the functions whose names say so. What
   a function is given stays the caller's, what it gives goes into the caller's room. Only functions
   that open something allocate; reading and writing values never do, and take no lock. Nothing
   starts a thread, changes errno, the rounding mode or the C locale, writes to a stream, or throws.
   Pointers may be null only where that is said. Any thread may call any function at any time; a
   layout may not be closed while another thread uses it.

   Codes, functions and the members of structs are for ever. What is new is a new word among the
   options, a new function, or a new member at the end of a struct that begins with its size. */

/* Laid out by hand: tables of constants and of functions are easier to read so. */
/* clang-format off */

#ifndef JWNLS_JWNLS_H_
#define JWNLS_JWNLS_H_

#include <stddef.h>
#include <stdint.h>

#ifndef JWNLS_API
#define JWNLS_API
#endif

#ifdef __cplusplus
extern "C" {
typedef char16_t jwnls_unit; /* a UTF-16 code unit */
#else
typedef uint_least16_t jwnls_unit; /* a UTF-16 code unit: C11's char16_t */
#endif

/* ---- Versions -------------------------------------------------------------------------------- */

#define JWNLS_VERSION "0.2.0"     /* the product's, of this header */
#define JWNLS_VERSION_NUMBER 2000 /* 1,000,000 major + 1,000 minor + patch */

JWNLS_API int jwnls_version_number(void);            /* of the library that is linked */
JWNLS_API const char *jwnls_version(void);           /* "0.2.0"; static */
JWNLS_API const char *jwnls_interface_version(void); /* of the modules: "6.1"; static */
JWNLS_API const char *jwnls_data_version(void);      /* "CLDR 42": stored results depend on it */

/* The release of the time-zone database that layouts are opened with now, such as "2025b"; empty
   when the database does not say. As jwnls_write_*: at most `room` bytes, not terminated. */
JWNLS_API int jwnls_zones_version(char *out, size_t room, size_t *length);

/* ---- Codes ----------------------------------------------------------------------------------- */

enum {
  JWNLS_OK = 0,
  JWNLS_UNREAD = 1,  /* no value of this layout: jwnls_explain() says why and where */
  JWNLS_RANGE = 2,   /* a value outside the type or the calendar */
  JWNLS_MISSING = 3, /* a blank text: a missing value, no error */
  JWNLS_ROOM = 4,    /* the text does not fit; its length was given */
  JWNLS_UNKNOWN = 5, /* no such locale, zone, kind or option */
  JWNLS_LOAD = 6,    /* a module or a file cannot be read, maybe just now: try again */
  JWNLS_MEMORY = 7,  /* no memory: try again */
  JWNLS_KIND = 8     /* not a call for layouts of this kind */
};
JWNLS_API const char *jwnls_code_text(int code); /* "not read"; static */

/* For a person: one line of UTF-8, terminated, cut between characters; control and direction
   characters of quoted texts are escaped. `at`: how many bytes (units) of the text fit. */
typedef struct jwnls_error {
  int code;
  size_t at;
  char text[240];
} jwnls_error;

/* ---- Layouts --------------------------------------------------------------------------------- */

enum {
  JWNLS_NUMBER = 1,   /* "1.234,5" */
  JWNLS_DATE = 2,     /* "15. März 2024" */
  JWNLS_DATETIME = 3, /* what a clock on the wall shows: "15.03.2024, 14:30:00" */
  JWNLS_TIME = 4,     /* "14:30:00" */
  JWNLS_INTEGER = 5,  /* "1.234" */
  JWNLS_AMOUNT = 6,   /* "1.234,50 €" */
  JWNLS_PERCENT = 7,  /* "12,5 %", which is 0.125 */
  JWNLS_INSTANT = 8,  /* a datetime with its place on the time line */
  JWNLS_PERIOD = 9    /* "Q1, 2024": its first day */
};
JWNLS_API const char *jwnls_kind_name(int kind);      /* "number"; static; null: no such kind */
JWNLS_API int jwnls_kind_of_name(const char *name);   /* 0: no such name */

typedef struct jwnls_layout jwnls_layout;

/* Opens a layout.
     locale   as people write it: "de_DE", "de-DE", "de_DE.UTF-8", "german"
     options  words separated by blanks, "style=long zone=Europe/Berlin"; null or "": none.
              docs/layouts.md lists them; they are the same in the program, in SQL and in Python
     layout   gets the layout, for jwnls_close(); null on failure
     error    gets the message, which names the word that is unknown; may be null
   OK, UNKNOWN, LOAD, MEMORY. The first call of a process loads the modules (milliseconds), the
   first of a locale makes its record (microseconds, 50 KB that stay). */
JWNLS_API int jwnls_open(const char *locale, int kind, const char *options, jwnls_layout **layout,
                         jwnls_error *error);

/* Opens what jwnls_describe() wrote: "de_DE number decimals=2". */
JWNLS_API int jwnls_open_described(const char *description, jwnls_layout **layout,
                                   jwnls_error *error);

JWNLS_API void jwnls_close(jwnls_layout *layout); /* null: nothing */

/* The layout as one line, to be stored beside a column: canonical locale, kind, and the words that
   were given, in one order. As jwnls_write_*. */
JWNLS_API int jwnls_describe(const jwnls_layout *layout, char *out, size_t room, size_t *length);

JWNLS_API int jwnls_layout_kind(const jwnls_layout *layout);
JWNLS_API const char *jwnls_layout_locale(const jwnls_layout *layout); /* "de_DE", with the layout */
/* The ISO code of an amount layout's own currency, "EUR"; "" for other kinds. With the layout. */
JWNLS_API const char *jwnls_layout_currency(const jwnls_layout *layout);

/* ---- Reading one value ----------------------------------------------------------------------- */

/* What a value is known for, beside itself: bits. */
enum {
  JWNLS_TWO_WAYS = 1, /* a writer of another convention could have meant another value */
  JWNLS_DECIDES = 2,  /* the text excludes that other convention */
  JWNLS_BUDDHIST = 4  /* a year of the Buddhist era was read */
};

/* Every text is read whole; blanks around it do not matter, and a text of blanks alone is MISSING.
   OK, UNREAD, RANGE, MISSING, KIND. The value is always written: without one it is 0, of doubles
   the standard missing NaN (jwnls_is_missing()). A text of more than 1,024 bytes is UNREAD at once.
     facts    gets the bits above; may be null
   A date that is one but for its year, of four digits and before 1582, is RANGE, as is an instant
   outside 1582-01-01 to 9999-12-31; a year of five digits is UNREAD. Numbers too large for their
   type are RANGE. Days count from 1970-01-01, microseconds from its midnight on the clock on the wall (Arrow's
   date32 and timestamp[us]); those of instants in UTC; those of times from midnight. */
#define JWNLS_READ const jwnls_layout *layout, const char *text, size_t length
JWNLS_API int jwnls_read_number(JWNLS_READ, double *value, uint8_t *facts);   /* numbers, amounts, percent */
JWNLS_API int jwnls_read_integer(JWNLS_READ, int64_t *value, uint8_t *facts); /* integers */
JWNLS_API int jwnls_read_unsigned(JWNLS_READ, uint64_t *value, uint8_t *facts);
JWNLS_API int jwnls_read_date(JWNLS_READ, int32_t *days, uint8_t *facts);     /* dates, periods */
JWNLS_API int jwnls_read_datetime(JWNLS_READ, int64_t *microseconds, uint8_t *facts); /* datetimes, instants */
JWNLS_API int jwnls_read_time(JWNLS_READ, int64_t *microseconds, uint8_t *facts);     /* times */

/* The number exactly, as "-1234567.89", for numeric, Decimal, decimal128: numbers, integers,
   amounts, percent (the fraction). As jwnls_write_*, ROOM too.
     currency  gets "EUR" or, where the text names none, the layout's own; "" for other kinds than
               amounts; terminated; may be null */
JWNLS_API int jwnls_read_decimal(JWNLS_READ, char *out, size_t room, size_t *out_length,
                                 char currency[4], uint8_t *facts);

#define JWNLS_READ_UTF16 const jwnls_layout *layout, const jwnls_unit *text, size_t length
JWNLS_API int jwnls_read_number_utf16(JWNLS_READ_UTF16, double *value, uint8_t *facts);
JWNLS_API int jwnls_read_integer_utf16(JWNLS_READ_UTF16, int64_t *value, uint8_t *facts);
JWNLS_API int jwnls_read_unsigned_utf16(JWNLS_READ_UTF16, uint64_t *value, uint8_t *facts);
JWNLS_API int jwnls_read_date_utf16(JWNLS_READ_UTF16, int32_t *days, uint8_t *facts);
JWNLS_API int jwnls_read_datetime_utf16(JWNLS_READ_UTF16, int64_t *microseconds, uint8_t *facts);
JWNLS_API int jwnls_read_time_utf16(JWNLS_READ_UTF16, int64_t *microseconds, uint8_t *facts);
JWNLS_API int jwnls_read_decimal_utf16(JWNLS_READ_UTF16, char *out, size_t room,
                                       size_t *out_length, char currency[4], uint8_t *facts);

/* Why a text is not read, and what the locale writes instead: microseconds where reading takes
   nanoseconds, so for texts that someone will look at. OK when it is read. `at` is 0 where a service
   of the modules read the text, which tells no place: periods, and dates with pattern= or loose. */
JWNLS_API int jwnls_explain(JWNLS_READ, jwnls_error *error);
JWNLS_API int jwnls_explain_utf16(JWNLS_READ_UTF16, jwnls_error *error); /* `at` counts units */

/* ---- Writing one value ----------------------------------------------------------------------- */

/* Writes into `out` up to `room` bytes (units); *length gets the length of the whole text.
   OK, RANGE (*length is 0), ROOM (nothing of use in `out`; *length says what room it takes: room 0,
   where `out` may be null, asks for it), MISSING (a NaN, an empty decimal; *length is 0), KIND. The
   room behind the text may be used as scratch. Dates are those of date layouts: periods are read
   only, and writing one is KIND. Instants are written as the clocks of zone= show them, without
   zone= in UTC; no offset is written. */
#define JWNLS_WRITE char *out, size_t room, size_t *length
JWNLS_API int jwnls_write_number(const jwnls_layout *layout, double value, JWNLS_WRITE);
JWNLS_API int jwnls_write_float(const jwnls_layout *layout, float value, JWNLS_WRITE);
JWNLS_API int jwnls_write_integer(const jwnls_layout *layout, int64_t value, JWNLS_WRITE);
JWNLS_API int jwnls_write_unsigned(const jwnls_layout *layout, uint64_t value, JWNLS_WRITE);
/* From "-1234567.89" or "1.5E+3", exactly; UNREAD for what is no such number, RANGE for a fraction
   in a layout of integers and for exponents that take more than 1,024 zeros. */
JWNLS_API int jwnls_write_decimal(const jwnls_layout *layout, const char *decimal,
                                  size_t decimal_length, JWNLS_WRITE);
/* value / 10^scale, exactly: 123456 with a scale of 2 as jwnls_write_decimal() writes "1234.56", and
   with -2 as that writes "123456E+2"; all that it says holds. What is quickest where money is counted
   in cents, and where decimals are stored as integers. */
JWNLS_API int jwnls_write_scaled(const jwnls_layout *layout, int64_t value, int32_t scale,
                                 JWNLS_WRITE);
JWNLS_API int jwnls_write_date(const jwnls_layout *layout, int32_t days, JWNLS_WRITE);
JWNLS_API int jwnls_write_datetime(const jwnls_layout *layout, int64_t microseconds, JWNLS_WRITE);
JWNLS_API int jwnls_write_time(const jwnls_layout *layout, int64_t microseconds, JWNLS_WRITE);

#define JWNLS_WRITE_UTF16 jwnls_unit *out, size_t room, size_t *length
JWNLS_API int jwnls_write_number_utf16(const jwnls_layout *layout, double value, JWNLS_WRITE_UTF16);
JWNLS_API int jwnls_write_float_utf16(const jwnls_layout *layout, float value, JWNLS_WRITE_UTF16);
JWNLS_API int jwnls_write_integer_utf16(const jwnls_layout *layout, int64_t value,
                                        JWNLS_WRITE_UTF16);
JWNLS_API int jwnls_write_unsigned_utf16(const jwnls_layout *layout, uint64_t value,
                                         JWNLS_WRITE_UTF16);
JWNLS_API int jwnls_write_decimal_utf16(const jwnls_layout *layout, const char *decimal,
                                        size_t decimal_length, JWNLS_WRITE_UTF16);
JWNLS_API int jwnls_write_scaled_utf16(const jwnls_layout *layout, int64_t value, int32_t scale,
                                       JWNLS_WRITE_UTF16);
JWNLS_API int jwnls_write_date_utf16(const jwnls_layout *layout, int32_t days, JWNLS_WRITE_UTF16);
JWNLS_API int jwnls_write_datetime_utf16(const jwnls_layout *layout, int64_t microseconds,
                                         JWNLS_WRITE_UTF16);
JWNLS_API int jwnls_write_time_utf16(const jwnls_layout *layout, int64_t microseconds,
                                     JWNLS_WRITE_UTF16);

/* The NaN that stands for "no value", and whether a double is one of the missing values. */
JWNLS_API double jwnls_missing(void);
JWNLS_API int jwnls_is_missing(double value);

/* ---- Columns --------------------------------------------------------------------------------- */

typedef struct jwnls_text {
  const char *bytes; /* null: no value */
  size_t length;
} jwnls_text;

/* Texts to be read: either `texts`, or `bytes` and one kind of offsets, as Arrow holds them: text i
   is bytes[offsets[i]] up to bytes[offsets[i + 1]]. Set what is not used to null or 0. */
typedef struct jwnls_texts {
  size_t size; /* sizeof(jwnls_texts) */
  size_t count;
  const jwnls_text *texts;
  const char *bytes;
  const int32_t *offsets;       /* count + 1, not falling, from 0 on */
  const int64_t *large_offsets; /* or these */
  const uint8_t *validity;      /* bit i % 8 of byte i / 8 is 0: no value; null: all have one */
} jwnls_texts;

/* What a column of texts was found to be. All counts are of texts; first_* is count where none. */
typedef struct jwnls_column_facts {
  size_t size; /* sizeof(jwnls_column_facts), set by the caller */
  size_t read, refused, missing, two_ways, deciding;
  size_t first_refused, first_two_ways;
} jwnls_column_facts;

/* As the single calls; a text without value is MISSING.
     codes    gets a code for each text; may be null
     facts    adds up over several calls: the caller sets it to zero but for `size`; may be null
   Gives how many texts are neither OK nor MISSING. Never stops early. */
#define JWNLS_READ_COLUMN const jwnls_layout *layout, const jwnls_texts *texts
JWNLS_API size_t jwnls_read_numbers(JWNLS_READ_COLUMN, double *values, uint8_t *codes,
                                    jwnls_column_facts *facts);
JWNLS_API size_t jwnls_read_integers(JWNLS_READ_COLUMN, int64_t *values, uint8_t *codes,
                                     jwnls_column_facts *facts);
JWNLS_API size_t jwnls_read_dates(JWNLS_READ_COLUMN, int32_t *days, uint8_t *codes,
                                  jwnls_column_facts *facts);
JWNLS_API size_t jwnls_read_datetimes(JWNLS_READ_COLUMN, int64_t *microseconds, uint8_t *codes,
                                      jwnls_column_facts *facts);
JWNLS_API size_t jwnls_read_times(JWNLS_READ_COLUMN, int64_t *microseconds, uint8_t *codes,
                                  jwnls_column_facts *facts);

/* Where written texts go: one behind the other, text i from offsets[i] to offsets[i + 1], which are
   count + 1. Writing stops before the first text that does not fit the room (or the offsets):
   the functions give how many were written, and the caller goes on from there. What cannot be
   written, and values that `validity` calls none, are empty, with their code. */
typedef struct jwnls_column {
  size_t size; /* sizeof(jwnls_column) */
  char *bytes;
  size_t room;
  int32_t *offsets;
  int64_t *large_offsets;  /* or these */
  uint8_t *codes;          /* may be null */
  const uint8_t *validity; /* as in jwnls_texts; may be null */
} jwnls_column;
#define JWNLS_WRITE_COLUMN size_t count, const jwnls_column *column
JWNLS_API size_t jwnls_write_numbers(const jwnls_layout *layout, const double *values,
                                     JWNLS_WRITE_COLUMN);
JWNLS_API size_t jwnls_write_integers(const jwnls_layout *layout, const int64_t *values,
                                      JWNLS_WRITE_COLUMN);
JWNLS_API size_t jwnls_write_dates(const jwnls_layout *layout, const int32_t *days,
                                   JWNLS_WRITE_COLUMN);
JWNLS_API size_t jwnls_write_datetimes(const jwnls_layout *layout, const int64_t *microseconds,
                                       JWNLS_WRITE_COLUMN);
JWNLS_API size_t jwnls_write_times(const jwnls_layout *layout, const int64_t *microseconds,
                                   JWNLS_WRITE_COLUMN);

/* Decimals in and out, as text: what jwnls_read_decimal() gives of each text, laid out as above
   (`column->validity` is not read, a currency not given); gives how many texts were done, read or
   not. And what jwnls_write_decimal() makes of each. */
JWNLS_API size_t jwnls_read_decimals(JWNLS_READ_COLUMN, const jwnls_column *column,
                                     jwnls_column_facts *facts);
JWNLS_API size_t jwnls_write_decimals(const jwnls_layout *layout, const jwnls_texts *decimals,
                                      const jwnls_column *column);

/* ---- Detection ------------------------------------------------------------------------------- */

/* Which locales read a column, and whether they agree on it. Locales that give the same value for
   every text they read are one reading. A text that no locale reads as a kind is dirty for it: a
   heading, "n/a". A reading is complete when it reads every text that is not dirty. */
enum {
  JWNLS_PROVED = 1,        /* one complete reading: other locales do not read some texts */
  JWNLS_AMBIGUOUS = 2,     /* several, with different values: a person has to choose */
  JWNLS_CONTRADICTION = 3, /* none: the texts follow different conventions */
  JWNLS_NONE = 4,          /* no locale reads half of the texts */
  JWNLS_ANY_LOCALE = 5     /* all locales read the column, to the same values: nothing in it
                              depends on the locale */
};

typedef struct jwnls_detection jwnls_detection;

/* Detects.
     kinds      names of kinds separated by blanks or commas, "date number"; null or "": number,
                integer, amount, percent, date, datetime, time
     locales    names of locales likewise: only these are asked, and come in this order wherever
                locales are given; "*" among them stands for all others. Null or "": all. Of
                those that are not named, languages come before their countries, and languages of
                most countries first
     detection  gets the answer, for jwnls_detection_close(); null on failure. It keeps nothing of
                `texts`
     error      gets the message; may be null
   OK, UNKNOWN (a kind, a locale), LOAD, MEMORY. All kinds are answered side by side. The first call
   that asks all locales looks at every one of them (a tenth of a second, some megabytes that
   stay); the time of later ones is some times that of reading the column once. */
JWNLS_API int jwnls_detect(const jwnls_texts *texts, const char *kinds, const char *locales,
                           jwnls_detection **detection, jwnls_error *error);

JWNLS_API void jwnls_detection_close(jwnls_detection *detection); /* null: nothing */

/* The kind that reads most of the column, at least half of it; of equals the first of integer,
   number, amount, percent, date, datetime, time, but dates of eight digits before integers, and
   ambiguous numbers too: "1.234" is an integer here and 1.234 elsewhere. 0: none does. */
JWNLS_API int jwnls_detection_kind(const jwnls_detection *detection);

/* What a kind was found to be. Texts are counted, and numbered from 0; where there is no text to
   name, its number is the count of the column. */
typedef struct jwnls_detected_kind {
  size_t size;          /* sizeof(jwnls_detected_kind), set by the caller */
  int verdict;          /* JWNLS_PROVED ... */
  size_t values;        /* texts that are not blank */
  size_t read;          /* by the first reading */
  size_t dirty;         /* that no locale reads */
  size_t first_dirty;
  size_t others;        /* that other locales read, and the first reading does not */
  size_t first_other;
  size_t readings;      /* complete ones; of a contradiction the one that reads most, and that of
                           the first text that it does not read; of NONE 0 */
  size_t witness;       /* AMBIGUOUS: the first text to which the readings give different values */
  size_t deciding;      /* PROVED: the first text that the rival does not read */
  size_t rival_read;    /* how many texts the rival reads: of the locales that do not read all, one
                           that came furthest */
  const char *rival;    /* its name; "": there is none. With the detection */
} jwnls_detected_kind;

/*   kind  one that was asked for; 0: that of jwnls_detection_kind()
   OK, KIND. */
JWNLS_API int jwnls_detected_kind_of(const jwnls_detection *detection, int kind,
                                     jwnls_detected_kind *found);

typedef struct jwnls_detected_reading {
  size_t size;         /* sizeof(jwnls_detected_reading), set by the caller */
  int kind;            /* for jwnls_open(), with any of the locales */
  const char *options; /* for jwnls_open(), too: "" or "names=english"; texts as all of these come
                          terminated, with the detection */
  size_t locales;      /* how many */
  size_t read;         /* texts */
  size_t two_ways;     /* of these, those with JWNLS_TWO_WAYS */
  const char *value;   /* of the witness, of a contradiction's first_other: "1994-01-04", "1234.5",
                          "14:30:05"; "": not read, or there is no such text */
} jwnls_detected_reading;

/* A kind's readings; of ambiguous ones those of the caller's first locales first. OK, KIND, UNKNOWN
   (no such reading). */
JWNLS_API int jwnls_detected_reading_of(const jwnls_detection *detection, int kind, size_t index,
                                        jwnls_detected_reading *found);

/* A locale of a reading, index from 0: its canonical name, with the detection; null: no more. */
JWNLS_API const char *jwnls_detected_locale(const jwnls_detection *detection, int kind,
                                            size_t reading, size_t index);

/* ---- What there is --------------------------------------------------------------------------- */

typedef struct jwnls_locale_info {
  size_t size;
  const char *name;         /* "de_DE" */
  const char *english_name; /* "German (Germany)" */
  const char *own_name;     /* "Deutsch (Deutschland)" */
} jwnls_locale_info;

/* Visits every locale, or every time zone, sorted by name, until the visitor gives another value
   than 0, which is then the result. Texts are UTF-8, terminated, and valid during the visit. OK,
   LOAD, MEMORY. */
JWNLS_API int jwnls_locales(int (*visit)(void *context, const jwnls_locale_info *locale),
                            void *context);
JWNLS_API int jwnls_zones(int (*visit)(void *context, const char *zone), void *context);

/* The locale that a name gives, without opening it: its canonical name, terminated. *exact is 0 for
   a near relative ("de_US" gives "de"). OK or UNKNOWN. */
JWNLS_API int jwnls_match_locale(const char *name, char canonical[64], int *exact);

/* What a zone's clocks show at a moment. */
typedef struct jwnls_zone_state {
  size_t size; /* sizeof(jwnls_zone_state), set by the caller */
  int32_t offset_seconds; /* east of UTC */
  char abbreviation[52];  /* "CET", terminated */
  char name[52];          /* canonical: "Europe/Berlin" */
} jwnls_zone_state;

/*   zone     a name, "UTC+05:30", a POSIX rule such as "CET-1CEST,M3.5.0,M10.5.0/3"; null or "":
              the system's: $TZ, else /etc/localtime, else UTC
     seconds  from 1970-01-01T00:00:00Z
   OK, UNKNOWN, LOAD, MEMORY. */
JWNLS_API int jwnls_zone_at(const char *zone, int64_t seconds, jwnls_zone_state *state,
                            jwnls_error *error);

/* Looks for a new release of the time-zone database. Layouts that are open keep the zone that they
   have; those opened later get the new one. OK, LOAD, MEMORY. */
JWNLS_API int jwnls_reload_zones(jwnls_error *error);

/* An item of a locale's conventions, as jwnls_write_*; index counts from 0. UNKNOWN where there is
   no such item or index. */
enum {
  JWNLS_MONTH = 1,          /* 12, January first, as inside a date */
  JWNLS_SHORT_MONTH = 2,    /* 12 */
  JWNLS_WEEKDAY = 3,        /* 7, Sunday first */
  JWNLS_SHORT_WEEKDAY = 4,  /* 7 */
  JWNLS_DAY_HALF = 5,       /* 2: before noon, after noon */
  JWNLS_DATE_PATTERN = 6,   /* 3: short, medium, long */
  JWNLS_TIME_PATTERN = 7,   /* 1 */
  JWNLS_DATETIME_PATTERN = 8, /* 1 */
  JWNLS_DECIMAL_SYMBOL = 9,   /* 1 */
  JWNLS_GROUP_SYMBOL = 10,    /* 1 */
  JWNLS_GROUP_SIZES = 11,     /* 1: "3;2"; empty: no groups */
  JWNLS_CURRENCY_SYMBOL = 12, /* 1 */
  JWNLS_CURRENCY_CODE = 13,   /* 1: "EUR" */
  JWNLS_CURRENCY_DECIMALS = 14, /* 1: "2" */
  JWNLS_FIRST_WEEKDAY = 15      /* 1: "0" is Sunday */
};
JWNLS_API int jwnls_convention(const jwnls_layout *layout, int item, size_t index, char *out,
                               size_t room, size_t *length);

/* ---- The process ----------------------------------------------------------------------------- */

/* Sets something for the whole process, by name:
     "module-path"  folders with jwnlsloc.so, jwnlsldb.so and jwemsg.so, separated by ":", absolute.
                    Before the first layout is opened; then UNKNOWN, with the reason.
     "zone-folder"  the compiled time-zone database; for layouts opened from now on
   Each goes before the environment (JWNLS_EXTENSION_PATH, TZDIR), which programs with raised
   privileges do not ask; then modules that are linked in, then those beside this library.
   OK, UNKNOWN, MEMORY. */
JWNLS_API int jwnls_configure(const char *setting, const char *value, jwnls_error *error);

/* Where warnings of modules and host go, one terminated line of UTF-8 each; null: nowhere. Called
   by any thread, by one at a time; it may use layouts, but opens none. */
JWNLS_API void jwnls_set_journal(void (*write)(void *context, const char *message), void *context);

#ifdef __cplusplus
}
#endif
#endif /* JWNLS_JWNLS_H_ */
