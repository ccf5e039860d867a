// The other implementations that ours is measured beside.

#pragma once

#include <memory>

#include "Stream.h"

struct AVBSFContext;
struct AVPacket;
using GstH264NalParser = struct _GstH264NalParser;
using GstH265Parser = struct _GstH265Parser;

namespace bench {

// FFmpeg's bitstream filter `extract_extradata`. It splits a whole packet into its NAL units, each
// also freed of its emulation prevention bytes, and copies the parameter sets among them out.
class ExtradataFilter {
public:
    ExtradataFilter();
    ~ExtradataFilter();

    // Filters one packet, which refers to the stream's bytes and has zeros behind them. The result
    // is valid until the next call: every SPS and PPS in order, each behind a start code and with
    // whatever zero bytes followed it in the stream; nothing if there is no SPS.
    Bytes filter(Bytes stream);

private:
    AVBSFContext* mContext = nullptr;
    AVPacket* mPacket;
};

// GStreamer's parser, called as its own elements call it: from the end of one unit to the next.
class GstWalker {
public:
    GstWalker();
    ~GstWalker();

    template <typename Visit>
    void walk(Bytes stream, Visit visit) {
        Unit unit{0, 0};
        while (next(stream, unit)) visit(unit);
    }

private:
    // Takes the unit after the given one, which at first is {0, 0}.
    bool next(Bytes stream, Unit& unit);

    GstH264NalParser* mParser;
};

struct GstPictureSize {
    int width;
    int height;
};

// gst_h264_parse_sps on a unit that begins with its header byte. It reads everything: also the VUI.
GstPictureSize gstParseSps(Bytes sps);

// gst_h265_parse_sps, by a parser that knows the VPS. It reads everything: also the VUI.
class GstHevcSps {
public:
    explicit GstHevcSps(Bytes vps);
    ~GstHevcSps();
    GstHevcSps(const GstHevcSps&) = delete;
    GstHevcSps& operator=(const GstHevcSps&) = delete;

    // The coded size, without the conformance window.
    GstPictureSize parse(Bytes sps) const;

private:
    GstH265Parser* mParser;
};

}  // namespace bench
