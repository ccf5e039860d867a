// The files of a collection, one after the other, however many there are.

#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace inspect {

struct FileSources {
    std::vector<std::string> paths;  // files, and folders that are walked
    std::string list;                // a file that names more of them; "-" = standard input
    bool endsWithNul = false;        // the names in the list, instead of with a line's end
};

struct ListedFile {
    std::string path;
    bool isFound = false;  // in a folder, and not named by anybody
    std::string error;     // not empty: what it is cannot be told
};

// Why nobody should open it; empty when it is a file. Fills in the status of what is there.
std::string whyNoFile(const ListedFile& file, struct stat& status);

// Of what is found in a folder: no file, or none that holds anything and is not called like media.
bool isOther(const ListedFile& file, const struct stat& status);

class FileList {
public:
    // The sources outlive it. Throws a FileError for a list that cannot be opened.
    explicit FileList(const FileSources& sources);

    // What is named comes in the order of the names, what is in a folder in the order of its bytes.
    // Links to folders are followed where they are named, not on the way, so no way is a ring.
    std::optional<ListedFile> next();

private:
    struct Entry {
        ListedFile file;
        bool isFolder;
    };
    struct Close {
        void operator()(FILE* file) const { std::fclose(file); }
    };

    std::optional<std::string> nextName();
    void enter(const std::string& folder);

    const FileSources& mSources;
    size_t mNextPath = 0;
    std::unique_ptr<FILE, Close> mList;
    std::vector<Entry> mWaiting;  // on the way through folders, the next one last
};

}  // namespace inspect
