// Two shared objects that each have the library in them open it at the same moment, in a fresh
// process each round; each must get modules of its own.
//   two_copies FIRST SECOND [ROOT]
// With ROOT the process changes into it before, where it has neither /proc nor the libraries.
// 77: that takes rights which this user does not have.
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <jwnls/jwnls.h>
#include <link.h>
#include <pthread.h>
#include <sched.h>
#include <stdio.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>

enum { rounds = 3, skipped = 77 };

static pthread_barrier_t start;

// The library's calls come here too, and dawdle between the question whether a file is open and
// what follows: time enough for the other copy to ask the same.
void* dlopen(const char* file, int mode) {
  static void* (*open_file)(const char*, int);
  if (!open_file) *(void**)&open_file = dlsym(RTLD_NEXT, "dlopen");
  void* library = open_file(file, mode);
  if (mode & RTLD_NOLOAD) usleep(5000);
  return library;
}

// The calls of one copy, through pointers: the copies' names are the same.
static void* use(void* library) {
  int (*open_layout)(const char*, int, const char*, jwnls_layout**, jwnls_error*);
  int (*write_number)(const jwnls_layout*, double, char*, size_t, size_t*);
  *(void**)&open_layout = dlsym(library, "jwnls_open");
  *(void**)&write_number = dlsym(library, "jwnls_write_number");
  jwnls_layout* layout;
  jwnls_error error;
  char text[80];
  size_t length = 0;
  pthread_barrier_wait(&start);
  if (open_layout("de_DE", JWNLS_NUMBER, NULL, &layout, &error) != JWNLS_OK) {
    fprintf(stderr, "%s\n", error.text);
    return NULL;
  }
  write_number(layout, 1234.5, text, sizeof text, &length);
  return length == 7 && memcmp(text, "1.234,5", 7) == 0 ? library : NULL;
}

static int count_object(struct dl_phdr_info* object, size_t size, void* count) {
  (void)object, (void)size;
  ++*(int*)count;
  return 0;
}

static int loaded_objects(void) {
  int count = 0;
  dl_iterate_phdr(count_object, &count);
  return count;
}

static int change_root(const char* root) {
  if (geteuid() != 0 && unshare(CLONE_NEWUSER) != 0) return skipped;
  return chroot(root) == 0 && chdir("/") == 0 ? 0 : skipped;
}

static int run(char** arguments, int count) {
  pthread_t threads[2];
  int right = 0;
  void* libraries[2];
  for (int i = 0; i < 2; ++i) {
    libraries[i] = dlopen(arguments[1 + i], RTLD_NOW | RTLD_LOCAL);
    if (libraries[i] == NULL) return fprintf(stderr, "%s\n", dlerror()), 1;
  }
  if (libraries[0] == libraries[1]) return fprintf(stderr, "one library, not two\n"), 1;
  if (count > 3 && change_root(arguments[3]) != 0) return skipped;
  const int before = loaded_objects();
  pthread_barrier_init(&start, NULL, 2);
  for (int i = 0; i < 2; ++i) pthread_create(&threads[i], NULL, use, libraries[i]);
  for (int i = 0; i < 2; ++i) {
    void* result;
    pthread_join(threads[i], &result);
    right += result != NULL;
  }
  // Three modules for each, none of them shared.
  if (loaded_objects() != before + 6) return fprintf(stderr, "shared modules\n"), 1;
  return right == 2 ? 0 : 1;
}

int main(int count, char** arguments) {
  if (count < 3) return fprintf(stderr, "two_copies FIRST SECOND [ROOT]\n"), 2;
  for (int round = 0; round < rounds; ++round) {
    int status = 0;
    const pid_t child = fork();
    if (child == 0) _exit(run(arguments, count));
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(status)) return fprintf(stderr, "round %d: signal\n", round), 1;
    if (WEXITSTATUS(status) != 0) return WEXITSTATUS(status);
  }
  return 0;
}
