// The readers of records.

#pragma once

#include "inspect/records/Annotator.h"

namespace inspect {

// One family of records each. They read what there is of a record, whatever it holds.
void explainAvcRecord(Annotator& out);          // ISO/IEC 14496-15 5.3.3.1.2
void explainHevcRecord(Annotator& out);         // ISO/IEC 14496-15 8.3.3.1.2
void explainEsDescriptor(Annotator& out);       // ISO/IEC 14496-1 7.2.6.5, around MPEG-4
void explainMpeg2EsDescriptor(Annotator& out);  // the same around MPEG-1 and 2 video
void explainVc1Header(Annotator& out);          // VC-1 advanced profile, with the picture size
void explainWmv9Header(Annotator& out);         // SMPTE 421M Annex J, with the picture size
void explainWmv7Header(Annotator& out);         // WMV 7 and 8: no picture size
void explainTheoraHeaders(Annotator& out);      // Theora 6
void explainVorbisHeader(Annotator& out);       // Vorbis I 4.2.2
void explainVorbisSetup(Annotator& out);        // Vorbis I 4.2.4
void explainOpusHead(Annotator& out);           // RFC 7845 5.1
void explainFlacStream(Annotator& out);         // RFC 9639 8
void explainNativeNumber(Annotator& out);       // in the machine's byte order
void explainWma1(Annotator& out);               // behind WAVEFORMATEX: WMAUDIO1WAVEFORMAT
void explainWma2(Annotator& out);               // WMAUDIO2WAVEFORMAT
void explainWma3(Annotator& out);               // WMAUDIO3WAVEFORMAT
void explainWmaVoice(Annotator& out);           // the same, with options behind it
void explainAdpcm(Annotator& out);              // ADPCMWAVEFORMAT, IMAADPCMWAVEFORMAT
void explainUnknown(Annotator& out);

}  // namespace inspect
