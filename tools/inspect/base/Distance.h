// How alike words are.

#pragma once

#include <cstddef>
#include <string_view>

namespace inspect {

// How many characters have to be put in, left out or changed.
size_t distance(std::string_view from, std::string_view to);

}  // namespace inspect
