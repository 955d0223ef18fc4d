/* The layouts that a database's functions have open: found by the words that a statement says, and
   no more of them than the cache has places. One thread at a time uses a cache. C99; allocates with
   malloc, never jumps. */

#ifndef JWNLS_BINDINGS_SQL_LAYOUT_CACHE_H_
#define JWNLS_BINDINGS_SQL_LAYOUT_CACHE_H_

#include <jwnls/jwnls.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

/* What a statement says. Texts are counted, and may hold anything. */
typedef struct LayoutWords {
  int kind;
  jwnls_text locale;
  jwnls_text options;
  jwnls_text zone;              /* an argument of its own; bytes null: there is none */
  bool zone_word;               /* whether "zone=" may stand among the options */
  const char* const* own_words; /* words of the binding, the last null; may be null */
} LayoutWords;

/* An open layout, closed when nobody holds it any more. */
typedef struct HeldLayout {
  jwnls_layout* layout;
  int own_word; /* index of the last one among the options, 0: none */
  unsigned holders;
  uint64_t hash;
  int kind;
  bool zone_word;
  size_t lengths[3];
  char words[]; /* locale, options and zone, one behind the other */
} HeldLayout;

enum { layout_cache_sets = 64, layout_cache_ways = 4 };

/* All zero: empty. */
typedef struct LayoutCache {
  HeldLayout* last;
  HeldLayout* places[layout_cache_sets][layout_cache_ways]; /* latest use first */
} LayoutCache;

/* Finds the layout or opens it. The cache holds what it gives, until the next call at least; who
   keeps it longer holds it too. Null: `error` says why, as jwnls_open() does. */
HeldLayout* layout_cache_find(LayoutCache* cache, const LayoutWords* words, jwnls_error* error);

/* Lets go of all layouts; the cache is empty then. */
void layout_cache_clear(LayoutCache* cache);

HeldLayout* layout_hold(HeldLayout* held); /* gives it back */
void layout_release(void* held);           /* null: nothing */

#endif /* JWNLS_BINDINGS_SQL_LAYOUT_CACHE_H_ */
