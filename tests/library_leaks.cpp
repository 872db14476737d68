// The sanitizer build's reports are about our code: what graphics drivers, the desktop's bus and the sound
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
