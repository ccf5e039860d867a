#include "zrcodecparser/ID3.h"

#include <array>
#include <cstdlib>
#include <new>

#include "Helper/base/Log.h"
#include "ParserLibrary/id3/Frames.h"
#include "ParserLibrary/id3/Picture.h"
#include "ParserLibrary/id3/Tag.h"
#include "ParserLibrary/id3/Unsynchronization.h"
#include "platform/Strings.h"

namespace android {
namespace {

static_assert(static_cast<int>(id3::Version::kV1) == ID3::ID3_V1 &&
              static_cast<int>(id3::Version::kV2_4) == ID3::ID3_V2_4);

struct MixedEncodingRow {
    uint32_t bit;
    id3::FrameId firstId;
    id3::FrameId secondId;
};

constexpr auto kMixedEncodingRows = std::to_array<MixedEncodingRow>({
        {0x01, id3::frameId("TALB"), id3::frameId("TAL")},  // album
        {0x02, id3::frameId("TPE1"), id3::frameId("TP1")},  // artist
        {0x04, id3::frameId("TPE2"), id3::frameId("TP2")},  // album artist
        {0x08, id3::frameId("TCOM"), id3::frameId("TCM")},  // composer
        {0x10, id3::frameId("TCON"), id3::frameId("TCO")},  // genre
        {0x20, id3::frameId("TIT2"), id3::frameId("TT2")},  // title
});

void warnOf(id3::PictureFault fault) {
    switch (fault) {
        case id3::PictureFault::kMime: ZR_LOGW(base::kId3Tag, "bogus album art size: mime"); break;
        case id3::PictureFault::kPictureType:
            ZR_LOGW(base::kId3Tag, "bogus album art size: pic type");
            break;
        case id3::PictureFault::kDescription:
            ZR_LOGW(base::kId3Tag, "bogus album art size: description");
            break;
        case id3::PictureFault::kNone:
        case id3::PictureFault::kUnnamed: break;
    }
}

id3::Tag readV2(const id3::ByteSource& source, off64_t offset) {
    const auto header = id3::readTagHeader(source, offset);
    if (!header) return {};
    if (header->size > id3::kMaxTagSize) {
        ZR_LOGE(base::kId3Tag, "skipping huge ID3 metadata of size %zu", header->size);
        return {};
    }
    return id3::readTagV2(source, offset, *header);
}

}  // namespace

ID3::ID3(DataSourceHelper* source, bool ignoreV1, off64_t offset) {
    mIsValid = parseV2(source, offset) || (!ignoreV1 && parseV1(source));
    checkMixedEncodingtype();
}

ID3::ID3(const uint8_t* data, size_t size, bool ignoreV1) {
    auto* source = new (std::nothrow) MemorySource(data, size);
    if (source == nullptr) return;
    const id3::ByteSource bytes = id3::byteSource(source);
    mIsValid = hold(readV2(bytes, 0)) || (!ignoreV1 && hold(id3::readTagV1(bytes)));
    delete source;
    checkMixedEncodingtype();
}

ID3::~ID3() {
    std::free(mData);
}

bool ID3::isValid() const {
    return mIsValid;
}

ID3::Version ID3::version() const {
    return mVersion;
}

bool ID3::parseV2(DataSourceHelper* source, off64_t offset) {
    return hold(readV2(id3::byteSource(source), offset));
}

bool ID3::parseV2(DataSourceBase* source, off64_t offset) {
    return hold(readV2(id3::byteSource(source), offset));
}

bool ID3::parseV1(DataSourceHelper* source) {
    return hold(id3::readTagV1(id3::byteSource(source)));
}

bool ID3::parseV1(DataSourceBase* source) {
    return hold(id3::readTagV1(id3::byteSource(source)));
}

bool ID3::ParseSyncsafeInteger(const uint8_t encoded[4], size_t* x) {
    *x = 0;
    for (int i = 0; i < 4; ++i) {
        if ((encoded[i] & 0x80) != 0) return false;
        *x = (*x << 7) | encoded[i];
    }
    return true;
}

void ID3::removeUnsynchronization() {
    mSize = id3::removeUnsynchronization({mData, mSize});
}

bool ID3::removeUnsynchronizationV2_4(bool iTunesHack, bool hasGlobalUnsync) {
    const auto sizes = iTunesHack ? id3::FrameSizes::kPlain : id3::FrameSizes::kSyncsafe;
    const auto result =
            id3::simplifyFrames({mData, mSize}, mFirstFrameOffset, sizes, hasGlobalUnsync);
    mSize = result.size;
    return result.ok;
}

void ID3::checkMixedEncodingtype() {
    if (!mIsValid) return;
    mMixedEncodingType = 0;
    const id3::TagView tag = view();
    const auto frames = id3::chooseFrames(tag, kMixedEncodingRows);
    for (size_t i = 0; i < frames.size(); ++i) {
        const bool isEightBit = frames[i].size != 0 && id3::encodingAt(tag, frames[i].offset) == 0;
        if (isEightBit) mMixedEncodingType |= kMixedEncodingRows[i].bit;
    }
}

uint32_t ID3::isMixedEncodingtype() {
    return mMixedEncodingType;
}

const void* ID3::getAlbumArt(size_t* length, String8* mime) const {
    *length = 0;
    mime->setTo("");
    const bool isApic = mVersion == ID3_V2_3 || mVersion == ID3_V2_4;
    const Iterator frame(*this, isApic ? "APIC" : "PIC");
    if (frame.done()) return nullptr;

    size_t size = 0;
    const uint8_t* data = frame.getData(&size);
    const auto picture = isApic ? id3::readApic({data, size}) : id3::readPic({data, size});
    warnOf(picture.fault);
    if (picture.mimeType != nullptr) mime->setTo(picture.mimeType);
    if (picture.fault != id3::PictureFault::kNone) return nullptr;
    *length = picture.data.size();
    return picture.data.data();
}

// In place of the tag before. Only the version of that stays when there is no tag.
bool ID3::hold(id3::Tag tag) {
    std::free(mData);
    mData = tag.memory.release();
    mSize = tag.size;
    mFirstFrameOffset = tag.firstFrameOffset;
    mRawSize = tag.rawSize;
    if (mData == nullptr) return false;
    mVersion = static_cast<Version>(tag.version);
    return true;
}

id3::TagView ID3::view() const {
    return {{mData, mSize}, mFirstFrameOffset, static_cast<id3::Version>(mVersion)};
}

}  // namespace android
