#include <id3tag.h>
#include <taglib/attachedpictureframe.h>
#include <taglib/id3v2tag.h>
#include <taglib/textidentificationframe.h>
#include <taglib/xiphcomment.h>

#include "Tags.h"

namespace bench {
namespace {

using Buffer = std::vector<uint8_t>;
using TagLib::ByteVector;

ByteVector vectorOf(Bytes bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<unsigned>(bytes.size())};
}

void writeSize(Buffer& tag) {
    const size_t size = tag.size() - 10;
    for (size_t i = 0; i < 4; ++i) tag[9 - i] = static_cast<uint8_t>(size >> (7 * i) & 0x7F);
}

// The whole tag of v2.3 (ID3v2.3 5).
Buffer unsynchronised(const Buffer& tag) {
    Buffer out(tag.begin(), tag.begin() + 10);
    for (size_t i = 10; i < tag.size(); ++i) {
        out.push_back(tag[i]);
        const bool last = i + 1 == tag.size();
        if (tag[i] == 0xFF && (last || tag[i + 1] == 0 || tag[i + 1] >= 0xE0)) out.push_back(0);
    }
    out[5] |= 0x80;
    writeSize(out);
    return out;
}

// The frames of v2.4, with data length indicators, as libid3tag writes them (ID3v2.4 4.1.2).
Buffer unsynchronisedFrames(const Buffer& plain) {
    id3_tag* tag = id3_tag_parse(plain.data(), plain.size());
    id3_tag_options(tag, ~0, ID3_TAG_OPTION_UNSYNCHRONISATION);
    Buffer out(id3_tag_render(tag, nullptr));
    out.resize(id3_tag_render(tag, out.data()));  // the size before was an upper bound
    id3_tag_delete(tag);
    return out;
}

}  // namespace

Buffer id3File(unsigned version, Bytes jpeg, bool isUnsynchronised) {
    TagLib::ID3v2::Tag tag;
    for (const std::string id :
         {"TALB", "TPE1", "TPE2", "TCOM", "TCON", "TIT2", "TEXT", "TRCK", "TPOS", "TENC"}) {
        auto* frame = new TagLib::ID3v2::TextIdentificationFrame(id.c_str(), TagLib::String::UTF8);
        frame->setText({id == "TIT2" ? kTitle : "The text of " + id, TagLib::String::UTF8});
        tag.addFrame(frame);
    }
    if (!jpeg.empty()) {
        auto* picture = new TagLib::ID3v2::AttachedPictureFrame;
        picture->setMimeType("image/jpeg");
        picture->setType(TagLib::ID3v2::AttachedPictureFrame::FrontCover);
        picture->setPicture(vectorOf(jpeg));
        tag.addFrame(picture);
    }
    const ByteVector rendered = tag.render(static_cast<TagLib::ID3v2::Version>(version));
    Buffer out(rendered.begin(), rendered.end());
    if (isUnsynchronised) out = version == 3 ? unsynchronised(out) : unsynchronisedFrames(out);
    Buffer frame{0xFF, 0xFB, 0x90, 0x64};  // Layer III, 128 kbit/s, 44.1 kHz
    frame.resize(417);
    for (int i = 0; i < 4; ++i) out.insert(out.end(), frame.begin(), frame.end());
    return out;
}

Buffer tagOfSmallFrames(size_t size) {
    const Buffer frame{'T', 'X', 'Y', 'Z', 0, 0, 0, 6, 0, 2, 0, 'a', 0xFF, 0, 'b', 'c'};
    Buffer out{'I', 'D', '3', 4, 0, 0x80, 0, 0, 0, 0};
    while (out.size() < size + 10) out.insert(out.end(), frame.begin(), frame.end());
    writeSize(out);
    return out;
}

std::string pictureBase64(Bytes jpeg) {
    TagLib::FLAC::Picture picture;
    picture.setMimeType("image/jpeg");
    picture.setType(TagLib::FLAC::Picture::FrontCover);
    picture.setData(vectorOf(jpeg));
    const ByteVector text = picture.render().toBase64();
    return {text.begin(), text.end()};
}

Buffer flacFile(const std::string& picture) {
    TagLib::Ogg::XiphComment comment;
    comment.setTitle({kTitle, TagLib::String::UTF8});
    comment.addField("METADATA_BLOCK_PICTURE", picture);
    const ByteVector block = comment.render(false);
    // RFC 9639 8.1, 8.2: blocks of 4096 samples; 44.1 kHz, two channels, 16 bits.
    ByteVector file("fLaC\x00\x00\x00\x22\x10\x00\x10\x00\0\0\0\0\0\0\x0A\xC4\x42\xF0", 22);
    file.append(ByteVector(20, '\0'));
    file.append(ByteVector::fromUInt(block.size() | 0x84000000u));  // the last block, comments
    file.append(block);
    return {file.begin(), file.end()};
}

}  // namespace bench
