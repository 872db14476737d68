// The text from which a bank is built.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "audio/studio/bank_file.h"

struct BankSpecLine {
  int line = 0;
  std::string path;  ///< of the event
  Studio::Category category = Studio::Category::kEffects;
  std::string file;
};

/// The lines that name events, in order; what is wrong with the others goes into `faults`, each beginning with "LINE:
/// ".
std::vector<BankSpecLine> ParseBankSpec(std::string_view text, std::vector<std::string>& faults);
