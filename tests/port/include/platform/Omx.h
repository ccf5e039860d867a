#pragma once
// The published headers mean words of 32 bits by "long".
#define OMX_SKIP64BIT
#define long int
#include <OMX_Audio.h>
#include <OMX_Component.h>
#include <OMX_Core.h>
#include <OMX_Index.h>
#undef long

inline constexpr auto OMX_IndexParamAudioAndroidAacPresentation =
        static_cast<OMX_INDEXTYPE>(0x6F400003);

struct OMX_AUDIO_PARAM_ANDROID_AACPRESENTATIONTYPE {
    OMX_U32 nSize;
    OMX_VERSIONTYPE nVersion;
    OMX_S32 nMaxOutputChannels, nDrcCut, nDrcBoost, nHeavyCompression, nTargetReferenceLevel,
            nEncodedTargetLevel, nPCMLimiterEnable;
};
