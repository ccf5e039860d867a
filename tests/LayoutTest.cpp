// Where other binaries look: sizes, the places of fields and the slots of virtual operations of the
// classes and records that cross the library's border, on a machine with pointers of 64 bits.

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstddef>

#include "platform/MetaData.h"
#include "platform/OmxNode.h"
#include "platform/SampleBuffer.h"
#include "zrcodecparser/ID3.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MediaExtractorHelper.h"
#include "zrcodecparser/TrackInfo.h"
#include "zrcodecparser/WavDump.h"

// Of classes with a base or a reference the compilers know it too, and say that others might not.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
#define SIZE(type, bytes) static_assert(sizeof(type) == (bytes))
#define AT(type, field, offset) static_assert(offsetof(type, field) == (offset))

namespace android {

// clang-format off
struct LayoutProbe {
    SIZE(ID3, 56);             SIZE(ID3::Version, 4);
    AT(ID3, mIsValid, 0);      AT(ID3, mData, 8);     AT(ID3, mSize, 16);    AT(ID3, mFirstFrameOffset, 24);
    AT(ID3, mVersion, 32);     AT(ID3, mRawSize, 40); AT(ID3, mMixedEncodingType, 48);
    SIZE(ID3::Iterator, 40);   // mParent, which is a reference, at 0
    AT(ID3::Iterator, mID, 8); AT(ID3::Iterator, mOffset, 16);
    AT(ID3::Iterator, mFrameData, 24);                AT(ID3::Iterator, mFrameSize, 32);
    SIZE(DataSourceHelper, 16);                       AT(DataSourceHelper, mSource, 8);
    SIZE(MemorySource, 24);    AT(MemorySource, mData, 8);                   AT(MemorySource, mSize, 16);
    SIZE(WavDump, 1056);       AT(WavDump, mAudioFormat, 0);                 AT(WavDump, mChannels, 2);
    AT(WavDump, mSampleRate, 4);                      AT(WavDump, mByteRate, 8);
    AT(WavDump, mBlockAlign, 12);                     AT(WavDump, mBitsPerSample, 14);
    AT(WavDump, mFilename, 16); AT(WavDump, mFile, 1040);                    AT(WavDump, mDataSize, 1048);
};
SIZE(RefBase, 16);             SIZE(sp<RefBase>, 8);  // a pointer to virtual operations and a count
SIZE(ID3Wrapper, 16);          SIZE(MediaExtractorHelper, 24);               SIZE(MediaCodecHelper, 1);
static_assert(ID3::ID3_UNKNOWN == 0 && ID3::ID3_V1 == 1 && ID3::ID3_V2_4 == 5);

SIZE(TrackInfo, 56);           AT(TrackInfo, trackType, 0);                  AT(TrackInfo, codecType, 4);
AT(TrackInfo, video, 8);       AT(TrackInfo, audio, 8);                      AT(TrackInfo, text, 8);
SIZE(TrackInfo::Video, 20);    AT(TrackInfo::Video, width, 0);               AT(TrackInfo::Video, height, 4);
AT(TrackInfo::Video, bitRate, 8);                     AT(TrackInfo::Video, frameRate, 12);
AT(TrackInfo::Video, hasSyncFrame, 16);
SIZE(TrackInfo::Audio, 48);    AT(TrackInfo::Audio, channelCount, 0);        AT(TrackInfo::Audio, sampleRate, 4);
AT(TrackInfo::Audio, bitsPerSample, 8);               AT(TrackInfo::Audio, bitRate, 12);
AT(TrackInfo::Audio, blockAlign, 16);                 AT(TrackInfo::Audio, language, 24);
AT(TrackInfo::Audio, codecDelay, 32);                 AT(TrackInfo::Audio, seekPreRoll, 40);
SIZE(TrackInfo::Text, 24);     AT(TrackInfo::Text, isBitmapSubtitle, 0);     AT(TrackInfo::Text, isUnsupportedBitmap, 4);
AT(TrackInfo::Text, bitmapLanguage, 8);               AT(TrackInfo::Text, textLanguage, 16);

SIZE(CDataSource, 40);         AT(CDataSource, readAt, 0);                   AT(CDataSource, getSize, 8);
AT(CDataSource, flags, 16);    AT(CDataSource, getUri, 24);                  AT(CDataSource, handle, 32);

// OpenMAX IL 1.1.2, words of 32 bits; what Omx.h says of itself is left out.
AT(OMX_PARAM_PORTDEFINITIONTYPE, nPortIndex, 8);      AT(OMX_PARAM_PORTDEFINITIONTYPE, eDir, 12);
AT(OMX_PARAM_PORTDEFINITIONTYPE, eDomain, 36);        AT(OMX_PARAM_PORTDEFINITIONTYPE, format, 40);
AT(OMX_PARAM_PORTDEFINITIONTYPE, nBufferAlignment, 108);
AT(OMX_AUDIO_PARAM_PCMMODETYPE, nChannels, 12);       AT(OMX_AUDIO_PARAM_PCMMODETYPE, eNumData, 16);
AT(OMX_AUDIO_PARAM_PCMMODETYPE, eEndian, 20);         AT(OMX_AUDIO_PARAM_PCMMODETYPE, bInterleaved, 24);
AT(OMX_AUDIO_PARAM_PCMMODETYPE, nBitPerSample, 28);   AT(OMX_AUDIO_PARAM_PCMMODETYPE, nSamplingRate, 32);
AT(OMX_AUDIO_PARAM_PCMMODETYPE, ePCMMode, 36);        AT(OMX_AUDIO_PARAM_G726TYPE, nChannels, 12);
AT(OMX_AUDIO_PARAM_AACPROFILETYPE, nChannels, 12);    AT(OMX_AUDIO_PARAM_AACPROFILETYPE, nSampleRate, 16);
AT(OMX_AUDIO_PARAM_G726TYPE, eG726Mode, 16);
AT(OMX_AUDIO_PARAM_ANDROID_AACPRESENTATIONTYPE, nMaxOutputChannels, 8);
AT(OMX_AUDIO_PARAM_ANDROID_AACPRESENTATIONTYPE, nPCMLimiterEnable, 32);
// clang-format on

namespace {

// A pointer to a virtual operation says where its slot is (Itanium C++ ABI 2.3; AArch64 C++ ABI
// 3.2.1, which has the mark in the other word). -1 for one that is not virtual.
template <typename Operation>
int slotOf(Operation operation) {
    const auto [place, adjustment] = std::bit_cast<std::array<size_t, 2>>(operation);
#ifdef __aarch64__
    return adjustment & 1 ? static_cast<int>(place / 8) : -1;
#else
    return adjustment == 0 && place & 1 ? static_cast<int>(place / 8) : -1;
#endif
}

// Where a class derived from Base has its first operation of its own: behind all of Base's.
template <typename Base>
struct Next : Base {
    virtual void next() {}
    static int slot() { return slotOf(&Next::next); }
};

struct Counted : RefBase {
    static std::array<int, 4> slots() {
        return {slotOf(&Counted::onFirstRef), slotOf(&Counted::onLastStrongRef),
                slotOf(&Counted::onIncStrongAttempted), slotOf(&Counted::onLastWeakRef)};
    }
};

template <typename... Operations>
std::array<int, sizeof...(Operations)> slots(Operations... operations) {
    return {slotOf(operations)...};
}

// A destructor takes two slots where it is declared.
TEST(Layout, SlotsOfVirtualOperations) {
    using D = DataSourceBase;
    EXPECT_EQ(slots(&D::initCheck, &D::readAt, &D::getSize, &D::getUri, &D::flags, &D::close,
                    &D::getAvailableSize),
              (std::array{0, 1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(Next<D>::slot(), 9);
    EXPECT_EQ(Next<MemorySource>::slot(), 9);
    using H = DataSourceHelper;
    EXPECT_EQ(slots(&H::readAt, &H::getSize, &H::flags), (std::array{2, 3, 4}));
    EXPECT_EQ(Next<H>::slot(), 5);
    using M = MediaBufferHelper;
    EXPECT_EQ(slots(&M::data, &M::size, &M::range_offset, &M::range_length, &M::set_range),
              (std::array{0, 1, 2, 3, 4}));
    EXPECT_EQ(Next<M>::slot(), 7);
    EXPECT_EQ(Counted::slots(), (std::array{2, 3, 4, 5}));
    using N = IOMXNode;
    EXPECT_EQ(slots(&N::getParameter, &N::setParameter, &N::getExtensionIndex),
              (std::array{6, 7, 8}));
    EXPECT_EQ(Next<N>::slot(), 9);
    EXPECT_EQ(Next<MediaExtractorHelper>::slot(), 6);
    EXPECT_EQ(Next<ID3Wrapper>::slot(), 6);
    EXPECT_EQ(Next<MetaDataBase>::slot(), 2);
    EXPECT_EQ(slotOf(&ID3::isValid), -1);
}

}  // namespace
}  // namespace android
