#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include "Helper/base/Check.h"
#include "ParserLibrary/id3/FrameText.h"
#include "ParserLibrary/id3/Frames.h"
#include "zrcodecparser/ID3.h"

namespace android {
namespace {

// Memory for a number of characters: on the stack for short texts. get() is null when there is no
// memory.
template <typename T>
class Scratch {
public:
    explicit Scratch(size_t count)
        : mData(count <= kLocalCount ? mLocal : new (std::nothrow) T[count]) {}
    ~Scratch() {
        if (mData != mLocal) delete[] mData;
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    T* get() { return mData; }

private:
    static constexpr size_t kLocalCount = 256;
    T mLocal[kLocalCount];
    T* mData;
};

void setEightBit(String8* s, id3::Bytes text) {
    s->setTo(reinterpret_cast<const char*>(text.data()), text.size());
}

// The low byte of each code unit. Returns false, and sets nothing, without memory.
bool setNarrowed(String8* s, const id3::FrameText& text) {
    const size_t count = text.bytes.size() / 2;
    Scratch<char> characters(count);
    if (characters.get() == nullptr) return false;
    const size_t low = text.form == id3::TextForm::kUtf16BigEndian ? 1 : 0;
    for (size_t i = 0; i < count; ++i) {
        characters.get()[i] = static_cast<char>(text.bytes[2 * i + low]);
    }
    s->setTo(characters.get(), count);
    return true;
}

// Sets nothing without memory.
void setUtf16(String8* s, const id3::FrameText& text) {
    const size_t count = text.bytes.size() / 2;
    Scratch<char16_t> units(count);
    if (units.get() == nullptr) return;
    const bool bigEndian = text.form == id3::TextForm::kUtf16BigEndian;
    for (size_t i = 0; i < count; ++i) {
        units.get()[i] =
                static_cast<char16_t>(bigEndian ? base::bigEndianAt(text.bytes, 2 * i, 2)
                                                : base::littleEndianAt(text.bytes, 2 * i, 2));
    }
    s->setTo(units.get(), count);
}

}  // namespace

ID3::Iterator::Iterator(const ID3& parent, const char* id)
    : mParent(parent),
      mID(nullptr),
      mOffset(parent.mFirstFrameOffset),
      mFrameData(nullptr),
      mFrameSize(0) {
    if (id3::frameHeaderSize(mParent.mVersion) == 0) {
        ZR_CHECK(base::kAtId3, mParent.mVersion == ID3_V1 || mParent.mVersion == ID3_V1_1);
    }
    if (id != nullptr) {
        mID = strdup(id);
        if (mID == nullptr) return;  // no memory: nothing is found, rather than everything
    }
    findFrame();
}

ID3::Iterator::~Iterator() {
    std::free(mID);
}

bool ID3::Iterator::done() const {
    return mFrameData == nullptr;
}

void ID3::Iterator::next() {
    if (done()) return;
    mOffset += mFrameSize;
    findFrame();
}

void ID3::Iterator::getID(String8* id) const {
    id->setTo("");
    if (done()) return;
    if (id3::isV1(mParent.mVersion)) {
        const char* fieldId = id3::v1FieldId(mOffset);
        if (fieldId == nullptr) {
            base::fatal(base::kAtId3, "CHECK(!\"should not be here.\") failed.");
        }
        id->setTo(fieldId);
        return;
    }
    id->setTo(reinterpret_cast<const char*>(mParent.mData + mOffset),
              mParent.mVersion == ID3_V2_2 ? 3 : 4);
}

void ID3::Iterator::getString(String8* s, String8* ss) const {
    getstring(s, false);
    if (ss != nullptr) getstring(ss, true);
}

void ID3::Iterator::getstring(String8* s, bool secondhalf) const {
    s->setTo("");
    size_t size = 0;
    const uint8_t* data = getData(&size);
    if (data == nullptr) return;
    if (id3::isV1(mParent.mVersion)) {
        if (mOffset == id3::kV1TrackOffset || mOffset == id3::kV1GenreOffset) {
            char number[16];
            std::snprintf(number, sizeof(number), "%d", *data);
            s->setTo(number);
        } else {
            setEightBit(s, {data, size});
        }
        return;
    }
    const bool isLyrics =
            mID != nullptr && (std::strcmp(mID, "USLT") == 0 || std::strcmp(mID, "ULT") == 0);
    const auto text = id3::readFrameText({data, size}, secondhalf, isLyrics);
    if (text.bytes.empty()) return;
    if (text.form == id3::TextForm::kEightBit) {
        setEightBit(s, text.bytes);
    } else if (!text.narrow || !setNarrowed(s, text)) {
        setUtf16(s, text);
    }
}

size_t ID3::Iterator::getHeaderLength() const {
    return id3::frameHeaderSize(mParent.mVersion);
}

const uint8_t* ID3::Iterator::getData(size_t* length) const {
    *length = 0;
    if (done()) return nullptr;
    *length = mFrameSize - getHeaderLength();
    return mFrameData;
}

uint8_t ID3::Iterator::getEncodingType() const {
    if (done()) return 0xFF;
    if (id3::isV1(mParent.mVersion)) return 0;
    // A frame without data may be the last thing in the tag.
    return base::byteAt({mParent.mData, mParent.mSize}, mOffset + getHeaderLength());
}

void ID3::Iterator::findFrame() {
    mFrameData = nullptr;
    mFrameSize = 0;
    const id3::Bytes tag{mParent.mData, mParent.mSize};
    const id3::FrameId wanted = mID != nullptr ? id3::frameId(mID) : id3::kNoFrameId;
    while (const auto frame = id3::frameAt(tag, mParent.mVersion, mOffset)) {
        if (frame->readable && (mID == nullptr || frame->id == wanted)) {
            mFrameData = mParent.mData + mOffset + getHeaderLength();
            mFrameSize = frame->size;
            return;
        }
        mOffset += frame->size;
    }
}

}  // namespace android
