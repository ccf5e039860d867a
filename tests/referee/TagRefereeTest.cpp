// Tags written by other people's programs, against what mutagen and TagLib read in them; the rows
// stand in make_tags.py.

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>

#include "referee/Media.h"
#include "support/Tag.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

using namespace android;
using test::media::temporaryPath;

constexpr size_t kRows = 26;

std::string contents(const std::string& name) {
    const test::Bytes bytes = test::media::readFile(temporaryPath(name));
    return {bytes.begin(), bytes.end()};
}

// The names of the files, one a row; throws with the messages of what fails.
std::vector<std::string> makeTags() {
    const std::string command = "cd '" + temporaryPath("") + "' && " MAKE_TAGS " >names 2>log";
    if (std::system(command.c_str()) != 0) throw std::runtime_error(contents("log"));
    std::istringstream names(contents("names"));
    return {std::istream_iterator<std::string>(names), {}};
}

class TagReferee : public testing::TestWithParam<size_t> {};

TEST_P(TagReferee, FindsWhatOthersRead) {
    static const std::vector<std::string> names = makeTags();
    ASSERT_EQ(names.size(), kRows);
    const std::string& name = names[GetParam()];
    test::File file{contents(name)};
    const auto tag = name.ends_with("aiff") ? static_cast<off64_t>(file.data.find("ID3\4")) : 0;
    const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;
    const test::LogCapture quiet("ZRID3");
    const test::Format format;
    helper->parseID3GaplessInfo(&file.source, false, tag, format.get());
    helper->parseID3v2MetaData(&file.source, false, tag, format.get());
    std::istringstream fields(contents(name + ".fields"));
    for (std::string field; std::getline(fields, field);)
        helper->parseVorbisComment(format.get(), field.c_str(), field.size());
    const std::string text = format.text(), expected = contents(name + ".expected");
    EXPECT_EQ(text.substr(0, 600), expected.substr(0, 600)) << name;
    EXPECT_TRUE(text == expected) << name;
}

INSTANTIATE_TEST_SUITE_P(Rows, TagReferee, testing::Range<size_t>(0, kRows));

}  // namespace
