// The C library declares this and does not have it. No signal ever reaches a page.
#include <signal.h>

extern "C" int sigaltstack(const stack_t* /*given*/, stack_t* /*old*/) { return 0; }
