// Writes down what a run is given, as an input file that plays it again. Lines reach the file once a second, at the
// end, and when the program dies of a signal that it can catch, so a crash leaves all that led to it. One at a time.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

#include "tools/simulate/input_event.h"

class Recorder {
 public:
  Recorder() = default;
  Recorder(const Recorder&) = delete;
  Recorder& operator=(const Recorder&) = delete;
  /// What was not finished stays without its end.
  ~Recorder();

  /// Makes the file, which must not be there yet, with the lines that name the program, the working folder's data and
  /// the start. The system's reason on failure, or empty.
  std::string Open(const std::string& fileName);
  /// Writes to nowhere when there is no file, or none any more: a full disk ends the recording with a line on the print
  /// target.
  void Write(int frame, const InputEvent& event);
  /// Before each frame: from now on the file says that the run came as far as through this frame.
  void BeginFrame(int frame);
  /// The run has ended by itself after that many frames.
  void Finish(int frames);
  bool IsOpen() const { return file_ >= 0; }
  const std::string& GetFileName() const { return fileName_; }

 private:
  using Clock = std::chrono::steady_clock;

  void Append(std::string_view line);
  void Flush();
  void Close();
  static void HandleSignal(int signal);

  // What the signal handler reads is plain: a descriptor, arrays and their lengths.
  static constexpr std::size_t kBuffer = 65536;
  std::string fileName_;
  int file_ = -1;
  std::array<char, kBuffer> buffer_;
  std::size_t length_ = 0;  // whole lines
  std::array<char, 32> reached_;
  std::size_t reachedLength_ = 0;
  long long written_ = 0;  // bytes of whole lines in the file
  Clock::time_point flushed_;
};
