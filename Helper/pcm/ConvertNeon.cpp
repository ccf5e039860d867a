#define ZR_PCM_ISA kNeon
#define ZR_PCM_BLOCKS kNeonBlocks
#include "Helper/pcm/Blocks.h"
