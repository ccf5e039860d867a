// The declarations of the standard's own headers, whose words are "long": 32 bits wide on the
// machines of its time, and made so here.

#ifdef __clang__
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define OMX_SKIP64BIT
#define long int
#include <OMX_Audio.h>
#include <OMX_Component.h>
#include <OMX_Core.h>
#include <OMX_Index.h>
#undef long

#include "referee/OmxFacts.h"

namespace omxfacts {

std::vector<Fact> standard() {
    return ZR_OMX_FACTS;
}

}  // namespace omxfacts
