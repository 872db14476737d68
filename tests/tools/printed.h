// What a tool prints to the file that it is given.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

template <class Print>
std::string Printed(Print print) {
  char* buffer = nullptr;
  std::size_t size = 0;
  std::FILE* out = ::open_memstream(&buffer, &size);
  print(out);
  std::fclose(out);
  std::string text(buffer, size);
  std::free(buffer);
  return text;
}
