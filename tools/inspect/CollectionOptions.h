// The options for many files.

#pragma once

#include <CLI/CLI.hpp>

#include "inspect/Options.h"

namespace inspect {

void addCollectionOptions(CLI::App& app, CollectionOptions& options);

// Once the command line is read. Whether it is about many files at a time; throws a CLI::Error for
// options that do not go together then.
bool isForCollection(const CLI::App& app, const Options& options);

}  // namespace inspect
