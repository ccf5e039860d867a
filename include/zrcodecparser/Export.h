// Marks the names that leave the shared library; everything else stays inside.

#pragma once

#define ZR_EXPORT __attribute__((visibility("default")))
