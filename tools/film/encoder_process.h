// The program that encodes a film, and the pipe into it.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>
#include <vector>

class EncoderProcess {
 public:
  EncoderProcess() = default;
  EncoderProcess(const EncoderProcess&) = delete;
  EncoderProcess& operator=(const EncoderProcess&) = delete;
  /// Ends the program if it still runs.
  ~EncoderProcess();

  /// Starts the program that the first word names; it reads what is written here on its standard input, and what it
  /// says goes to standard error. What went wrong, or empty. From here on a broken pipe is an error of Write and no
  /// signal to this process.
  std::string Start(const std::vector<std::string>& words);
  /// Writes it all, however long the program takes; what went wrong, or empty.
  std::string Write(const void* data, std::size_t size);
  /// Ends the program at once, which also ends a Write that waits for it.
  void Kill();
  /// Ends what the program reads and waits for its end; what went wrong, or empty.
  std::string Finish();

 private:
  static constexpr int kNone = -1;

  pid_t process_ = 0;
  int pipe_ = kNone;  // our end
};
