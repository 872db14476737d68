// Has the level played by bots, on a copy, in a brinewhirl-tool of its own beside the game, and hears what lint says of
// it. Nothing here waits: the game goes on meanwhile. The copy and the process go with the object.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

class PlayedCopy {
 public:
  PlayedCopy() = default;
  PlayedCopy(const PlayedCopy&) = delete;
  PlayedCopy& operator=(const PlayedCopy&) = delete;
  ~PlayedCopy() { Stop(); }

  /// Writes the text down under that plain name in a temporary folder and starts the tool on it, beside the program or
  /// else where programs are looked for; the present folder is the game's. What went wrong, or empty. One that runs is
  /// stopped first.
  std::string Start(const std::string& name, const std::string& text);
  bool IsRunning() const { return process_ > 0; }
  /// Once a frame: the lines of lint when the tool has ended; they begin with GetFile(). Nothing before that.
  std::optional<std::vector<std::string>> Poll();
  /// The copy, which stays until the next Start or Stop.
  const std::string& GetFile() const { return file_; }
  /// Ends the tool and removes the copy.
  void Stop();

 private:
  std::string Launch();

  std::string folder_;
  std::string file_;
  pid_t process_ = 0;
  int pipe_ = -1;
  std::string heard_;
};
