// Text of unknown encoding, made fit to be shown.

#pragma once

#include <string>
#include <string_view>

namespace inspect {

bool isUtf8(std::string_view text);  // RFC 3629

// The text as UTF-8: as it is, or taken for ISO-8859-1 when it is none.
std::string toUtf8(std::string_view text);

// The same with control characters, and what changes the direction of writing, as \n, \x1b, \u202e.
std::string escaped(std::string_view text);

// No more than the beginning of a long text, which is UTF-8.
std::string shortened(std::string_view text);

}  // namespace inspect
