// What the templates are filled in with. All of it is bounded, however large the file is.

#pragma once

#include <span>
#include <string>
#include <string_view>

#include "inspect/page/Page.h"
#include "inspect/report/Report.h"

namespace inspect {

// What the page still has room for of a file, in bytes.
struct Room {
    size_t records = 1'200'000;  // of their HTML
    size_t tracks = 2'000'000;   // of their HTML, records too
    size_t pictures = 1'500'000;
};

// The words of a verdict's code, with the sign and the class that stand for it.
Json verdictView(const std::string& code);

// The first of a list; and how many are left out, in words, or null.
Json firstOf(const Json& list, size_t count);
Json moreThan(size_t shown, size_t all, const std::string& what);

Json presentText(const std::string& text);  // null for none

// HTML of what stands in JSON; nothing of none.
std::string devicesHtml(const Json& devices);
std::string keysHtml(const Json& keys, const std::string& title);
std::string logHtml(const Json& log);

Json tagView(const Tag& tag, const Json& json, Room& room);
Json stripView(const KeyFrames& frames);
Json waveView(const Waveform& waveform, uint32_t sampleRate);

// A record as a map of its bytes, and the fields in a table. The id is the page's alone.
std::string recordHtml(const Record& record, const std::string& id, Room& room);

// A track as it stands in JSON, under a heading of that level.
std::string trackHtml(const TrackReport& track, const Json& json, const std::string& id,
                      size_t level, Room& room);

}  // namespace inspect
