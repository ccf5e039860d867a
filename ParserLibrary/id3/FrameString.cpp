#include "ParserLibrary/id3/FrameString.h"

#include <cstdio>
#include <new>

#include "ParserLibrary/id3/FrameText.h"

namespace android::id3 {
namespace {

// Memory for a number of characters: on the stack for short texts. get() is null when there is no
// memory.
template <typename T>
class Scratch {
public:
    // cppcheck-suppress uninitMemberVar ; mLocal is written before it is read
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

void setEightBit(String8* s, Bytes text) {
    s->setTo(reinterpret_cast<const char*>(text.data()), text.size());
}

// The low byte of each code unit. Returns false, and sets nothing, without memory.
bool setNarrowed(String8* s, const FrameText& text) {
    const size_t count = text.bytes.size() / 2;
    Scratch<char> characters(count);
    if (characters.get() == nullptr) return false;
    const size_t low = text.form == TextForm::kUtf16BigEndian ? 1 : 0;
    for (size_t i = 0; i < count; ++i) {
        characters.get()[i] = static_cast<char>(text.bytes[2 * i + low]);
    }
    s->setTo(characters.get(), count);
    return true;
}

// Sets nothing without memory.
void setUtf16(String8* s, const FrameText& text) {
    const size_t count = text.bytes.size() / 2;
    Scratch<char16_t> units(count);
    if (units.get() == nullptr) return;
    const bool bigEndian = text.form == TextForm::kUtf16BigEndian;
    for (size_t i = 0; i < count; ++i) {
        units.get()[i] =
                static_cast<char16_t>(bigEndian ? base::bigEndianAt(text.bytes, 2 * i, 2)
                                                : base::littleEndianAt(text.bytes, 2 * i, 2));
    }
    s->setTo(units.get(), count);
}

void setV1Field(String8* s, size_t offset, Bytes field) {
    if (!isV1Number(offset)) {
        setEightBit(s, field);
        return;
    }
    char number[16];
    std::snprintf(number, sizeof(number), "%d", field[0]);
    s->setTo(number);
}

void setDecoded(String8* s, const FrameText& text) {
    if (text.bytes.empty()) return;
    if (text.form == TextForm::kEightBit) {
        setEightBit(s, text.bytes);
    } else if (!text.narrow || !setNarrowed(s, text)) {
        setUtf16(s, text);
    }
}

}  // namespace

void setFrameText(String8* s, const TagView& tag, size_t offset, size_t size, TextPart part) {
    s->setTo("");
    const Bytes data = frameData(tag, offset, size);
    if (isV1(tag.version)) {
        setV1Field(s, offset, data);
    } else {
        setDecoded(s, readFrameText(data, part.secondHalf, part.isLyrics));
    }
}

}  // namespace android::id3
