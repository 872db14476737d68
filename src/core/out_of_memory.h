// What happens when the machine has no more memory to give.
#pragma once

/// From now on an allocation of C++ that fails ends the program with a line on standard error and exit code 1, instead
/// of an exception that nobody could act on. Called first thing in main.
void EndWhenOutOfMemory();
