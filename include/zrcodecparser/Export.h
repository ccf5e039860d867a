/// @file
/// Marks the names that leave the shared library; everything else stays inside.

#pragma once

/// Stands in front of what leaves the shared library.
#define ZR_EXPORT __attribute__((visibility("default")))
