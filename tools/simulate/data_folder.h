// The folder that a run reads: what of it decides how a run goes, and a stand-in for it that a run may write into.
#pragma once

#include <cstdint>
#include <string>

#include "tools/simulate/input_script.h"

/// FNV-1a, in hexadecimal, over the levels and archetypes that the game reads, those of examples/ too, by their names.
std::string DigestOfData();

/// One line on standard error when a recording was made with another version of the program or with other data than
/// those that the game reads here.
void TellOtherData(const std::string& recording, const RecordingHeader& header);

/// Makes a temporary folder of links to all that the game reads in the working one and enters it: what is saved there
/// takes the place of a link and nothing else. It goes when the program ends. The system's reason on failure, or empty.
std::string EnterOverlay();
/// Removes that folder before the program's end.
void LeaveOverlay();
