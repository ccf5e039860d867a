// Pictures of tags, and files of their own for them.

#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <string_view>

#include "inspect/base/Bytes.h"
#include "inspect/base/OutputFile.h"

namespace inspect {

// By the first bytes.
struct PictureKind {
    std::string_view name;  // "JPEG"
    const char* extension;  // of a file's name: ".jpg"
};
PictureKind pictureKind(Bytes data);

class PictureFiles {
public:
    // Makes the folder when it is missing.
    PictureFiles(std::filesystem::path folder, OutputRules rules);

    // Writes the picture of an input file and returns the path: the file's name with the picture's
    // extension, and "-2" and so on where this run has used that up. Throws a FileError.
    std::string write(const std::string& input, Bytes picture);

private:
    std::filesystem::path mFolder;
    OutputRules mRules;
    std::set<std::string> mNames;  // that this run has used
};

}  // namespace inspect
