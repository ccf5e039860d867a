// One HTML document that needs nothing else: its style and its script stand in it.

#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "inspect/report/JsonReport.h"

namespace inspect {

// Fills in a template of this folder, such as "file": {{key}} is escaped; {{{key}}} is not, and
// only for HTML that was filled in before: its keys end in Html. Null is nothing, and so is a list
// without elements; numbers are as in JSON. A key that an object lacks is that of the one around
// it.
std::string fillIn(std::string_view name, const Json& values);

// The same escape for HTML that no template makes.
std::string escapedHtml(std::string_view text);

// The document around a body. It is well-formed XML as well, and lets nothing be loaded or run but
// its own style and script, by their hashes. Title: a text. More: what a page has beside page.css
// and page.js, "collection" for collection.css and collection.js; empty = nothing.
std::string wholePage(const std::string& title, const std::string& bodyHtml,
                      const std::string& more = {});

// A text of several, and of a number.
std::string joined(std::initializer_list<std::string_view> parts);
std::string numbered(std::string_view before, uint64_t number, std::string_view after = {});

std::string base64(Bytes data);  // RFC 4648 4

}  // namespace inspect
