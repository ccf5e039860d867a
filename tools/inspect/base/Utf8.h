// Text of unknown encoding, made fit to be shown.

#pragma once

#include <string>
#include <string_view>

namespace inspect {

bool isUtf8(std::string_view text);  // RFC 3629

// The text as UTF-8: as it is, or taken for ISO-8859-1 when it is none.
std::string toUtf8(std::string_view text);

// For everything from a file or a name that goes to a terminal: the same, with control characters,
// what changes the direction of writing and what takes no room as \n, \x1b, \u202e, and a backslash
// as two.
std::string escaped(std::string_view text);

// The same for a page, where a line may end and a backslash needs no other.
std::string visible(std::string_view text);

// A JSON document, which is UTF-8, with the same characters as \u escapes; it means what it meant.
std::string escapedJson(std::string_view document);

// How many columns of a terminal a text takes; colours take none. And the part of a text that fits.
size_t columnsOf(std::string_view utf8);
std::string firstColumns(std::string_view utf8, size_t columns);

// No more than the beginning of a long text, which is UTF-8.
std::string shortened(std::string_view text);

}  // namespace inspect
