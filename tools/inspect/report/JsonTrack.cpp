#include "inspect/base/Bytes.h"
#include "inspect/callers/PcmFormat.h"
#include "inspect/report/JsonParts.h"
#include "inspect/report/VerifyText.h"

namespace inspect {
namespace {

Json protectionToJson(const std::optional<Protection>& protection) {
    if (!protection) return {};
    return {{"scheme", toText(protection->scheme)}, {"keyId", textOrNull(protection->keyId)}};
}

Json rankToJson(const std::optional<Rank>& rank) {
    return rank ? toText(rank->name) : Json();
}

// Null is what nobody knows.
Json factsToJson(const TrackReport& track) {
    const Stream& stream = track.stream;
    const TrackFacts& facts = track.facts;
    const bool isVideo = stream.kind == Kind::kVideo;
    const bool isAudio = stream.kind == Kind::kAudio;
    Json json = {{"durationUs", orNull(stream.durationUs)},
                 {"language", stream.language == "und" ? Json() : textOrNull(stream.language)},
                 {"default", stream.isDefault},
                 {"protection", protectionToJson(stream.protection)}};
    if (isVideo) {
        json["width"] = orNull(facts.width);
        json["height"] = orNull(facts.height);
        json["rotation"] = stream.video.rotation;
        json["frameRate"] = orNull(facts.frameRate);
        json["bitDepth"] = orNull(facts.bitDepth);
    }
    if (isAudio) {
        json["channels"] = orNull(facts.channelCount);
        json["sampleRate"] = orNull(facts.sampleRate);
        const uint32_t bits = stream.audio.bitDepth;
        json["bitDepth"] = bits > 0 ? Json(bits) : Json();
    }
    if (isVideo || isAudio) {
        json["bitRate"] = orNull(facts.bitRate);
        json["profile"] = rankToJson(facts.profile);
        json["level"] = rankToJson(facts.level);
    }
    return json;
}

Json datumToJson(const CodecDatum& datum) {
    return {{"key", datum.key}, {"bytes", orNull(datum.sizeBytes)}, {"text", toText(datum.words)}};
}

Json rowToJson(const Row& row) {
    Json json = {{"offset", row.offset},
                 {"bytes", hex(row.bytes, "")},
                 {"depth", row.depth},
                 {"name", toText(row.name)},
                 {"value", textOrNull(row.value)}};
    if (row.number) json["number"] = *row.number;
    if (row.bits > 0) json["bits"] = row.bits;
    if (!row.clause.empty()) json["clause"] = row.clause;
    return json;
}

Json recordToJson(const Record& record) {
    return {{"key", record.key},
            {"bytes", record.sizeBytes},
            {"clause", textOrNull(std::string(record.clause))},
            {"rows", arrayOf(record.rows, rowToJson)}};
}

Json callToJson(const Call& call) {
    return {{"operation", call.operation},
            {"result", textOrNull(call.result)},
            {"parameters", arrayOf(call.parameters, recordToJson)},
            {"metadata", keysToJson(call.entries)}};
}

Json keyFramesToJson(const KeyFrames& frames) {
    const auto disputeToJson = [](const auto& dispute) -> Json {
        const auto& [sample, timeUs, libraryCallsKey] = dispute;
        return {{"sample", sample},
                {"timeUs", orNull(timeUs)},
                {"library", libraryCallsKey},
                {"marked", !libraryCallsKey}};
    };
    return {{"examined", frames.isExamined},
            {"markedBy", frames.isMarkedByContainer ? "container" : "demuxer"},
            {"samples", frames.samples},
            {"unreadable", frames.unreadable},
            {"library", frames.library},
            {"marked", frames.marked},
            {"disputed", frames.disputed},
            {"firstOfLibrary", frames.firstOfLibrary},
            {"firstDisputed", arrayOf(frames.firstDisputed, disputeToJson)}};
}

Json faultyToJson(const FaultySamples& samples) {
    if (samples.count == 0) return {{"count", 0}, {"first", nullptr}};
    const auto& [sample, timeUs, offset] = samples.first;
    return {{"count", samples.count},
            {"first",
             {{"sample", sample}, {"timeUs", orNull(timeUs)}, {"offset", orNull(offset)}}}};
}

Json verificationToJson(const Verification& found) {
    Json json = {{"fault", textOrNull(faultText(found))},
                 {"samples", found.samples},
                 {"readable", found.readable},
                 {"outside", faultyToJson(found.outside)},
                 {"missingBytes", found.missingBytes},
                 {"cut", faultyToJson(found.cut)},
                 {"unitLengths", found.hasUnitLengths},
                 {"brokenUnits", faultyToJson(found.brokenUnits)},
                 {"backward", faultyToJson(found.backward)},
                 {"gapAtUs", orNull(found.gapAtUs)},
                 {"gapUs", found.gapUs},
                 {"endUs", orNull(found.endUs)},
                 {"readToEnd", found.isReadToEnd}};
    if (!found.isVideo) return json;
    json["keyFrames"] = found.keyFrames;
    json["keyDistance"] = found.keyDistance;
    json["keyDistanceUs"] = found.keyDistanceUs;
    return json;
}

}  // namespace

Json trackToJson(const TrackReport& track, std::span<const PretendedDevice> devices) {
    Json json = {{"index", track.stream.index},
                 {"kind", toString(track.stream.kind)},
                 {"codec", toText(track.stream.codec)}};
    if (track.stream.kind == Kind::kOther) return json;
    json["codecType"] = track.stream.codecType;
    json["mime"] = mimeToJson(track.found.entries);
    json.update(factsToJson(track));
    json.update(verdictToJson(track.verdicts.front()));
    json["chain"] = arrayOf(track.verdicts.front().chain, stepToJson);
    json["devices"] = verdictsToJson(devices, track.verdicts);
    json["notes"] = arrayOf(track.found.notes, toText);
    const PcmFormat* pcm = findPcmFormat(track.stream);
    if (isPcm(track.stream))
        json["conversionTo16"] = pcm != nullptr ? Json(pcm->conversion) : Json();
    if (track.dump) {
        addPath(json["dump"], "path", track.dump->path);
        json["dump"]["frames"] = track.dump->frames;
    }
    json["codecData"] = arrayOf(track.found.codecData, datumToJson);
    json["keys"] = keysToJson(track.found.entries);
    json["log"] = arrayOf(track.found.log, lineToJson);
    if (!track.explanations.empty())
        json["explanations"] = arrayOf(track.explanations, recordToJson);
    if (track.keyFrames) json["keyFrames"] = keyFramesToJson(*track.keyFrames);
    if (track.verification) json["verify"] = verificationToJson(*track.verification);
    if (!track.component.empty()) json["component"] = arrayOf(track.component, callToJson);
    if (!track.legacy.empty()) json["legacy"] = arrayOf(track.legacy, callToJson);
    return json;
}

}  // namespace inspect
