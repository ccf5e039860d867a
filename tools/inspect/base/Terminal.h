// The terminal that a person reads at.

#pragma once

#include <cstddef>

namespace inspect {

// How wide the terminal behind a descriptor is: as COLUMNS says, or as it says itself. 0 = there is
// none, or it does not say.
size_t terminalColumns(int descriptor);

}  // namespace inspect
