// The program that encodes a film, and the pipes into it.
#pragma once

#include <sys/types.h>

#include <array>
#include <cstddef>
#include <string>
#include <vector>

class EncoderProcess {
 public:
  /// Its descriptor 0 and its descriptor 3.
  enum Pipe { kPictures, kSound };

  EncoderProcess() = default;
  EncoderProcess(const EncoderProcess&) = delete;
  EncoderProcess& operator=(const EncoderProcess&) = delete;
  /// Ends the program if it still runs.
  ~EncoderProcess();

  /// Starts the program that the first word names, with a pipe for pictures and, if asked for, one for sound. What it
  /// says goes to standard error. From here on a broken pipe is an error of Write and no signal to this process.
  std::string Start(const std::vector<std::string>& words, bool withSound);
  /// Writes it all, however long the program takes; what went wrong, or empty. One thread a pipe.
  std::string Write(Pipe pipe, const void* data, std::size_t size);
  /// Ends what the program reads.
  void Close(Pipe pipe);
  /// Ends the program at once, which also ends a Write that waits for it.
  void Kill();
  /// Waits for the program's end; what went wrong, or empty.
  std::string Wait();

 private:
  static constexpr int kNone = -1;

  pid_t process_ = 0;
  std::array<int, 2> pipes_ = {kNone, kNone};  // our ends
};
