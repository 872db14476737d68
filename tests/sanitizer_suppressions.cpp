// The sanitizer builds' reports are about our code: what graphics drivers, the desktop's bus and the sound
// decoder (at a damaged head) never free is left out.
#ifdef BRINEWHIRL_SANITIZE

// A library that is still loaded when leaks are searched for has a name that can be suppressed.
extern "C" int dlclose(void* /*library*/) { return 0; }

extern "C" const char* __lsan_default_suppressions() {
  return "leak:swrast_dri\n"
         "leak:libLLVM\n"
         "leak:libEGL\n"
         "leak:libgallium\n"
         "leak:libdbus\n"
         "leak:vorbis_info_init\n";
}

#endif

// OpenAL's own mixing thread and its locks are not instrumented, so that memory it hands on looks like a race.
#ifdef __SANITIZE_THREAD__
extern "C" const char* __tsan_default_suppressions() { return "called_from_lib:libopenal.so\n"; }
#endif
