// The page is XML too: an XML reader finds in it what --json prints, and nothing that runs.

#include <pugixml.hpp>

#include "Run.h"

namespace {

class Html : public InFolder {
protected:
    void open(const std::string& file) {
        const Result result = shell("$Z -q --force --html page.html " + file);
        ASSERT_EQ(std::tuple(result.status, result.out + result.err), std::tuple(0, ""));
        constexpr unsigned kBlanksToo = pugi::parse_default | pugi::parse_ws_pcdata;
        ASSERT_TRUE(mPage.load_file((mFolder / "page.html").c_str(), kBlanksToo));
    }
    // The texts of all there are, each on a line.
    std::string find(const std::string& path) const {
        std::string all;
        for (const auto& node : mPage.select_nodes(path.c_str()))
            all += pugi::xpath_query("string()").evaluate_string(node) + '\n';
        return all;
    }

    pugi::xml_document mPage;
};

TEST_F(Html, HoldsWhatJsonHolds) {
    const std::string rows =
            ".files[].tracks[] | (.explanations[]?, .component[].parameters[]?).rows";
    const std::pair<const char*, std::string> same[] = {
            {"//header/p[@class='reason'] | //pre/code",
             ".files[] | .reason // empty, .fix.commands[]?"},
            {"//*[@class='fields']//tbody//*[self::th or @class='text']",
             rows + "[] | .name, .value // \"\""}};
    for (const char* name : {"video.mkv", "video.hevc", "video.avi", "audio.aiff"}) {
        SCOPED_TRACE(name);
        open(std::string("$S/") + name);
        write("file", shell(std::string("$Z --json --explain --component --fix $S/") + name).out);
        for (const auto& [path, filter] : same)
            EXPECT_EQ(find(path), shell("jq -r '" + filter + "' file").out) << path;
        std::string map = find("//table[@class='bytes']//td");
        std::erase_if(map, [](char c) { return c == ' ' || c == '\n'; });
        EXPECT_EQ(map + '\n', shell("jq -j '" + rows + "[].bytes' file; echo").out);
    }
    EXPECT_EQ(shell("$Z --html page.html $S/audio.aiff").status, 1);  // it is there
    EXPECT_EQ(shell("$Z --html o $S/video.mkv").out, shell("$Z $S/video.mkv").out);
}

TEST_F(Html, ObeysNothingFromAFile) {
    const std::string name = R"("><script>x<!--{{{bodyHtml}}}.mp3)";
    shell("'" FFMPEG
          "' -v error -f lavfi -i sine=d=0.1 -metadata artist=$'\\e[1m\\u202e' "
          "-metadata title=$'</style><x> \\' \" ]]>' '" +
          name + "'");
    open("'" + name + "'");
    EXPECT_EQ(
            find("//h1 | //td[@class='text' and (../th='title' or ../th='artist') and not(code)]"),
            name + "\n</style><x> ' \" ]]>\n\\x1b[1m\\u202e\n");
    EXPECT_EQ(find("//@style | //@*[starts-with(name(), 'on')] | //@src | "
                   "//@href[. != 'data:,' and not(starts-with(., '#'))]"),
              "");
    for (const std::string part : {"style", "script"}) {
        write("part", find("//" + part));  // all there are
        const std::string hash = shell("head -c -1 part | openssl sha256 -binary | base64").out;
        expectContains(find("//meta/@content"), part + "-src 'sha256-" + hash.substr(0, 44) + "';");
    }
}

}  // namespace
