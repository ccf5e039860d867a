// Only what their headers offer.

#include <gst/tag/tag.h>
#include <id3tag.h>
#include <taglib/attachedpictureframe.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <taglib/tbytevectorstream.h>
#include <taglib/xiphcomment.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "Tags.h"

extern "C" {
#include <libavformat/avformat.h>
}

namespace bench {
namespace {

void readById3tag(Bytes file, const Visit& visit) {
    id3_tag* tag = id3_tag_parse(file.data(), file.size());
    Bytes picture;
    if (const id3_frame* frame = id3_tag_findframe(tag, "APIC", 0)) {
        id3_length_t size = 0;
        const id3_byte_t* data = id3_field_getbinarydata(id3_frame_field(frame, 4), &size);
        picture = {data, size};
    }
    const id3_frame* title = id3_tag_findframe(tag, "TIT2", 0);
    id3_utf8_t* text = id3_ucs4_utf8duplicate(id3_field_getstrings(id3_frame_field(title, 1), 0));
    visit(reinterpret_cast<const char*>(text), picture);
    std::free(text);
    id3_tag_delete(tag);
}

// ---- TagLib

TagLib::ByteVector copyOf(Bytes bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<unsigned>(bytes.size())};
}

void report(const TagLib::Tag& tag, const TagLib::ByteVector& picture, const Visit& visit) {
    visit(tag.title().to8Bit(true),
          {reinterpret_cast<const uint8_t*>(picture.data()), picture.size()});
}

void readByTaglib(Bytes bytes, const Visit& visit) {
    TagLib::ByteVectorStream stream(copyOf(bytes));
    TagLib::MPEG::File file(&stream, TagLib::ID3v2::FrameFactory::instance(), false);
    const TagLib::ID3v2::Tag& tag = *file.ID3v2Tag();
    TagLib::ByteVector picture;
    for (const TagLib::ID3v2::Frame* frame : tag.frameList("APIC")) {
        picture = dynamic_cast<const TagLib::ID3v2::AttachedPictureFrame&>(*frame).picture();
    }
    report(tag, picture, visit);
}

void readCommentByTaglib(Bytes file, const Visit& visit) {
    TagLib::Ogg::XiphComment comment(copyOf(file.subspan(kCommentOffset)));
    TagLib::ByteVector picture;
    for (const TagLib::FLAC::Picture* entry : comment.pictureList()) picture = entry->data();
    report(comment, picture, visit);
}

// ---- GStreamer

void report(GstTagList* list, const Visit& visit) {
    const gchar* title = "";
    gst_tag_list_peek_string_index(list, GST_TAG_TITLE, 0, &title);
    GstSample* sample = nullptr;
    GstMapInfo map{};
    if (gst_tag_list_get_sample_index(list, GST_TAG_IMAGE, 0, &sample)) {
        gst_buffer_map(gst_sample_get_buffer(sample), &map, GST_MAP_READ);
    }
    visit(title, {map.data, map.size});
    if (sample != nullptr) {
        gst_buffer_unmap(gst_sample_get_buffer(sample), &map);
        gst_sample_unref(sample);
    }
    gst_tag_list_unref(list);
}

void readByGst(Bytes file, const Visit& visit) {
    gst_init(nullptr, nullptr);
    auto* bytes = const_cast<uint8_t*>(file.data());  // marked read-only
    GstBuffer* buffer = gst_buffer_new_wrapped_full(GST_MEMORY_FLAG_READONLY, bytes, file.size(), 0,
                                                    file.size(), nullptr, nullptr);
    report(gst_tag_list_from_id3v2_tag(buffer), visit);
    gst_buffer_unref(buffer);
}

void readCommentByGst(Bytes file, const Visit& visit) {
    gst_init(nullptr, nullptr);
    const Bytes block = file.subspan(kCommentOffset);
    report(gst_tag_list_from_vorbiscomment(block.data(), block.size(), nullptr, 0, nullptr), visit);
}

// ---- FFmpeg

int readSome(void* opaque, uint8_t* out, int size) {
    Bytes& rest = *static_cast<Bytes*>(opaque);
    const size_t count = std::min(static_cast<size_t>(size), rest.size());
    if (count == 0) return AVERROR_EOF;
    std::memcpy(out, rest.data(), count);
    rest = rest.subspan(count);
    return static_cast<int>(count);
}

void readByFfmpeg(const char* demuxer, Bytes file, const Visit& visit) {
    constexpr int kBufferSize = 32 << 10;
    AVFormatContext* context = avformat_alloc_context();
    AVIOContext* io = avio_alloc_context(static_cast<uint8_t*>(av_malloc(kBufferSize)), kBufferSize,
                                         0, &file, readSome, nullptr, nullptr);
    context->pb = io;
    if (avformat_open_input(&context, "", av_find_input_format(demuxer), nullptr) != 0) {
        fail(std::string("FFmpeg cannot open the file as ") + demuxer);
    }
    Bytes picture;
    for (unsigned i = 0; i < context->nb_streams; ++i) {
        const AVPacket& packet = context->streams[i]->attached_pic;
        if (packet.size > 0) picture = {packet.data, static_cast<size_t>(packet.size)};
    }
    const AVDictionaryEntry* title = av_dict_get(context->metadata, "title", nullptr, 0);
    visit(title != nullptr ? title->value : "", picture);
    avformat_close_input(&context);
    av_freep(&io->buffer);
    avio_context_free(&io);
}

}  // namespace

const std::vector<Reader> kId3Peers{
        {"libid3tag", readById3tag},
        {"taglib", readByTaglib},
        {"gstreamer", readByGst},
        {"ffmpeg", [](Bytes file, const Visit& visit) { readByFfmpeg("mp3", file, visit); }},
};
const std::vector<Reader> kCommentPeers{
        {"taglib", readCommentByTaglib},
        {"gstreamer", readCommentByGst},
        {"ffmpeg", [](Bytes file, const Visit& visit) { readByFfmpeg("flac", file, visit); }},
};

}  // namespace bench
