// A record taken apart, from which a summary picks by name.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "inspect/records/Annotator.h"
#include "inspect/records/VideoFacts.h"

namespace inspect {

struct Record {
    std::string key;  // of the format; "private data" for what the library only reads numbers from
    size_t sizeBytes = 0;
    std::vector<Row> rows;

    // The first row of that name, or one without anything.
    const Row& operator[](std::string_view name) const;
    const Row& at(std::string_view name, unsigned depth) const;

    uint64_t number(std::string_view name) const { return (*this)[name].number.value_or(0); }
    bool has(std::string_view name) const { return (*this)[name].number.has_value(); }
    std::string digits(std::string_view name) const { return std::to_string(number(name)); }
    const std::string& words(std::string_view name) const { return (*this)[name].words; }

    // Whether nothing is missing down to this depth.
    bool isWhole(unsigned depth = 0) const;

    ByteVector bytes() const;
    ByteVector part(const Row& heading) const;  // the bytes under it
};

// How one kind of record is read, in one straight line, and put into one line.
struct RecordKind {
    void (*read)(Annotator& out);
    std::string (*summarise)(const Record& record);
    VideoFactsReader readFacts = nullptr;  // of video that tells facts about its pictures
};

std::string showBytes(const Record& record);  // the summary of those that say no more

// They read what there is of a record, whatever it holds, and say so when it cannot be read.
extern const RecordKind kAvcRecord;          // ISO/IEC 14496-15 5.3.3.1.2
extern const RecordKind kHevcRecord;         // ISO/IEC 14496-15 8.3.3.1.2
extern const RecordKind kVp9Record;          // VP Codec ISO Media File Format Binding 2.2
extern const RecordKind kAv1Record;          // AV1 Codec ISO Media File Format Binding 2.3.3
extern const RecordKind kEsDescriptor;       // ISO/IEC 14496-1 7.2.6.5, around MPEG-4
extern const RecordKind kMpeg2EsDescriptor;  // the same around MPEG-1 and 2 video
extern const RecordKind kVc1Header;          // VC-1 advanced profile, with the picture size
extern const RecordKind kWmv9Header;         // SMPTE 421M Annex J, with the picture size
extern const RecordKind kWmv7Header;         // WMV 7 and 8: no picture size
extern const RecordKind kTheoraHeaders;      // Theora 6
extern const RecordKind kVorbisHeader;       // Vorbis I 4.2.2
extern const RecordKind kVorbisSetup;        // Vorbis I 4.2.4
extern const RecordKind kOpusHead;           // RFC 7845 5.1
extern const RecordKind kFlacStream;         // RFC 9639 8
extern const RecordKind kCodecDelay;         // 64 bits of nanoseconds in the machine's byte order
extern const RecordKind kSeekPreRoll;        // the same
extern const RecordKind kNativeBitRate;      // 32 bits in the machine's byte order
extern const RecordKind kWma1;               // behind WAVEFORMATEX: WMAUDIO1WAVEFORMAT
extern const RecordKind kWma2;               // WMAUDIO2WAVEFORMAT
extern const RecordKind kWma3;               // WMAUDIO3WAVEFORMAT
extern const RecordKind kWmaVoice;           // the same, with options behind it
extern const RecordKind kAdpcm;              // ADPCMWAVEFORMAT, IMAADPCMWAVEFORMAT

// ISO/IEC 14496-3 1.6.2.1, inside a descriptor: its rows, and the words for a whole one.
void readAudioConfig(Annotator& out);
std::string summariseAudioConfig(const Record& record, Bytes config);

}  // namespace inspect
