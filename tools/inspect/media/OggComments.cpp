// RFC 3533: pages of several streams, of most of which the second packet is a comment header.

#include <ogg/ogg.h>

#include <algorithm>
#include <array>
#include <map>
#include <new>
#include <string_view>

#include "inspect/media/Comments.h"

namespace inspect {
namespace {

using namespace std::string_view_literals;

constexpr size_t kMaxStreams = 64;
constexpr int64_t kMaxRead = 32 << 20;
constexpr size_t kMaxNotes = 8;

// What a stream's first packet and its comment header begin with, and where the comments follow.
struct OggCodec {
    std::string_view name;
    std::string_view head;
    std::string_view mark;
    size_t headerSize;
};
// FLAC has the header of a metadata block, the last one or not (RFC 9639 10.1).
constexpr auto kOggCodecs = std::to_array<OggCodec>({
        {"Vorbis", "\x01vorbis"sv, "\x03vorbis"sv, 7},
        {"Opus", "OpusHead"sv, "OpusTags"sv, 8},
        {"Theora", "\x80theora"sv, "\x81theora"sv, 7},
        {"Speex", "Speex   "sv, ""sv, 0},
        {"VP8", "OVP80\x01"sv, "OVP80\x02 "sv, 7},
        {"FLAC", "\x7F\x46LAC"sv, "\x04"sv, 4},
        {"FLAC", "\x7F\x46LAC"sv, "\x84"sv, 4},
});

struct OggStream {
    explicit OggStream(int serial) { ogg_stream_init(&state, serial); }
    ~OggStream() { ogg_stream_clear(&state); }
    OggStream(const OggStream&) = delete;
    OggStream& operator=(const OggStream&) = delete;

    ogg_stream_state state{};
    std::string_view codec;  // by its first packet
    bool isDone = false;
};

class Search {
public:
    explicit Search(const InputFile& file) : mFile(file) { ogg_sync_init(&mSync); }
    ~Search() { ogg_sync_clear(&mSync); }
    Search(const Search&) = delete;
    Search& operator=(const Search&) = delete;

    CommentHeaders run() {
        // All streams begin before any goes on (RFC 3533 4).
        while (!(mAreAllBegun && areDone()) && takePage()) {
        }
        if (!areDone()) {
            note(mRead < kMaxRead
                         ? "a comment header is not whole at the end,"
                         : "a comment header is not whole within what is looked at, up to");
        }
        return std::move(mHeaders);
    }

private:
    void note(const std::string& text) {
        if (mHeaders.notes.size() >= kMaxNotes) return;
        mHeaders.notes.push_back(text + " offset " + std::to_string(mOffset));
    }

    bool areDone() const {
        return std::ranges::all_of(mStreams, [](const auto& each) { return each.second.isDone; });
    }

    // Takes a page, or passes over what is none. Returns false at the end of the file.
    bool takePage() {
        ogg_page page{};
        const long count = ogg_sync_pageseek(&mSync, &page);
        if (count == 0) return readMore();
        if (count < 0 && !mIsSkipping) note("no page with the right checksum at");
        mIsSkipping = count < 0;
        if (count > 0) handOut(page);
        mOffset += std::abs(count);
        return true;
    }

    bool readMore() {
        constexpr size_t kChunk = 64 << 10;
        char* buffer = ogg_sync_buffer(&mSync, kChunk);
        if (buffer == nullptr) throw std::bad_alloc();
        auto* bytes = static_cast<uint8_t*>(static_cast<void*>(buffer));
        const int64_t count = mRead < kMaxRead ? mFile.readAt(mRead, {bytes, kChunk}) : 0;
        if (count <= 0) return false;
        ogg_sync_wrote(&mSync, static_cast<long>(count));
        mRead += count;
        return true;
    }

    void handOut(ogg_page& page) {
        const int serial = ogg_page_serialno(&page);
        mAreAllBegun = ogg_page_bos(&page) == 0;
        if (!mAreAllBegun && mStreams.size() < kMaxStreams) mStreams.try_emplace(serial, serial);
        const auto found = mStreams.find(serial);
        if (found == mStreams.end() || found->second.isDone) return;
        OggStream& stream = found->second;
        ogg_stream_pagein(&stream.state, &page);
        ogg_packet packet{};
        while (!stream.isDone) {
            const int status = ogg_stream_packetout(&stream.state, &packet);
            if (status == 0) return;
            if (status < 0) note("pages are missing before");
            if (status > 0) {
                takePacket(stream, {packet.packet, static_cast<size_t>(packet.bytes)});
            }
        }
    }

    void takePacket(OggStream& stream, Bytes packet) {
        constexpr size_t kLongestMark = 8;
        const Bytes begin = packet.first(std::min(packet.size(), kLongestMark));
        const std::string text(begin.begin(), begin.end());
        const bool isFirst = stream.codec.empty();
        const auto found = std::ranges::find_if(kOggCodecs, [&](const OggCodec& each) {
            if (isFirst) return text.starts_with(each.head);
            return each.name == stream.codec && text.starts_with(each.mark) &&
                   packet.size() >= each.headerSize;
        });
        const bool isKnown = found != kOggCodecs.end();
        stream.isDone = !isFirst || !isKnown;
        if (isFirst && isKnown) stream.codec = found->name;
        if (isFirst) return;
        if (!isKnown) return note("no comment header in the packet that ends in the page at");
        CommentHeader& header = mHeaders.list.emplace_back();
        header.codec = found->name;
        header.place = std::to_string(packet.size()) + " bytes up to the page at offset " +
                       std::to_string(mOffset);
        header.split(packet.subspan(found->headerSize), {});
    }

    const InputFile& mFile;
    ogg_sync_state mSync{};
    std::map<int, OggStream> mStreams;
    CommentHeaders mHeaders;
    int64_t mRead = 0;
    int64_t mOffset = 0;  // of the page at hand
    bool mAreAllBegun = false;
    bool mIsSkipping = false;
};

}  // namespace

CommentHeaders findOggComments(const InputFile& file) {
    return Search(file).run();
}

}  // namespace inspect
