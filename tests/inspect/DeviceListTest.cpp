// Device descriptions as they come off devices, and what is read from them.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>

#include "inspect/base/InputFile.h"
#include "inspect/devices/DeviceList.h"
#include "platform/Host.h"

namespace {

using namespace inspect;
namespace fs = std::filesystem;

void append(std::string& text, const char* name, const std::optional<Range>& range) {
    const Range all;
    if (!range) return;
    text += std::string(" ") + name + ' ' + std::to_string(range->from) + '-';
    if (range->to != all.to) text += std::to_string(range->to);
}

void append(std::string& text, const char* name, const Size& size) {
    text += std::string(" ") + name + ' ' + std::to_string(size.width) + 'x' +
            std::to_string(size.height);
}

std::string show(const Decoder& decoder) {
    const Limits& limits = decoder.limits;
    std::string text = decoder.type + ' ' + decoder.name;
    for (const std::string& alias : decoder.aliases) text += '=' + alias;
    if (decoder.isSoftware) text += " software";
    append(text, "w", limits.width);
    append(text, "h", limits.height);
    if (limits.canSwapSides) text += " swaps";
    if (limits.alignment.width > 1) append(text, "align", limits.alignment);
    if (limits.blockSize) append(text, "block", *limits.blockSize);
    append(text, "blocks", limits.blockCount);
    append(text, "blocks/s", limits.blocksPerSecond);
    append(text, "fps", limits.frameRate);
    append(text, "bit/s", limits.bitRate);
    append(text, "channels", limits.channelCount);
    for (const Range& each : limits.sampleRates) append(text, "Hz", each);
    for (const auto& [profile, level] : limits.profileLevels)
        text += ' ' + std::to_string(profile) + '/' + std::to_string(level);
    if (!decoder.whyIgnored.empty()) text += "; not counted: " + decoder.whyIgnored;
    return text + (decoder.remark.empty() ? "\n" : "; " + decoder.remark + '\n');
}

// All of it, or why there is none.
std::string load(const std::string& what) {
    std::string text;
    try {
        const DeviceDescription device = loadDevice(what);
        for (const Decoder& each : device.decoders) text += show(each);
        for (const std::string& each : device.missingFiles) text += "missing " + each + '\n';
        for (const std::string& each : device.warnings) text += "! " + each + '\n';
    } catch (const FileError& error) {
        text = error.what();
    }
    return text;
}

class DeviceList : public testing::Test {
protected:
    ~DeviceList() override { fs::remove_all(mFolder); }

    std::string write(const std::string& name, const std::string& text) const {
        std::ofstream(mFolder / name, std::ios::binary) << text;
        return (mFolder / name).string();
    }
    // Of a list with these decoders.
    std::string loadDecoders(const std::string& decoders) const {
        return load(write("list",
                          "<MediaCodecs>\n<Decoders>\n" + decoders + "</Decoders></MediaCodecs>"));
    }
    const fs::path mFolder = fs::temp_directory_path() / ("zr_device" + std::to_string(getpid()));
    const bool mIsMade = fs::create_directory(mFolder);
};

TEST_F(DeviceList, LimitsInXml) {
    const std::pair<const char*, const char*> cases[] = {
            {R"(<Limit name="size" min="64x32" max="1920x1088"/>)", "w 64-1920 h 32-1088"},
            {R"(<Limit name="size" max="1920x1088"/>)", "w 0-1920 h 0-1088"},
            {R"(<Limit name="alignment" value="2x4"/>)", "align 2x4"},
            {"<Limit\nname='block-size' \tvalue='16x8'/>", "block 16x8"},
            {R"(<Limit name="block-count" range="1-8160"/>)", "blocks 1-8160"},
            {R"(<Limit name="blocks-per-second" min="1" max="244800"/>)", "blocks/s 1-244800"},
            {R"(<Limit name="frame-rate" range="1-240"/>)", "fps 1-240"},
            {R"(<Limit name="bitrate" range="1-20000000"/>)", "bit/s 1-20000000"},
            {R"(<Limit name="channel-count" max="8"/>)", "channels 0-8"},
            {R"(<Limit name="sample-rate" ranges="8000,11025-96000"/>)",
             "Hz 8000-8000 Hz 11025-96000"},
            {R"(<Attribute name="software-codec"/><Quirk name="q"/><Mapping/>)", "software"},
            {R"(<Feature name="can-swap-width-height" optional="yes"/>)", "swaps"},
            {R"(<Feature name="secure-playback" required="yes"/>)",
             "; not counted: serves only what asks for secure-playback"},
            {R"(<Feature name="tunneled-playback"/>)", ""},
            {R"(<Limit name="performance-point-1920x1080" value="60"/>)", ""},
            {R"(<Limit name="quality" range="0-80" default="80"/>)", ""},
            {R"(<Variant name="v"><Limit name="frame-rate" range="1-2"/></Variant>)",
             "; has other limits on models of the variant \"v\""},
            {R"(<Limit name="frame-rate" range="9-2"/>)",
             "\n! list:3: the limit \"frame-rate\" has the value \"9-2\""},
            {R"(<Limit name="alignment" value="0x2"/>)",
             "\n! list:3: the limit \"alignment\" has the value \"0x2\""},
            {R"(<Limit name="hue" range="1-2"/>)", "\n! list:3: the limit \"hue\" is not known"},
            {"\n<Limt/>", "\n! list:4: <Limt> is not known here"},
    };
    for (const auto& [xml, expected] : cases) {
        const std::string glue = std::strchr(";\n", *expected) != nullptr ? "" : " ";
        EXPECT_EQ(loadDecoders("<MediaCodec name='d' type='v/a'>" + std::string(xml) +
                               "</MediaCodec>"),
                  "v/a d" + glue + expected + '\n')
                << xml;
    }
}

TEST_F(DeviceList, DecodersInXml) {
    EXPECT_EQ(loadDecoders(R"(<MediaCodec name="a" enabled="false"><Alias name="b"/>
<Type name="v/a"/><Type name="v/b"><Limit name="frame-rate" range="1-9"/></Type>
<Limit name="frame-rate" range="1-5"/></MediaCodec>
<MediaCodec name="b" update="true"><Type name="v/a"><Limit name="bitrate" range="1-7"/></Type>
</MediaCodec><MediaCodec name="a" type="v/c" update="true"/>
<MediaCodec name="c" type="v/a" domain="tv" variant="m"/>
<MediaCodec name="d"/><MediaCodec name="e" type="v/&x;" domain="on"/></Decoders>
<Encoders><MediaCodec name="f" type="v/a"/></Encoders>
<Settings><Domain name="on" enabled="true"/></Settings><Decoders>)"),
              "v/a a=b fps 1-5 bit/s 1-7; not counted: is switched off\n"
              "v/b a=b fps 1-9; not counted: is switched off\n"
              "v/a c; not counted: is of the domain \"tv\", which is off; is there on models of "
              "the variant \"m\" only\n"
              "v/&x; e\n"
              "! list:7: there is no decoder \"a\" of \"v/c\" to update\n"
              "! list:9: \"d\" has no type\n");
}

TEST_F(DeviceList, FolderWithIncludes) {
    fs::create_directory(mFolder / "sub");
    const std::string decoder = "<Decoders><MediaCodec name='d' type='v/a'/></Decoders>";
    write("media_codecs_performance_x.xml",
          "<MediaCodecs><Decoders><MediaCodec name='d' update='true'>"
          "<Type name='v/b'><Limit name='frame-rate' "
          "max='5'/></Type></MediaCodec></Decoders></MediaCodecs>");
    write("media_codecs_c2.xml",
          "<MediaCodecs><Decoders><MediaCodec name='d' type='v/b'/></Decoders></MediaCodecs>");
    write("sub/a.xml", "<Included><Include href='b.xml'/><Include href='../c.xml'/></Included>");
    write("sub/b.xml", "<Included><MediaCodec name='i' type='v/i'/></Included>");
    write("media_codecs.xml",
          "\xEF\xBB\xBF<MediaCodecs>\r\n<Include href='gone.xml'/>\r\n"
          "<Include href='/etc/passwd'/><Decoders><Include href='sub/a.xml'/></Decoders>\r\n"
          "<Include href='media_codecs.xml'/>" +
                  decoder + "</MediaCodecs>");
    EXPECT_EQ(load(mFolder.string()),
              "v/i i\nv/a d\nv/b d fps 0-5\nmissing gone.xml\n"
              "! media_codecs.xml:2: \"gone.xml\" is missing\n"
              "! media_codecs.xml:3: \"/etc/passwd\" is no file of this folder\n"
              "! sub/a.xml:1: \"../c.xml\" is no file of this folder\n"
              "! media_codecs.xml:4: \"media_codecs.xml\" is read once only\n");
}

TEST_F(DeviceList, Dump) {
    const std::string text = R"(  it's another service
Media type 'video/hevc':
  Encoder "e" supports
    string size-range = "1x1-2x2"
  Decoder "d" supports
    aliases: [
      "o",  "p" ]
    attributes: 0xa: [ encoder: 0, software-only: 1,
      hw-accelerated: 0 ]
    profile/levels: [ 1/65536 (Main/Main 5.1),
      0x1000/0X10000 (3/4) ]
    colors: [ 21/3 (YUV) ]
    details: AMessage(what = 0x00000000) = {
        string alignment = "2x2"
        string block-size = "16x16"
        int32_t feature-can-swap-width-height = 1
        int32_t feature-secure-playback = 0
        string performance-point-3840x2160-range = "60-60"
        string size-range = "96x98-3840x2160" }
Media type 'audio/x':
  Decoder "a" supports
    profile/levels: [ ]
    details: AMessage(what = 0x00000000) {
        string max-channel-count = "6"
        string sample-rate-ranges = "7350,8000-48000"
        string bitrate-range = "1-"
        string frame-rate-range = "x"
        int32_t feature-tunneled-playback = 1
DUMP OF SERVICE next = 1
)";
    const char* const expected =
            "video/hevc d=o=p software w 96-3840 h 98-2160 swaps align 2x2 block 16x16 1/65536 "
            "4096/65536\n"
            "audio/x a bit/s 1- channels 0-6 Hz 7350-7350 Hz 8000-48000; not counted: serves only "
            "what asks for tunneled-playback\n"
            "! d:27: frame-rate-range has the value \"x\"\n";
    EXPECT_EQ(load(write("d", text)), expected);
    std::string wide = "\xFF\xFE";
    for (const char c : text) wide += {c, '\0'};
    EXPECT_EQ(load(write("d", wide)), expected);
}

TEST_F(DeviceList, ListsAndWhatIsNone) {
    const std::string folder = mFolder.string() + '/';
    const std::tuple<std::string, std::string> cases[] = {
            {"# c\r\nvideo/avc hw # d\r\n  size=2x2-4x4 x=1 profile/levels=1/0x10\naudio/mpeg\n",
             "video/avc hw w 2-4 h 2-4 1/16\naudio/mpeg audio/mpeg\n! f:3: \"x=1\" is not "
             "understood\n"},
            {"\n\nhello", folder + "f:3: \"hello\" begins no codec list in XML, no output of "
                                   "\"dumpsys media.player\" and no list of MIME types"},
            {"\n<a>\n</b>", folder + "f:3: is no XML: Start-end tags mismatch"},
            {"\n<plist/>", folder + "f:2: <plist> begins no list of codecs"},
            {"<MediaCodecs/>", "! no decoder is described in f\n"},
            {std::string((16 << 20) + 1, ' '), folder + "f: is larger than 16 MiB"},
            {"", folder + "f: is empty"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(load(write("f", text)), expected);
    EXPECT_EQ(load(mFolder.string()), folder + "media_codecs.xml: there is none in this folder");
    EXPECT_EQ(load("phon-2016"),
              "phon-2016: there is no such file, and the built-in devices are phone-2016, phone, "
              "bare, maker-software");
    std::string many = "<MediaCodecs>";
    for (int i = 0; i < 60; i++) many += "\n<x/>";
    EXPECT_TRUE(load(write("f", many + "</MediaCodecs>"))
                        .find("f:51: <x> is not known here\n! and 10 more\n") != std::string::npos);
}

// Each is read without a warning; the typical phone is the one that the library is asked on.
TEST(BuiltInDevices, AreWhole) {
    for (const BuiltInDevice& each : builtInDevices()) {
        const DeviceDescription device = loadDevice(std::string(each.name));
        EXPECT_TRUE(device.warnings.empty()) << device.warnings[0];
        EXPECT_FALSE(device.decoders.empty());
    }
    std::set<std::string> types;
    for (const Decoder& each : loadDevice("phone").decoders) types.insert(each.type);
    const auto typical = android::host::typicalPhone().decoders;
    EXPECT_EQ(types, std::set(typical.begin(), typical.end()));
}

}  // namespace
