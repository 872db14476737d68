// Where the game's data is. Names are meant in the working folder, and there everything is saved. Where that is the
// user's, because the program is installed and what came with it belongs to nobody, it holds what he made himself, and
// what is missing there is read from the installed folder.
#pragma once

#include <string>
#include <vector>

/// Enters the program's own data: the folder in which the program lies, when the game is there too; else the user's,
/// which is made, over the installed one; the installed one alone, with a message, when there can be none. What went
/// wrong, or empty.
std::string EnterOwnData();
/// The same for a program in `folder`.
std::string EnterDataOf(const std::string& folder);
/// Without entering it: a path into the user's folder falls back to the installed one from now on.
void LocateOwnData();
/// From now on every name means what it says, as at the start.
void ForgetOwnData();

/// What to read under this path: the file or folder itself, else the installed one in its place, if there is one.
std::string FindData(const std::string& path);
/// The folder, and the installed one that stands in for what it lacks; those that exist, in this order.
std::vector<std::string> FindDataFolders(const std::string& folder);
/// The user's folder where that is what is written to; empty for a program beside its data.
const std::string& UserDataFolder();
