// The structures and indices of OpenMAX IL 1.1.2 that components are set up with, and the
// platform's extensions of it. Words are 32 bits wide, pointers as wide as the machine's.

#pragma once

#include <cstddef>
#include <cstdint>

extern "C" {

typedef uint8_t OMX_U8;
typedef uint32_t OMX_U32;
typedef int32_t OMX_S32;
typedef char* OMX_STRING;
typedef void* OMX_NATIVE_DEVICETYPE;
typedef void* OMX_NATIVE_WINDOWTYPE;

typedef enum OMX_BOOL { OMX_FALSE = 0, OMX_TRUE = 1, OMX_BOOL_MAX = 0x7FFFFFFF } OMX_BOOL;

typedef union OMX_VERSIONTYPE {
    struct {
        OMX_U8 nVersionMajor;
        OMX_U8 nVersionMinor;
        OMX_U8 nRevision;
        OMX_U8 nStep;
    } s;
    OMX_U32 nVersion;
} OMX_VERSIONTYPE;

// OMX_Index.h; a component may name any number of 32 bits. Vendors and the platform number their
// own from OMX_IndexVendorStartUnused on.
typedef enum OMX_INDEXTYPE : OMX_U32 {
    OMX_IndexParamPortDefinition = 0x02000001,
    OMX_IndexParamAudioPcm = 0x04000002,
    OMX_IndexParamAudioAac = 0x04000003,
    OMX_IndexParamAudioRa = 0x04000004,
    OMX_IndexParamAudioWma = 0x0400000A,
    OMX_IndexParamAudioG726 = 0x0400000F,
    OMX_IndexParamAudioAndroidAacPresentation = 0x6F400003,
    OMX_IndexVendorStartUnused = 0x7F000000,
    OMX_IndexMax = 0x7FFFFFFF,
} OMX_INDEXTYPE;

// OMX_Core.h, OMX_Component.h
typedef enum OMX_DIRTYPE { OMX_DirInput, OMX_DirOutput, OMX_DirMax = 0x7FFFFFFF } OMX_DIRTYPE;
typedef enum OMX_PORTDOMAINTYPE {
    OMX_PortDomainAudio,
    OMX_PortDomainVideo,
    OMX_PortDomainImage,
    OMX_PortDomainOther,
    OMX_PortDomainMax = 0x7FFFFFFF,
} OMX_PORTDOMAINTYPE;

// OMX_Audio.h
typedef enum OMX_AUDIO_CODINGTYPE {
    OMX_AUDIO_CodingUnused,
    OMX_AUDIO_CodingAutoDetect,
    OMX_AUDIO_CodingPCM,
    OMX_AUDIO_CodingMax = 0x7FFFFFFF,
} OMX_AUDIO_CODINGTYPE;

typedef struct OMX_AUDIO_PORTDEFINITIONTYPE {
    OMX_STRING cMIMEType;
    OMX_NATIVE_DEVICETYPE pNativeRender;
    OMX_BOOL bFlagErrorConcealment;
    OMX_AUDIO_CODINGTYPE eEncoding;
} OMX_AUDIO_PORTDEFINITIONTYPE;

// OMX_Video.h; only its size counts here.
typedef struct OMX_VIDEO_PORTDEFINITIONTYPE {
    OMX_STRING cMIMEType;
    OMX_NATIVE_DEVICETYPE pNativeRender;
    OMX_U32 nFrameWidth;
    OMX_U32 nFrameHeight;
    OMX_S32 nStride;
    OMX_U32 nSliceHeight;
    OMX_U32 nBitrate;
    OMX_U32 xFramerate;
    OMX_BOOL bFlagErrorConcealment;
    OMX_U32 eCompressionFormat;
    OMX_U32 eColorFormat;
    OMX_NATIVE_WINDOWTYPE pNativeWindow;
} OMX_VIDEO_PORTDEFINITIONTYPE;

typedef struct OMX_PARAM_PORTDEFINITIONTYPE {
    OMX_U32 nSize;
    OMX_VERSIONTYPE nVersion;
    OMX_U32 nPortIndex;
    OMX_DIRTYPE eDir;
    OMX_U32 nBufferCountActual;
    OMX_U32 nBufferCountMin;
    OMX_U32 nBufferSize;
    OMX_BOOL bEnabled;
    OMX_BOOL bPopulated;
    OMX_PORTDOMAINTYPE eDomain;
    union {
        OMX_AUDIO_PORTDEFINITIONTYPE audio;
        OMX_VIDEO_PORTDEFINITIONTYPE video;
    } format;
    OMX_BOOL bBuffersContiguous;
    OMX_U32 nBufferAlignment;
} OMX_PARAM_PORTDEFINITIONTYPE;

typedef enum OMX_NUMERICALDATATYPE {
    OMX_NumericalDataSigned,
    OMX_NumericalDataUnsigned,
    OMX_NumercialDataMax = 0x7FFFFFFF,
} OMX_NUMERICALDATATYPE;
typedef enum OMX_ENDIANTYPE {
    OMX_EndianBig,
    OMX_EndianLittle,
    OMX_EndianMax = 0x7FFFFFFF,
} OMX_ENDIANTYPE;
typedef enum OMX_AUDIO_PCMMODETYPE {
    OMX_AUDIO_PCMModeLinear,
    OMX_AUDIO_PCMModeALaw,
    OMX_AUDIO_PCMModeMULaw,
    OMX_AUDIO_PCMModeMax = 0x7FFFFFFF,
} OMX_AUDIO_PCMMODETYPE;
typedef enum OMX_AUDIO_CHANNELTYPE {
    OMX_AUDIO_ChannelNone,
    OMX_AUDIO_ChannelLF,
    OMX_AUDIO_ChannelRF,
    OMX_AUDIO_ChannelCF,
    OMX_AUDIO_ChannelLS,
    OMX_AUDIO_ChannelRS,
    OMX_AUDIO_ChannelLFE,
    OMX_AUDIO_ChannelCS,
    OMX_AUDIO_ChannelLR,
    OMX_AUDIO_ChannelRR,
    OMX_AUDIO_ChannelMax = 0x7FFFFFFF,
} OMX_AUDIO_CHANNELTYPE;

enum { OMX_AUDIO_MAXCHANNELS = 16 };

typedef struct OMX_AUDIO_PARAM_PCMMODETYPE {
    OMX_U32 nSize;
    OMX_VERSIONTYPE nVersion;
    OMX_U32 nPortIndex;
    OMX_U32 nChannels;
    OMX_NUMERICALDATATYPE eNumData;
    OMX_ENDIANTYPE eEndian;
    OMX_BOOL bInterleaved;
    OMX_U32 nBitPerSample;
    OMX_U32 nSamplingRate;
    OMX_AUDIO_PCMMODETYPE ePCMMode;
    OMX_AUDIO_CHANNELTYPE eChannelMapping[OMX_AUDIO_MAXCHANNELS];
} OMX_AUDIO_PARAM_PCMMODETYPE;

typedef enum OMX_AUDIO_AACSTREAMFORMATTYPE {
    OMX_AUDIO_AACStreamFormatMP2ADTS,
    OMX_AUDIO_AACStreamFormatMP4ADTS,
    OMX_AUDIO_AACStreamFormatMP4LOAS,
    OMX_AUDIO_AACStreamFormatMP4LATM,
    OMX_AUDIO_AACStreamFormatADIF,
    OMX_AUDIO_AACStreamFormatMP4FF,
    OMX_AUDIO_AACStreamFormatMax = 0x7FFFFFFF,
} OMX_AUDIO_AACSTREAMFORMATTYPE;

typedef struct OMX_AUDIO_PARAM_AACPROFILETYPE {
    OMX_U32 nSize;
    OMX_VERSIONTYPE nVersion;
    OMX_U32 nPortIndex;
    OMX_U32 nChannels;
    OMX_U32 nSampleRate;
    OMX_U32 nBitRate;
    OMX_U32 nAudioBandWidth;
    OMX_U32 nFrameLength;
    OMX_U32 nAACtools;
    OMX_U32 nAACERtools;
    OMX_U32 eAACProfile;
    OMX_AUDIO_AACSTREAMFORMATTYPE eAACStreamFormat;
    OMX_U32 eChannelMode;
} OMX_AUDIO_PARAM_AACPROFILETYPE;

typedef enum OMX_AUDIO_G726MODE {
    OMX_AUDIO_G726ModeUnused,
    OMX_AUDIO_G726Mode16,
    OMX_AUDIO_G726Mode24,
    OMX_AUDIO_G726Mode32,
    OMX_AUDIO_G726Mode40,
    OMX_AUDIO_G726ModeMax = 0x7FFFFFFF,
} OMX_AUDIO_G726MODE;

typedef struct OMX_AUDIO_PARAM_G726TYPE {
    OMX_U32 nSize;
    OMX_VERSIONTYPE nVersion;
    OMX_U32 nPortIndex;
    OMX_U32 nChannels;
    OMX_AUDIO_G726MODE eG726Mode;
} OMX_AUDIO_PARAM_G726TYPE;

// The platform's own: how AAC is to be mixed and limited. -1 leaves a value to the decoder.
typedef struct OMX_AUDIO_PARAM_ANDROID_AACPRESENTATIONTYPE {
    OMX_U32 nSize;
    OMX_VERSIONTYPE nVersion;
    OMX_S32 nMaxOutputChannels;
    OMX_S32 nDrcCut;
    OMX_S32 nDrcBoost;
    OMX_S32 nHeavyCompression;
    OMX_S32 nTargetReferenceLevel;
    OMX_S32 nEncodedTargetLevel;
    OMX_S32 nPCMLimiterEnable;
} OMX_AUDIO_PARAM_ANDROID_AACPRESENTATIONTYPE;

static_assert(sizeof(OMX_PARAM_PORTDEFINITIONTYPE) == 112);
static_assert(offsetof(OMX_PARAM_PORTDEFINITIONTYPE, format.audio.eEncoding) == 60);
static_assert(sizeof(OMX_AUDIO_PARAM_PCMMODETYPE) == 104);
static_assert(offsetof(OMX_AUDIO_PARAM_PCMMODETYPE, eChannelMapping) == 40);
static_assert(sizeof(OMX_AUDIO_PARAM_AACPROFILETYPE) == 52);
static_assert(offsetof(OMX_AUDIO_PARAM_AACPROFILETYPE, eAACStreamFormat) == 44);
static_assert(sizeof(OMX_AUDIO_PARAM_G726TYPE) == 20);
static_assert(sizeof(OMX_AUDIO_PARAM_ANDROID_AACPRESENTATIONTYPE) == 36);

}  // extern "C"
