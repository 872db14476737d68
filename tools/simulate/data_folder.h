// The folder that a run reads: what of it decides how a run goes, and a stand-in for it that a run may write into.
#pragma once

#include <cstdint>
#include <string>

#include "tools/simulate/input_script.h"

/// The program's version, as recordings name it.
std::string ProgramVersion();

/// FNV-1a, in hexadecimal, over the levels and archetypes of the working folder and of its examples/, by their names.
std::string DigestOfData();

/// One line on standard error when a recording was made with another version of the program or with other data than
/// those of the working folder.
void TellOtherData(const std::string& recording, const RecordingHeader& header);

/// Makes a temporary folder of links to what the working folder holds and enters it: what is saved there takes the
/// place of a link and nothing else. It goes when the program ends. The system's reason on failure, or empty.
std::string EnterOverlay();
/// Removes that folder before the program's end.
void LeaveOverlay();
