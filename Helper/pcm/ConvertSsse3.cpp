#define ZR_PCM_ISA kSsse3
#define ZR_PCM_BLOCKS kSsse3Blocks
#include "Helper/pcm/Blocks.h"
