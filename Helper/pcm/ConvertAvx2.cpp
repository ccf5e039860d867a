#define ZR_PCM_ISA kAvx2
#define ZR_PCM_BLOCKS kAvx2Blocks
#include "Helper/pcm/Blocks.h"
