#include "bindings/sql/layout_cache.h"

#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* Longer words are no locale, options or zone, and are not kept. */
enum { longest_locale = 256, longest_options = 1024, longest_zone = 256 };

__attribute__((format(printf, 3, 4))) static void fail(jwnls_error* error, int code,
                                                       const char* format, ...) {
  va_list arguments;
  memset(error, 0, sizeof *error);
  error->code = code;
  va_start(arguments, format);
  vsnprintf(error->text, sizeof error->text, format, arguments);
  va_end(arguments);
}

static bool is_blank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/* jwnls_open() takes terminated texts; a zero inside would hide what stands behind it. */
static bool checked(const char* what, jwnls_text text, size_t longest, jwnls_error* error) {
  if (text.length > longest) {
    fail(error, JWNLS_UNKNOWN, "%s of more than %zu bytes: no such %s", what, longest, what);
  } else if (text.length != 0 && memchr(text.bytes, 0, text.length) != NULL) {
    fail(error, JWNLS_UNKNOWN, "%s with a zero byte: no such %s", what, what);
  } else {
    return true;
  }
  return false;
}

static bool checked_words(const LayoutWords* words, jwnls_error* error) {
  if (!checked("locale", words->locale, longest_locale, error) ||
      !checked("options", words->options, longest_options, error)) {
    return false;
  }
  if (words->zone.bytes == NULL) return true;
  if (!checked("zone", words->zone, longest_zone, error)) return false;
  /* It becomes one word among the options. */
  size_t i = 0;
  while (i < words->zone.length && !is_blank(words->zone.bytes[i])) ++i;
  if (i == words->zone.length && i > 0) return true;
  fail(error, JWNLS_UNKNOWN, "zone with a blank, or empty: no such zone");
  return false;
}

static int own_word_of(const LayoutWords* words, const char* word, size_t length) {
  if (words->own_words == NULL) return -1;
  for (int i = 0; words->own_words[i] != NULL; ++i) {
    if (strlen(words->own_words[i]) == length && memcmp(words->own_words[i], word, length) == 0) {
      return i;
    }
  }
  return -1;
}

/* Copies the options for jwnls_open(), without the binding's own words. */
static bool options_of(const LayoutWords* words, char* out, int* own_word, jwnls_error* error) {
  const char* at = words->options.bytes;
  const char* end = at + words->options.length;
  *own_word = 0;
  while (at < end) {
    const char* word = at;
    while (at < end && !is_blank(*at)) ++at;
    const size_t length = (size_t)(at - word);
    const int own = own_word_of(words, word, length);
    if (own >= 0) {
      *own_word = own;
    } else if (words->kind == JWNLS_DATETIME && !words->zone_word && length >= 5 &&
               memcmp(word, "zone=", 5) == 0) {
      fail(error, JWNLS_UNKNOWN,
           "option '%.*s': the answer would change with the time-zone database; "
           "give the zone as the fourth argument",
           (int)(length < 80 ? length : 80), word);
      return false;
    } else if (length > 0) {
      memcpy(out, word, length);
      out += length;
      *out++ = ' ';
    }
    if (at < end) ++at;
  }
  if (words->zone.bytes != NULL) {
    out += sprintf(out, "zone=%.*s", (int)words->zone.length, words->zone.bytes);
  }
  *out = 0;
  return true;
}

static HeldLayout* open_words(const LayoutWords* words, uint64_t hash, jwnls_error* error) {
  if (!checked_words(words, error)) return NULL;
  const size_t lengths[3] = {words->locale.length, words->options.length, words->zone.length};
  HeldLayout* held = calloc(1, sizeof *held + lengths[0] + lengths[1] + lengths[2] + 1);
  if (held == NULL) {
    fail(error, JWNLS_MEMORY, "no memory");
    return NULL;
  }
  held->hash = hash;
  held->kind = words->kind;
  held->zone_word = words->zone_word;
  held->holders = 1;
  memcpy(held->lengths, lengths, sizeof lengths);
  char* at = held->words;
  const jwnls_text* const texts[3] = {&words->locale, &words->options, &words->zone};
  for (int i = 0; i < 3; ++i) {
    if (lengths[i] != 0) memcpy(at, texts[i]->bytes, lengths[i]);
    at += lengths[i];
  }

  char locale[longest_locale + 1];
  char options[longest_options + longest_zone + 16];
  memcpy(locale, held->words, lengths[0]);
  locale[lengths[0]] = 0;
  if (!options_of(words, options, &held->own_word, error) ||
      jwnls_open(locale, words->kind, options, &held->layout, error) != JWNLS_OK) {
    free(held);
    return NULL;
  }
  return held;
}

static uint64_t hash_of(const LayoutWords* words) {
  const jwnls_text texts[3] = {words->locale, words->options, words->zone};
  uint64_t hash = 0xcbf29ce484222325U ^ (uint64_t)(words->kind * 2 + words->zone_word);
  for (int i = 0; i < 3; ++i) {
    for (size_t j = 0; j < texts[i].length; ++j) {
      hash = (hash ^ (unsigned char)texts[i].bytes[j]) * 0x100000001b3U;
    }
    hash = (hash ^ 0x100U) * 0x100000001b3U;
  }
  return hash;
}

static bool is_of(const HeldLayout* held, const LayoutWords* words) {
  const jwnls_text texts[3] = {words->locale, words->options, words->zone};
  if (held->kind != words->kind || held->zone_word != words->zone_word) return false;
  const char* at = held->words;
  for (int i = 0; i < 3; ++i) {
    if (held->lengths[i] != texts[i].length) return false;
    if (texts[i].length != 0 && memcmp(at, texts[i].bytes, texts[i].length) != 0) return false;
    at += texts[i].length;
  }
  return true;
}

HeldLayout* layout_cache_find(LayoutCache* cache, const LayoutWords* words, jwnls_error* error) {
  if (cache->last != NULL && is_of(cache->last, words)) return cache->last;
  /* Words that are too long are in no place, and would only be hashed for long. */
  if (words->locale.length + words->options.length + words->zone.length >
      longest_locale + longest_options + longest_zone) {
    return open_words(words, 0, error);
  }
  const uint64_t hash = hash_of(words);
  HeldLayout** places = cache->places[(hash ^ hash >> 32) % layout_cache_sets];
  int way = 0;
  while (way < layout_cache_ways && places[way] != NULL &&
         (places[way]->hash != hash || !is_of(places[way], words))) {
    ++way;
  }
  HeldLayout* found = way < layout_cache_ways ? places[way] : NULL;
  if (found == NULL) {
    found = open_words(words, hash, error);
    if (found == NULL) return NULL;
    if (way == layout_cache_ways) layout_release(places[--way]);
  }
  for (; way > 0; --way) places[way] = places[way - 1];
  places[0] = found;
  cache->last = found;
  return found;
}

void layout_cache_clear(LayoutCache* cache) {
  for (int set = 0; set < layout_cache_sets; ++set) {
    for (int way = 0; way < layout_cache_ways; ++way) layout_release(cache->places[set][way]);
  }
  memset(cache, 0, sizeof *cache);
}

HeldLayout* layout_hold(HeldLayout* held) {
  ++held->holders;
  return held;
}

void layout_release(void* held_layout) {
  HeldLayout* held = held_layout;
  if (held == NULL || --held->holders != 0) return;
  jwnls_close(held->layout);
  free(held);
}
