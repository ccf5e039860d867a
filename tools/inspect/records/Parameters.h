// The structures that components receive.

#pragma once

#include <cstdint>
#include <string>

#include "inspect/records/Record.h"

namespace inspect {

// A parameter by its structure. name is that of an index which a component was asked for.
Record readParameter(uint32_t index, const std::string& name, Bytes parameter);

}  // namespace inspect
