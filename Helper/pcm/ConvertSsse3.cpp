#define ZR_PCM_ISA kSsse3
#include "Helper/pcm/Blocks.h"
