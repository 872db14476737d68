// libFuzzer target: any bytes as an input file or a recording that is only parsed. What is wrong must be told with the
// number of its line.
//
//   input_fuzz -max_len=16384 -timeout=2 -malloc_limit_mb=64 CORPUS_FOLDER...
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "tools/simulate/input_script.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  InputScript script;
  std::string error;
  const bool well = script.Parse(std::string(reinterpret_cast<const char*>(data), size), error);
  if (well || error.starts_with("line ")) return 0;
  std::fprintf(stderr, "refused without a line: '%s'\n", error.c_str());
  std::abort();
}
