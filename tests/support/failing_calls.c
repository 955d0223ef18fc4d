// A library to load before a program (LD_PRELOAD) whose calls of the system shall fail: of those
// that the program makes while main() runs, the one with a number, or all from there. What the C
// library asks of itself is not counted, but for memory.
//   FAILING_CALL       memory, open, read, mmap or thread; or interrupt: a signal interrupts a read
//   or
//                      write; or short: it does half of what is asked; or link: a hard link
//   FAILING_NUMBER     which of them, counted from 0
//   FAILING_FOR_EVER   when set, all behind it too
//   FAILING_FROM       parts of names of libraries: the calls of these alone are counted
//   FAILING_REPORT     a file that is there, written to as soon as a call fails
// A process that looks up failing_calls_begin() says all this of a part of its work.

#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <link.h>
#include <pthread.h>
#include <stdarg.h>
#include <stdatomic.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

void* __libc_malloc(size_t bytes);
void* __libc_calloc(size_t count, size_t bytes);
void* __libc_realloc(void* memory, size_t bytes);
void* __libc_memalign(size_t alignment, size_t bytes);
void __libc_free(void* memory);

enum Call {
  memory_call,
  open_call,
  read_call,
  mmap_call,
  thread_call,
  interrupted_call,
  short_call,
  link_call,
  no_call
};
static const char* const call_names[] = {"memory", "open",      "read",  "mmap",
                                         "thread", "interrupt", "short", "link"};

static enum Call failing_call = no_call;
static long failing_number;
static int fails_for_ever;
static const char* report_path;
static char libraries[128];  // none: all
static atomic_long made;
static atomic_long blocks;

static int is_counted(void* caller) {
  struct dl_find_object found;
  if (libraries[0] == '\0') return 1;
  if (_dl_find_object(caller, &found) != 0) return 0;
  char words[sizeof libraries];
  char* rest = NULL;
  memcpy(words, libraries, sizeof words);
  for (char* word = strtok_r(words, " ", &rest); word != NULL; word = strtok_r(NULL, " ", &rest)) {
    if (strstr(found.dlfo_link_map->l_name, word) != NULL) return 1;
  }
  return 0;
}

static int refuses(enum Call call, void* caller) {
  if (call != failing_call || !is_counted(caller)) return 0;
  const long number = atomic_fetch_add(&made, 1);
  if (number != failing_number && !(fails_for_ever && number > failing_number)) return 0;
  if (number == failing_number && report_path != NULL) {
    const long file = syscall(SYS_openat, AT_FDCWD, report_path, O_WRONLY | O_CLOEXEC);
    (void)!syscall(SYS_write, file, "failed", 6);
    (void)syscall(SYS_close, file);
  }
  return 1;
}

// Asked by the function that the caller called.
#define fails(call) refuses(call, __builtin_return_address(0))

// The next function of that name in the order of loading.
static void* next(const char* name) { return dlsym(RTLD_NEXT, name); }

// From now on; libraries as FAILING_FROM. 0 where there is no such call.
int failing_calls_begin(const char* call, long number, int for_ever, const char* from) {
  enum Call named = memory_call;
  while (named != no_call && strcmp(call, call_names[named]) != 0) ++named;
  if (named == no_call || strlen(from) >= sizeof libraries) return 0;
  memcpy(libraries, from, strlen(from) + 1);
  failing_number = number;
  fails_for_ever = for_ever;
  made = 0;
  failing_call = named;
  return 1;
}

// No call fails any more. Gives how many were counted.
long failing_calls_end(void) {
  failing_call = no_call;
  return made;
}

// Blocks of memory that the process has.
long failing_calls_blocks(void) { return blocks; }

static int (*program)(int, char**, char**);

static int counted_program(int count, char** arguments, char** environment) {
  const char* const call = getenv("FAILING_CALL");
  const char* const number = getenv("FAILING_NUMBER");
  report_path = getenv("FAILING_REPORT");
  const char* const from = getenv("FAILING_FROM");
  if (call != NULL && number != NULL) {
    failing_calls_begin(call, strtol(number, NULL, 10), getenv("FAILING_FOR_EVER") != NULL,
                        from == NULL ? "" : from);
  }
  const int code = program(count, arguments, environment);
  failing_call = no_call;  // what runs at exit is not the program's
  return code;
}

int __libc_start_main(int (*main)(int, char**, char**), int count, char** arguments,
                      void (*begin)(void), void (*end)(void), void (*end_of_loader)(void),
                      void* stack_end) {
  int (*start)(int (*)(int, char**, char**), int, char**, void (*)(void), void (*)(void),
               void (*)(void), void*) = NULL;
  *(void**)&start = next("__libc_start_main");
  program = main;
  return start(counted_program, count, arguments, begin, end, end_of_loader, stack_end);
}

static void* counted_block(void* memory) {
  if (memory != NULL) ++blocks;
  return memory;
}
static void* no_memory(void) {
  errno = ENOMEM;
  return NULL;
}
void* malloc(size_t bytes) {
  return fails(memory_call) ? no_memory() : counted_block(__libc_malloc(bytes));
}
void* calloc(size_t count, size_t bytes) {
  return fails(memory_call) ? no_memory() : counted_block(__libc_calloc(count, bytes));
}
void* realloc(void* memory, size_t bytes) {
  if (fails(memory_call)) return no_memory();
  if (memory == NULL) return counted_block(__libc_malloc(bytes));
  if (bytes == 0) --blocks;
  return __libc_realloc(memory, bytes);
}
void* aligned_alloc(size_t alignment, size_t bytes) {
  return fails(memory_call) ? no_memory() : counted_block(__libc_memalign(alignment, bytes));
}
void free(void* memory) {
  if (memory != NULL) --blocks;
  __libc_free(memory);
}

static int open_unless(int refused, int folder, const char* path, int flags, mode_t mode) {
  if (refused) {
    errno = EMFILE;
    return -1;
  }
  return (int)syscall(SYS_openat, folder, path, flags, mode);
}
// The mode is there with two of the flags alone.
#define MODE_OF(flags, mode)                    \
  mode_t mode = 0;                              \
  if (((flags) & (O_CREAT | O_TMPFILE)) != 0) { \
    va_list arguments;                          \
    va_start(arguments, flags);                 \
    mode = va_arg(arguments, mode_t);           \
    va_end(arguments);                          \
  }
int open(const char* path, int flags, ...) {
  MODE_OF(flags, mode)
  return open_unless(fails(open_call), AT_FDCWD, path, flags, mode);
}
int open64(const char* path, int flags, ...) __attribute__((alias("open")));
int openat(int folder, const char* path, int flags, ...) {
  MODE_OF(flags, mode)
  return open_unless(fails(open_call), folder, path, flags, mode);
}
int openat64(int folder, const char* path, int flags, ...) __attribute__((alias("openat")));
FILE* fopen(const char* path, const char* mode) {
  if (fails(open_call)) {
    errno = EMFILE;
    return NULL;
  }
  FILE* (*open_stream)(const char*, const char*) = NULL;
  *(void**)&open_stream = next("fopen");
  return open_stream(path, mode);
}
FILE* fopen64(const char* path, const char* mode) __attribute__((alias("fopen")));
int mkostemp(char* name, int flags) {
  if (fails(open_call)) {
    errno = EMFILE;
    return -1;
  }
  int (*make)(char*, int) = NULL;
  *(void**)&make = next("mkostemp");
  return make(name, flags);
}
int mkostemp64(char* name, int flags) __attribute__((alias("mkostemp")));

static ssize_t interrupted(void) {
  errno = EINTR;
  return -1;
}
ssize_t read(int descriptor, void* bytes, size_t room) {
  if (fails(read_call)) {
    errno = EIO;
    return -1;
  }
  if (fails(interrupted_call)) return interrupted();
  return syscall(SYS_read, descriptor, bytes, fails(short_call) ? (room + 1) / 2 : room);
}
ssize_t write(int descriptor, const void* bytes, size_t count) {
  if (fails(interrupted_call)) return interrupted();
  return syscall(SYS_write, descriptor, bytes, fails(short_call) ? (count + 1) / 2 : count);
}
// As file systems without hard links do.
int link(const char* path, const char* other) {
  if (fails(link_call)) {
    errno = EPERM;
    return -1;
  }
  return (int)syscall(SYS_link, path, other);
}

void* mmap(void* place, size_t bytes, int protection, int flags, int descriptor, off_t begin) {
  if (fails(mmap_call)) {
    errno = ENOMEM;
    return MAP_FAILED;
  }
  return (void*)syscall(SYS_mmap, place, bytes, protection, flags, descriptor, begin);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*run)(void*),
                   void* argument) {
  if (fails(thread_call)) return EAGAIN;
  int (*create)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*) = NULL;
  *(void**)&create = next("pthread_create");
  return create(thread, attributes, run, argument);
}
