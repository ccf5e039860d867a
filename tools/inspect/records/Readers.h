// The readers of the kinds of codec data, and what they share.

#pragma once

#include <string>

#include "inspect/media/HeaderTrace.h"
#include "inspect/records/Annotator.h"
#include "inspect/records/StandardNames.h"

namespace inspect {

// They read what there is of a record, whatever it holds, and give it in one line; those that have
// no more to say than its bytes give nothing.
std::string readAvcRecord(Annotator& out);   // ISO/IEC 14496-15 5.3.3.1.2
std::string readHevcRecord(Annotator& out);  // ISO/IEC 14496-15 8.3.3.1.2
std::string readVp9Record(
        Annotator& out);  // VP Codec ISO Media File Format Binding 2.2, or WebM's features
std::string readVp9Frame(Annotator& out);           // VP9 6.2, a frame's uncompressed header
std::string readAv1Record(Annotator& out);          // AV1 Codec ISO Media File Format Binding 2.3.3
std::string readEsDescriptor(Annotator& out);       // ISO/IEC 14496-1 7.2.6.5, around MPEG-4
std::string readMpeg2EsDescriptor(Annotator& out);  // the same around MPEG-1 and 2 video
std::string readVc1Header(Annotator& out);          // VC-1 advanced profile, with the picture size
std::string readWmv9Header(Annotator& out);         // SMPTE 421M Annex J, with the picture size
std::string readWmv7Header(Annotator& out);         // WMV 7 and 8: no picture size
std::string readTheoraHeaders(Annotator& out);      // Theora 6
std::string readVorbisHeader(Annotator& out);       // Vorbis I 4.2.2
std::string readVorbisSetup(Annotator& out);        // Vorbis I 4.2.4
std::string readOpusHead(Annotator& out);           // RFC 7845 5.1
std::string readFlacStream(Annotator& out);         // RFC 9639 8
std::string readCodecDelay(Annotator& out);         // 64 bits of nanoseconds in the machine's order
std::string readSeekPreRoll(Annotator& out);        // the same
std::string readNativeBitRate(Annotator& out);      // 32 bits in the machine's byte order
std::string readWma1(Annotator& out);               // behind WAVEFORMATEX: WMAUDIO1WAVEFORMAT
std::string readWma2(Annotator& out);               // WMAUDIO2WAVEFORMAT
std::string readWma3(Annotator& out);               // WMAUDIO3WAVEFORMAT
std::string readWmaVoice(Annotator& out);           // the same, with options behind it
std::string readAdpcm(Annotator& out);              // ADPCMWAVEFORMAT, IMAADPCMWAVEFORMAT

// ISO/IEC 14496-3 1.6.2.1, inside a descriptor.
std::string readAudioConfig(Annotator& out);

// Rows of the parts behind start codes 00 00 01; their names in one line, the first eight at most.
using StartCodeName = std::string (*)(uint64_t code);
std::string readStartCodeParts(Annotator& out, StartCodeName nameOf);

// Rows of the elements of the unit that is ahead, as far as they can be read, of the rest, and of
// the facts about pictures when the unit is one that tells these. Emulation prevention
// bytes (ITU-T H.264 7.3.1, ITU-T H.265 7.3.1.1) have rows where they stand between elements, else
// they are a part of the one that they stand in. Flags and bytes of one name share a row.
void readUnit(Annotator& out, HeaderTrace& trace, VideoFactsReader readFacts);

}  // namespace inspect
