// Input: version and calls, and the header's flags; then the body of an ID3v2 tag. What comes out
// is what a model reads step by step.
//
// Aims at ParserLibrary/id3/Frames, ParserLibrary/id3/Iterator, ParserLibrary/id3/Picture,
// ParserLibrary/id3/Unsynchronization.

#include "Fuzz.h"
#include "model/Id3Model.h"

using android::ID3;
using android::String8;

namespace {

constexpr uint32_t kUnsynchronize = 4, kUnsynchronizeFrames = 8, kPlain = 16, kGlobal = 32;

std::string counted(const String8& text) {
    return {text.c_str(), text.size()};
}

void checkFrames(const ID3& actual, const test::Id3Tag& tag, const char* id) {
    auto frames = test::modelFrames(tag, id);
    frames.push_back({"", "", 0xff});
    ID3::Iterator at(actual, id);
    for (const auto& frame : frames) {
        const std::string wanted = id != nullptr ? id : "";
        String8 name, text, second;
        size_t size;
        at.getID(&name);
        at.getString(&text, &second);
        const uint8_t* data = at.getData(&size);
        REQUIRE(counted(name) == frame.id && std::string(data, data + size) == frame.data);
        REQUIRE(counted(text) == test::modelText(frame, wanted, false));
        REQUIRE(counted(second) == test::modelText(frame, wanted, true));
        REQUIRE(at.getEncodingType() == frame.encoding);
        at.next();
    }
    REQUIRE(at.done());
}

void checkPicture(const ID3& actual, const test::Id3Tag& tag) {
    test::Lines lines;
    std::string mimeType;
    const auto picture = test::modelPicture(tag, mimeType, lines);
    size_t size;
    String8 mime;
    const auto* data = static_cast<const char*>(actual.getAlbumArt(&size, &mime));
    REQUIRE(counted(mime) == mimeType && (data != nullptr) == picture.has_value());
    REQUIRE(std::string(data, data + size) == picture.value_or(""));
}

void checkTag(const ID3& actual, const test::Id3Tag& tag) {
    for (const char* id : {"COMM", "TT2", "ULT", "USLT"}) checkFrames(actual, tag, id);
    checkFrames(actual, tag, nullptr);
    checkPicture(actual, tag);
}

// ID3v2.3 5, from the front: of FF 00 00 the first 00 goes alone.
void removeUnsynchronization(std::string& data) {
    for (size_t i = 1; i < data.size(); ++i) {
        if (data[i - 1] == '\xff' && data[i] == 0) data.erase(i, 1);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::Bytes input(data, size);
    const uint32_t calls = fuzz::take(input, 1), flags = fuzz::take(input, 1);
    const std::string body(input.begin(), input.end());
    const std::string bytes = test::tag(static_cast<char>(2 + calls % 4 % 3), flags, body);
    test::Lines lines;
    test::Id3Tag tag = test::modelV2(bytes, lines);
    ID3 actual(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size(), true);
    REQUIRE(actual.version() == tag.version && actual.isValid() == (tag.version != 0));
    if (!actual.isValid()) return 0;
    checkTag(actual, tag);
    if ((calls & kUnsynchronize) != 0) {
        actual.removeUnsynchronization();
        removeUnsynchronization(tag.data);
        checkTag(actual, tag);
    }
    if ((calls & kUnsynchronizeFrames) != 0) {
        const bool plain = (calls & kPlain) != 0, global = (calls & kGlobal) != 0;
        const bool done = actual.removeUnsynchronizationV2_4(plain, global);
        REQUIRE(done == test::removeUnsynchronization(tag.data, tag.first, plain, global));
        if (done) checkTag(actual, tag);
    }
    return 0;
}
