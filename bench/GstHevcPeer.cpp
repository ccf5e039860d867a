#define GST_USE_UNSTABLE_API  // the library asks its users to say that they know
#include <gst/codecparsers/gsth265parser.h>

#include "Peers.h"

namespace bench {
namespace {

GstH265NalUnit nalUnit(Bytes bytes) {
    GstH265NalUnit nalu{};
    nalu.type = bytes[0] >> 1 & 0x3F;
    nalu.size = static_cast<guint>(bytes.size());
    nalu.header_bytes = 2;
    nalu.temporal_id_plus1 = 1;
    nalu.data = const_cast<guint8*>(bytes.data());  // only read
    nalu.valid = TRUE;
    return nalu;
}

}  // namespace

GstHevcSps::GstHevcSps(Bytes vps) : mParser(gst_h265_parser_new()) {
    GstH265NalUnit nalu = nalUnit(vps);
    GstH265VPS parsed;
    if (gst_h265_parser_parse_vps(mParser, &nalu, &parsed) != GST_H265_PARSER_OK) {
        fail("gst_h265_parser_parse_vps refuses the VPS");
    }
}

GstHevcSps::~GstHevcSps() {
    gst_h265_parser_free(mParser);
}

GstPictureSize GstHevcSps::parse(Bytes sps) const {
    GstH265NalUnit nalu = nalUnit(sps);
    GstH265SPS parsed;
    if (gst_h265_parse_sps(mParser, &nalu, &parsed, TRUE) != GST_H265_PARSER_OK) {
        fail("gst_h265_parse_sps refuses the SPS");
    }
    return {parsed.width, parsed.height};
}

}  // namespace bench
