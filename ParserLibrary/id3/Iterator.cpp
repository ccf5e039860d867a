#include <cstdlib>
#include <cstring>

#include "Helper/base/Check.h"
#include "ParserLibrary/id3/FrameString.h"
#include "ParserLibrary/id3/Frames.h"
#include "zrcodecparser/ID3.h"

namespace android {

ID3::Iterator::Iterator(const ID3& parent, const char* id)
    : mParent(parent),
      mID(nullptr),
      mOffset(parent.mFirstFrameOffset),
      mFrameData(nullptr),
      mFrameSize(0) {
    if (getHeaderLength() == 0) {
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
    if (id3::isV1(mParent.view().version)) {
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
    if (done()) {
        s->setTo("");
        return;
    }
    const bool isLyrics =
            mID != nullptr && (std::strcmp(mID, "USLT") == 0 || std::strcmp(mID, "ULT") == 0);
    id3::setFrameText(s, mParent.view(), mOffset, mFrameSize, {secondhalf, isLyrics});
}

size_t ID3::Iterator::getHeaderLength() const {
    return id3::frameHeaderSize(mParent.view().version);
}

const uint8_t* ID3::Iterator::getData(size_t* length) const {
    *length = 0;
    if (done()) return nullptr;
    *length = mFrameSize - getHeaderLength();
    return mFrameData;
}

uint8_t ID3::Iterator::getEncodingType() const {
    if (done()) return 0xFF;
    return id3::encodingAt(mParent.view(), mOffset);
}

void ID3::Iterator::findFrame() {
    mFrameData = nullptr;
    const id3::TagView tag = mParent.view();
    const id3::FrameId wanted = mID != nullptr ? id3::frameId(mID) : id3::kNoFrameId;
    while (const auto frame = id3::frameAt(tag, mOffset)) {
        if (frame->readable && (mID == nullptr || frame->id == wanted)) {
            mFrameData = mParent.mData + mOffset + getHeaderLength();
            mFrameSize = frame->size;
            return;
        }
        mOffset += frame->size;
    }
}

}  // namespace android
