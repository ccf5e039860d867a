// The tables of the database, which docs/collections.md explains.

#pragma once

namespace inspect {

inline constexpr int kSchemaVersion = 2;         // user_version; grows when a table changes
inline constexpr int kApplicationId = 0x5a5243;  // application_id: whose database it is

// Paths are TEXT, or a BLOB of those bytes that are no UTF-8.
inline constexpr const char* kSchema = R"sql(
CREATE TABLE IF NOT EXISTS settings (
    id INTEGER PRIMARY KEY,
    program TEXT NOT NULL,
    settings TEXT NOT NULL,
    UNIQUE (program, settings)
);
CREATE TABLE IF NOT EXISTS files (
    id INTEGER PRIMARY KEY,
    path NOT NULL UNIQUE,
    size_bytes INTEGER,
    modified_ns INTEGER,
    settings_id INTEGER NOT NULL REFERENCES settings,
    is_media INTEGER NOT NULL,
    error TEXT,
    fault TEXT,
    format TEXT,
    mime TEXT,
    duration_us INTEGER
);
CREATE TABLE IF NOT EXISTS tracks (
    file_id INTEGER NOT NULL REFERENCES files ON DELETE CASCADE,
    track INTEGER NOT NULL,
    kind TEXT,
    codec TEXT,
    mime TEXT,
    profile TEXT,
    level TEXT,
    duration_us INTEGER,
    width INTEGER,
    height INTEGER,
    frame_rate REAL,
    channels INTEGER,
    sample_rate INTEGER,
    bit_rate INTEGER,
    bit_depth INTEGER
);
CREATE TABLE IF NOT EXISTS verdicts (
    file_id INTEGER NOT NULL REFERENCES files ON DELETE CASCADE,
    track INTEGER,
    device TEXT NOT NULL,
    verdict TEXT NOT NULL,
    plays INTEGER NOT NULL,
    reason TEXT,
    decoder TEXT
);
CREATE TABLE IF NOT EXISTS tags (
    file_id INTEGER NOT NULL REFERENCES files ON DELETE CASCADE,
    kind TEXT NOT NULL,
    name TEXT NOT NULL,
    value TEXT NOT NULL
);
CREATE INDEX IF NOT EXISTS tracks_of_file ON tracks (file_id);
CREATE INDEX IF NOT EXISTS verdicts_of_file ON verdicts (file_id);
CREATE INDEX IF NOT EXISTS tags_of_file ON tags (file_id);
CREATE VIEW IF NOT EXISTS file_verdicts AS
    SELECT files.id AS file_id, path, size_bytes, error, format, duration_us,
        device, verdict, plays, reason, decoder
    FROM files JOIN verdicts ON file_id = files.id
    WHERE track IS NULL;
CREATE VIEW IF NOT EXISTS track_verdicts AS
    SELECT files.id AS file_id, path, size_bytes, tracks.track, kind, codec, tracks.mime, profile,
        level, tracks.duration_us, width, height, frame_rate, channels, sample_rate, bit_rate,
        bit_depth, device, verdict, plays, reason, decoder
    FROM files JOIN tracks ON tracks.file_id = files.id
        JOIN verdicts ON verdicts.file_id = files.id AND verdicts.track = tracks.track;
)sql";

}  // namespace inspect
