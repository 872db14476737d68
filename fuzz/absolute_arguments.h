// A fuzz program that moves into another folder takes its corpus folders, and the place for what it finds, along: they
// are named relative to where it was started.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// In LLVMFuzzerInitialize, before the program moves. What is found lands in the folder of the call, if no place is
/// named.
inline void MakeArgumentsAbsolute(int* argc, char*** argv) {
  static std::vector<std::string> arguments(*argv, *argv + *argc);
  const std::string prefix = "-artifact_prefix=";
  arguments.insert(arguments.begin() + 1, prefix + "./");
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    std::string& argument = arguments[i];
    if (!argument.starts_with('-')) argument = std::filesystem::absolute(argument).string();
    if (argument.starts_with(prefix))
      argument = prefix + std::filesystem::absolute(argument.substr(prefix.size())).string();
  }
  static std::vector<char*> pointers;
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  *argc = static_cast<int>(pointers.size());
  *argv = pointers.data();
}
