// Names and texts of files: they steer no terminal, and the bytes behind them can be told.

#include "Run.h"

namespace {

class Escape : public testing::Test {
protected:
    ~Escape() override { fs::remove_all(mFolder); }
    // A copy of the sample under another name.
    std::string copy(const std::string& name) const {
        const fs::path path = mFolder / name;
        fs::copy_file(SAMPLES "audio.aac", path);
        return path.string();
    }
    const fs::path mFolder = fs::temp_directory_path() / ("zr_escape" + std::to_string(getpid()));
    const bool mIsMade = fs::create_directory(mFolder);
};

TEST_F(Escape, NamesSteerNoTerminal) {
    const struct {
        const char* name;
        const char* shown;
    } cases[] = {
            {"a\x1b[31m.aac", "a\\x1b[31m.aac"},            // C0
            {"b\xC2\x9B.aac", "b\\x9b.aac"},                // C1, as UTF-8
            {"c\xE2\x80\xAE.aac", "c\\u202e.aac"},          // right-to-left override
            {"d\xE2\x80\x8B.aac", "d\\u200b.aac"},          // zero width
            {"e\xF3\xA0\x81\x81.aac", "e\\U000e0041.aac"},  // a tag, which nobody sees
            {"f\n\xC3\xA4\xE2\x82\xAC.aac", "f\\n\xC3\xA4\xE2\x82\xAC.aac"},
    };
    for (const auto& [name, shown] : cases) {
        const std::string good = copy(name);
        const Result result = inspect("'" + good + "' '" + good + ".no'");
        const std::string path = (mFolder / shown).string();
        EXPECT_TRUE(result.out.starts_with(path + "  audio/")) << result.out;
        EXPECT_EQ(result.err, "zrinspect: " + path + ".no: No such file or directory\n");
        const std::string document = inspect("--json '" + good + "'").out;
        EXPECT_EQ(document.find(name), std::string::npos) << document;
        const json file = json::parse(document)["files"][0];
        EXPECT_EQ(file["path"], good);
        EXPECT_FALSE(file.contains("pathBytes"));
    }
}

// Latin-1 and UTF-8 of the same letter are two names.
TEST_F(Escape, PathThatIsNotUtf8StaysIdentifiable) {
    const std::string path = copy("\xE4.aac");
    std::string digits;
    for (const char byte : path) digits += hex(static_cast<unsigned char>(byte), 2);
    const json file = inspectFile("'" + path + "'");
    EXPECT_EQ(file["path"], (mFolder / "\xC3\xA4.aac").string());
    EXPECT_EQ(file["pathBytes"], digits);
    EXPECT_EQ(inspectFile("'" + path + ".no'")["pathBytes"], digits + "2e6e6f");
}

}  // namespace
