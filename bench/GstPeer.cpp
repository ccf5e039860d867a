#define GST_USE_UNSTABLE_API  // the library asks its users to say that they know
#include <gst/codecparsers/gsth264parser.h>

#include "Peers.h"

namespace bench {

GstWalker::GstWalker() : mParser(gst_h264_nal_parser_new()) {}

GstWalker::~GstWalker() {
    gst_h264_nal_parser_free(mParser);
}

bool GstWalker::next(Bytes stream, Unit& unit) {
    GstH264NalUnit nalu;
    const size_t from = unit.offset + unit.size;
    if (from == stream.size()) return false;
    const GstH264ParserResult result = gst_h264_parser_identify_nalu(
            mParser, stream.data(), static_cast<guint>(from), stream.size(), &nalu);
    // A unit that reaches the end of the data is reported in full, but under a status of its own.
    if (result != GST_H264_PARSER_OK && result != GST_H264_PARSER_NO_NAL_END) return false;
    unit = {nalu.offset, nalu.size};
    return true;
}

GstPictureSize gstParseSps(Bytes sps) {
    GstH264NalUnit nalu{};
    nalu.type = GST_H264_NAL_SPS;
    nalu.ref_idc = 3;
    nalu.size = static_cast<guint>(sps.size());
    nalu.header_bytes = 1;
    nalu.data = const_cast<guint8*>(sps.data());  // only read
    nalu.valid = TRUE;

    GstH264SPS parsed;
    if (gst_h264_parse_sps(&nalu, &parsed) != GST_H264_PARSER_OK) {
        fail("gst_h264_parse_sps refuses the SPS");
    }
    const GstPictureSize size =
            parsed.frame_cropping_flag != 0
                    ? GstPictureSize{parsed.crop_rect_width, parsed.crop_rect_height}
                    : GstPictureSize{parsed.width, parsed.height};
    gst_h264_sps_clear(&parsed);
    return size;
}

}  // namespace bench
