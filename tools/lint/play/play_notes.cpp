#include "tools/lint/play/play_notes.h"

#include <cstdio>
#include <sstream>

void WriteNote(std::string& text, const PlayNote& note) {
  text += note.kind + ' ' + std::to_string(note.piece) + ' ' + std::to_string(note.object);
  for (const double number : note.numbers) {
    char digits[32];
    std::snprintf(digits, sizeof digits, " %.9g", number);
    text += digits;
  }
  text += '\n';
}

std::vector<PlayNote> ReadNotes(const std::string& text) {
  std::vector<PlayNote> notes;
  std::istringstream lines(text.substr(0, text.rfind('\n') + 1));
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    PlayNote note;
    if (!(words >> note.kind >> note.piece >> note.object)) continue;
    for (double number = 0.0; words >> number;) note.numbers.push_back(number);
    notes.push_back(std::move(note));
  }
  return notes;
}
