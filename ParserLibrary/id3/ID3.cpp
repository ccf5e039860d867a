#include "zrcodecparser/ID3.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <new>

#include "Helper/base/Check.h"
#include "Helper/base/Checked.h"
#include "Helper/base/Log.h"
#include "ParserLibrary/id3/ByteSource.h"
#include "ParserLibrary/id3/Frames.h"
#include "ParserLibrary/id3/Picture.h"
#include "ParserLibrary/id3/TagHeader.h"
#include "ParserLibrary/id3/Unsynchronization.h"

namespace android {
namespace {

constexpr size_t kV1TagSize = 128;
constexpr size_t kV1FirstFieldOffset = 3;
constexpr size_t kV1_1MarkOffset = 125;

ID3::Version versionOf(uint8_t majorVersion) {
    switch (majorVersion) {
        case 2: return ID3::ID3_V2_2;
        case 3: return ID3::ID3_V2_3;
        case 4: return ID3::ID3_V2_4;
        default: base::fatalNotEqual(base::kAtId3, "header.version_major,4", majorVersion, 4);
    }
}

uint8_t* allocate(size_t size) {
    return static_cast<uint8_t*>(std::malloc(size));
}

struct MixedEncodingRow {
    uint32_t bit;
    id3::FrameId id;
    id3::FrameId idV2_2;
};

constexpr auto kMixedEncodingRows = std::to_array<MixedEncodingRow>({
        {0x01, id3::frameId("TALB"), id3::frameId("TAL")},  // album
        {0x02, id3::frameId("TPE1"), id3::frameId("TP1")},  // artist
        {0x04, id3::frameId("TPE2"), id3::frameId("TP2")},  // album artist
        {0x08, id3::frameId("TCOM"), id3::frameId("TCM")},  // composer
        {0x10, id3::frameId("TCON"), id3::frameId("TCO")},  // genre
        {0x20, id3::frameId("TIT2"), id3::frameId("TT2")},  // title
});

// As bits of the rows.
struct EightBitTexts {
    uint32_t found = 0;
    uint32_t eightBit = 0;

    // Only the first frame of a kind counts.
    void add(uint32_t bit, bool isEightBit) {
        if ((found & bit) == 0 && isEightBit) eightBit |= bit;
        found |= bit;
    }
};

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

}  // namespace

ID3::ID3(DataSourceHelper* source, bool ignoreV1, off64_t offset) {
    parse(id3::byteSource(source), ignoreV1, offset);
    checkMixedEncodingtype();
}

ID3::ID3(const uint8_t* data, size_t size, bool ignoreV1) {
    auto* source = new (std::nothrow) MemorySource(data, size);
    if (source == nullptr) return;
    parse(id3::byteSource(source), ignoreV1, 0);
    delete source;
    checkMixedEncodingtype();
}

ID3::~ID3() {
    clear();
}

bool ID3::isValid() const {
    return mIsValid;
}

ID3::Version ID3::version() const {
    return mVersion;
}

bool ID3::parseV2(DataSourceHelper* source, off64_t offset) {
    return readV2(id3::byteSource(source), offset);
}

bool ID3::parseV2(DataSourceBase* source, off64_t offset) {
    return readV2(id3::byteSource(source), offset);
}

bool ID3::parseV1(DataSourceHelper* source) {
    return readV1(id3::byteSource(source));
}

bool ID3::parseV1(DataSourceBase* source) {
    return readV1(id3::byteSource(source));
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
    return undoFrames(iTunesHack, hasGlobalUnsync, nullptr);
}

// In one walk over the frames: of each text the first frame with the one id and the first with the
// other count, the former before the latter.
void ID3::checkMixedEncodingtype() {
    if (!mIsValid) return;
    EightBitTexts texts, textsV2_2;
    const id3::Bytes tag{mData, mSize};
    size_t offset = mFirstFrameOffset;
    while (const auto frame = id3::frameAt(tag, mVersion, offset)) {
        const size_t data = offset + id3::frameHeaderSize(mVersion);
        const bool eightBit = id3::isV1(mVersion) || base::byteAt(tag, data) == 0;
        for (const MixedEncodingRow& row : kMixedEncodingRows) {
            if (frame->readable && frame->id == row.id) texts.add(row.bit, eightBit);
            if (frame->readable && frame->id == row.idV2_2) textsV2_2.add(row.bit, eightBit);
        }
        offset += frame->size;
    }
    mMixedEncodingType = texts.eightBit | (textsV2_2.eightBit & ~texts.found);
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

void ID3::parse(const id3::ByteSource& source, bool ignoreV1, off64_t offset) {
    mIsValid = readV2(source, offset) || (!ignoreV1 && readV1(source));
}

bool ID3::readV2(const id3::ByteSource& source, off64_t offset) {
    clear();
    std::array<uint8_t, id3::kTagHeaderSize> bytes;
    if (!source.readFully(offset, bytes.data(), bytes.size())) return false;
    const auto header = id3::readTagHeader(bytes);
    if (!header) return false;
    if (header->size > id3::kMaxTagSize) {
        ZR_LOGE(base::kId3Tag, "skipping huge ID3 metadata of size %zu", header->size);
        return false;
    }
    const Version version = versionOf(header->majorVersion);
    const off64_t bodyOffset = base::checkedAdd(offset, off64_t{id3::kTagHeaderSize});

    mData = allocate(header->size);
    if (mData == nullptr) return false;
    mSize = header->size;
    mRawSize = header->size + id3::kTagHeaderSize;
    if (!source.readFully(bodyOffset, mData, mSize) || !prepareFrames(version, header->flags)) {
        clear();
        return false;
    }
    mVersion = version;
    return true;
}

bool ID3::readV1(const id3::ByteSource& source) {
    clear();
    off64_t size = 0;
    if (source.getSize(source.source, &size) != OK || size < off64_t{kV1TagSize}) return false;
    mData = allocate(kV1TagSize);
    if (mData == nullptr) return false;
    if (!source.readFully(size - off64_t{kV1TagSize}, mData, kV1TagSize) ||
        std::memcmp(mData, "TAG", 3) != 0) {
        clear();
        return false;
    }
    mSize = kV1TagSize;
    mFirstFrameOffset = kV1FirstFieldOffset;
    mVersion = mData[kV1_1MarkOffset] == 0 ? ID3_V1_1 : ID3_V1;
    return true;
}

// Readies the body of a v2 tag for walking over its frames: undoes unsynchronisation, finds the
// first frame.
bool ID3::prepareFrames(Version version, uint8_t flags) {
    const bool unsynchronised = (flags & id3::kUnsynchronised) != 0;
    const bool hasExtendedHeader = (flags & id3::kHasExtendedHeader) != 0;
    // The extended header of a v2.4 tag is not unsynchronised, its frames are, one by one.
    if (unsynchronised && version != ID3_V2_4) removeUnsynchronization();
    if (hasExtendedHeader && version != ID3_V2_2 && !skipExtendedHeader(version)) return false;
    return version != ID3_V2_4 || repairFrames(unsynchronised);
}

bool ID3::skipExtendedHeader(Version version) {
    const id3::Bytes body{mData, mSize};
    const auto header = version == ID3_V2_3 ? id3::readExtendedHeaderV2_3(body)
                                            : id3::readExtendedHeaderV2_4(body);
    if (!header) return false;
    mFirstFrameOffset = header->firstFrameOffset;
    size_t framesEnd;
    if (__builtin_add_overflow(mFirstFrameOffset, header->paddingSize, &framesEnd)) {
        ZR_LOGE(base::kId3Tag, "b/24623447, paddingSize is too large");
    }
    if (mSize - mFirstFrameOffset < header->paddingSize) return false;
    mSize -= header->paddingSize;
    return true;
}

// A v2.4 tag whose frames do not fit is tried once more with plain frame sizes, from the bytes as
// they were, which no other tag needs to have kept. Memory for these is claimed in advance: a tag
// for which there is none is refused, whether or not it turns out to need it.
bool ID3::repairFrames(bool hasGlobalUnsync) {
    const size_t size = mSize;
    id3::Snapshot snapshot{allocate(size)};
    if (snapshot.memory == nullptr) {
        ZR_LOGE(base::kId3Tag, "b/24623447, no more memory");
        return false;
    }
    const bool fits = id3::framesFit({mData, mSize}, mFirstFrameOffset);
    bool ok = undoFrames(false, hasGlobalUnsync, fits ? nullptr : &snapshot);
    if (!ok) {
        if (snapshot.taken) std::memcpy(mData, snapshot.memory, size);
        mSize = size;
        ok = undoFrames(true, hasGlobalUnsync, nullptr);
    }
    std::free(snapshot.memory);
    return ok;
}

bool ID3::undoFrames(bool iTunesHack, bool hasGlobalUnsync, id3::Snapshot* snapshot) {
    const size_t oldSize = mSize;
    const auto sizes = iTunesHack ? id3::FrameSizes::kPlain : id3::FrameSizes::kSyncsafe;
    const auto done =
            id3::undoFrames({mData, mSize}, mFirstFrameOffset, sizes, hasGlobalUnsync, snapshot);
    mSize = done.size;
    if (done.readOffset > oldSize) {  // cannot be: a frame is refused unless it fits
        ZR_LOGE(base::kId3Tag, "b/34618607 (%zu %zu %zu %zu)", done.readOffset, done.writeOffset,
                oldSize, mSize);
        __android_log_error_write(0x534e4554, "34618607", -1, nullptr, 0);
    }
    return done.ok;
}

void ID3::clear() {
    std::free(mData);
    mData = nullptr;
    mSize = 0;
    mFirstFrameOffset = 0;
    mRawSize = 0;
}

}  // namespace android
