#include "core/out_of_memory.h"

#include <cstdio>
#include <cstdlib>
#include <new>

void EndWhenOutOfMemory() {
  std::set_new_handler([] {
    std::fputs("Out of memory, so the program ends here\n", stderr);  // unbuffered, needs no memory
    std::_Exit(1);                                                    // what would run at exit needs memory, too
  });
}
