// Runs zrinspect, and ffprobe as the referee, on the samples.

#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <tuple>

namespace fs = std::filesystem;
using nlohmann::json;

struct Result {
    int status;
    std::string out;
    std::string err;
};

inline std::string readFile(const fs::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

inline Result run(const std::string& command) {
    const fs::path errors = fs::temp_directory_path() / ("zr_err" + std::to_string(getpid()));
    FILE* pipe = popen((command + " 2>'" + errors.string() + "'").c_str(), "r");
    std::string out;
    for (int c = fgetc(pipe); c != EOF; c = fgetc(pipe)) out += static_cast<char>(c);
    const int status = pclose(pipe);
    Result result{WIFEXITED(status) ? WEXITSTATUS(status) : -1, out, readFile(errors)};
    fs::remove(errors);
    return result;
}

// Collects the documents that it prints, for schema.py.
inline Result inspect(const std::string& arguments) {
    Result result = run("cd '" SAMPLES "' && '" ZRINSPECT "' " + arguments);
    if (result.out.starts_with("{\n")) std::ofstream(DOCUMENTS, std::ios::app) << result.out;
    return result;
}

// The same on a file of these bytes.
inline Result inspectBytes(const std::string& arguments, const std::string& bytes) {
    const fs::path path = fs::temp_directory_path() / ("zr_bytes" + std::to_string(getpid()));
    std::ofstream(path, std::ios::binary) << bytes;
    const Result result = inspect(arguments + " '" + path.string() + "'");
    fs::remove(path);
    return result;
}

inline json inspectFile(const std::string& arguments) {
    return json::parse(inspect("--json " + arguments).out)["files"][0];
}

// What ffprobe shows of a sample.
inline json referee(const std::string& options, const std::string& file) {
    const std::string ffprobe = "'" FFPROBE "' -v error -of json ";
    return json::parse(run(ffprobe + options + " '" SAMPLES + file + "'").out);
}

inline json refereeStreams(const std::string& file) {
    return referee("-show_streams -show_data", file)["streams"];
}

// The referee prints private data as lines of "offset: hex hex ...  text".
inline std::string privateData(const json& stream) {
    std::istringstream dump(stream["extradata"].get<std::string>());
    std::string digits;
    for (std::string line; std::getline(dump, line);) digits += line.substr(0, 50).erase(0, 10);
    std::erase(digits, ' ');
    return digits;
}

inline std::string hex(size_t value, int digits) {
    std::array<char, 20> text;
    snprintf(text.data(), text.size(), "%0*zx", digits, value);
    return text.data();
}

inline void expectContains(const std::string& text, const std::string& part) {
    EXPECT_NE(text.find(part), std::string::npos) << part << "\nis not in\n" << text;
}

// Runs scripts in a folder of the test's own; $Z is the program, $S the samples.
class InFolder : public testing::Test {
protected:
    ~InFolder() override { fs::remove_all(mFolder); }
    Result shell(const std::string& script) const {
        write("script", "Z='" ZRINSPECT "' S='" SAMPLES "'\n" + script);
        return run("cd '" + mFolder.string() + "' && bash script");
    }
    void write(const std::string& name, const std::string& bytes) const {
        std::ofstream(mFolder / name, std::ios::binary) << bytes;
    }

    const fs::path mFolder = fs::temp_directory_path() / ("zr_line" + std::to_string(getpid()));
    const bool mIsMade = fs::create_directory(mFolder);
};
