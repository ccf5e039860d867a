#include "inspect/callers/Pictures.h"

#include <system_error>
#include <utility>

#include "inspect/base/FileKinds.h"

namespace inspect {

namespace fs = std::filesystem;

PictureKind pictureKind(Bytes data) {
    const FileKind* kind = findFileKind(data);
    if (kind == nullptr || kind->extension == nullptr) return {"of unknown kind", ".bin"};
    return {kind->name, kind->extension};
}

PictureFiles::PictureFiles(fs::path folder, OutputRules rules)
    : mFolder(std::move(folder)), mRules(std::move(rules)) {
    std::error_code error;
    fs::create_directories(mFolder, error);
    if (error) failOn(mFolder, error.message());
}

std::string PictureFiles::write(const std::string& input, Bytes picture) {
    const std::string stem = input == "-" ? "stdin" : fs::path(input).stem().string();
    const std::string extension = pictureKind(picture).extension;
    std::string name = stem + extension;
    for (int i = 2; !mNames.insert(name).second; i++) {
        name = stem + "-" + std::to_string(i) + extension;
    }
    const fs::path path = mFolder / name;
    OutputFile file(path, mRules);
    file.write(picture);
    file.keep();
    return path.string();
}

}  // namespace inspect
