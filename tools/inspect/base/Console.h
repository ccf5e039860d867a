// What the user reads.

#pragma once

#include <string>

namespace inspect {

// On standard error, after the program's name; nothing in it steers a terminal.
void complain(const std::string& text);

// On standard output, as it is. Returns whether all of it is written; complains if not.
bool print(const std::string& text);

}  // namespace inspect
