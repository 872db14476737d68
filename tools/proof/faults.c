/* Preloaded into the program: the n-th call of one kind fails, as it does when the machine has no more to give.
 *
 *   FAULT=alloc|open|thread|gl|sound   which calls
 *   FAULT_AT=N                         counted from 1; without it they are only counted
 *   FAULT_LOG=FILE                     where their number goes when the program ends by itself
 *
 * A crash is told with the file whose code it happened in, and by its signal all the same.
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <execinfo.h>
#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <stdarg.h>
#include <stdatomic.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static const char* chosen = "";
static long fail_at = 0;
static atomic_long calls;
static atomic_int sound_error;

/* The innermost that is neither this file nor the C library, which crashes for what others hand to it. */
static void TellWhere(int number) {
  void* places[32];
  const int depth = backtrace(places, 32);
  const char* name = "?";
  Dl_info mine = {0};
  dladdr(&calls, &mine);
  for (int i = 0; i < depth; ++i) {
    Dl_info found = {0};
    const int known = dladdr(places[i], &found) != 0;
    if (known && (found.dli_fbase == mine.dli_fbase || strstr(found.dli_fname, "/libc.") != NULL)) continue;
    if (known) name = found.dli_fname;
    break;
  }
  const char* slash = strrchr(name, '/');
  dprintf(STDERR_FILENO, "\ncrashed in %s\n", slash == NULL ? name : slash + 1);
  signal(number, SIG_DFL);
  raise(number);
}

__attribute__((constructor)) static void Begin(void) {
  void* place;
  backtrace(&place, 1); /* loads what it needs, which allocates */
  signal(SIGSEGV, TellWhere);
  signal(SIGBUS, TellWhere);
  signal(SIGFPE, TellWhere);
  const char* at = getenv("FAULT_AT");
  fail_at = at == NULL ? 0 : atol(at);
  if (getenv("FAULT") != NULL) chosen = getenv("FAULT");
}

__attribute__((destructor)) static void End(void) {
  const char* name = getenv("FAULT_LOG");
  const long count = calls;
  chosen = "";
  FILE* log = name == NULL ? NULL : fopen(name, "w");
  if (log == NULL) return;
  fprintf(log, "%ld\n", count);
  fclose(log);
}

static int Fails(const char* kind) {
  return strcmp(kind, chosen) == 0 && atomic_fetch_add(&calls, 1) + 1 == fail_at;
}

#define REAL(type, name, ...)                                  \
  static type (*real)(__VA_ARGS__);                            \
  if (real == NULL) real = (type(*)(__VA_ARGS__))dlsym(RTLD_NEXT, name)

extern void* __libc_malloc(size_t size);

void* malloc(size_t size) {
  if (!Fails("alloc")) return __libc_malloc(size);
  errno = ENOMEM;
  return NULL;
}

int open(const char* path, int flags, ...) {
  REAL(int, "open", const char*, int, ...);
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  if (!Fails("open")) return real(path, flags, mode);
  errno = EMFILE;
  return -1;
}

FILE* fopen(const char* path, const char* mode) {
  REAL(FILE*, "fopen", const char*, const char*);
  if (!Fails("open")) return real(path, mode);
  errno = EMFILE;
  return NULL;
}

FILE* fopen64(const char* path, const char* mode) { return fopen(path, mode); }

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*), void* argument) {
  REAL(int, "pthread_create", pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
  return Fails("thread") ? EAGAIN : real(thread, attributes, start, argument);
}

/* A context that has no more to give leaves the names 0. */
#define MANY(kind, function)                                       \
  static void (*real_##function)(int, unsigned*);                  \
  static void Wrapped_##function(int count, unsigned* names) {     \
    if (Fails(kind)) {                                             \
      memset(names, 0, (size_t)count * sizeof *names);             \
      return;                                                      \
    }                                                              \
    real_##function(count, names);                                 \
  }
#define ONE(function, ...)                                         \
  static unsigned (*real_##function)(__VA_ARGS__);

MANY("gl", glGenTextures)
MANY("gl", glGenBuffers)
MANY("gl", glGenFramebuffers)
MANY("gl", glGenRenderbuffers)
MANY("gl", glGenVertexArrays)
ONE(glCreateShader, unsigned)
ONE(glCreateProgram, void)

static unsigned Wrapped_glCreateShader(unsigned type) { return Fails("gl") ? 0 : real_glCreateShader(type); }
static unsigned Wrapped_glCreateProgram(void) { return Fails("gl") ? 0 : real_glCreateProgram(); }

static void* Wrap(const char* name, void* found) {
  if (name == NULL || found == NULL) return found;
#define WRAP(function)                                             \
  if (strcmp(name, #function) == 0) {                              \
    real_##function = found;                                       \
    return (void*)Wrapped_##function;                              \
  }
  WRAP(glGenTextures)
  WRAP(glGenBuffers)
  WRAP(glGenFramebuffers)
  WRAP(glGenRenderbuffers)
  WRAP(glGenVertexArrays)
  WRAP(glCreateShader)
  WRAP(glCreateProgram)
  return found;
}

void glGenTextures(int count, unsigned* names) {
  if (real_glGenTextures == NULL) real_glGenTextures = dlsym(RTLD_NEXT, "glGenTextures");
  Wrapped_glGenTextures(count, names);
}

void* eglGetProcAddress(const char* name) {
  REAL(void*, "eglGetProcAddress", const char*);
  return Wrap(name, real(name));
}

void* glXGetProcAddressARB(const unsigned char* name) {
  REAL(void*, "glXGetProcAddressARB", const unsigned char*);
  return Wrap((const char*)name, real(name));
}

/* OpenAL says so in its error, once. */
void alGenSources(int count, unsigned* names) {
  REAL(void, "alGenSources", int, unsigned*);
  if (!Fails("sound")) {
    real(count, names);
    return;
  }
  sound_error = 0xA005; /* AL_OUT_OF_MEMORY */
}

void alGenBuffers(int count, unsigned* names) {
  REAL(void, "alGenBuffers", int, unsigned*);
  if (!Fails("sound")) {
    real(count, names);
    return;
  }
  sound_error = 0xA005;
}

int alGetError(void) {
  REAL(int, "alGetError", void);
  const int mine = atomic_exchange(&sound_error, 0);
  return mine != 0 ? mine : real();
}

void* alcOpenDevice(const char* name) {
  REAL(void*, "alcOpenDevice", const char*);
  return Fails("sound") ? NULL : real(name);
}

void* alcCreateContext(void* device, const int* attributes) {
  REAL(void*, "alcCreateContext", void*, const int*);
  return Fails("sound") ? NULL : real(device, attributes);
}

void* alcLoopbackOpenDeviceSOFT(const char* name) {
  REAL(void*, "alcLoopbackOpenDeviceSOFT", const char*);
  return Fails("sound") ? NULL : real(name);
}
