#define ZR_PCM_ISA kAvx2
#include "Helper/pcm/Blocks.h"
