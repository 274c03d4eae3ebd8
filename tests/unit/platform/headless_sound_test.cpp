#include "platform/fsound.h"
#include "platform/headless/headless.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {

class HeadlessSound : public testing::Test {
protected:
    void SetUp() override { headless::reset(); }
    void TearDown() override { headless::reset(); }
};

} // namespace

TEST_F(HeadlessSound, OnlyWaveFilesOpen) {
    const auto folder = std::filesystem::path(testing::TempDir()) / "headless_sound";
    std::filesystem::create_directories(folder);
    const auto wave = (folder / "a.wav").string();
    const auto text = (folder / "b.wav").string();
    std::ofstream(wave, std::ios::binary) << "RIFF____WAVEfmt ";
    std::ofstream(text) << "not a sound";
    EXPECT_EQ(FSOUND_Stream_Open((folder / "none.wav").string().c_str(), 0, 0, 0), nullptr);
    EXPECT_EQ(FSOUND_Stream_Open(folder.string().c_str(), 0, 0, 0), nullptr) << "a folder opens as a file";
    EXPECT_EQ(FSOUND_Stream_Open(text.c_str(), 0, 0, 0), nullptr);
    FSOUND_STREAM* stream = FSOUND_Stream_Open(wave.c_str(), 0, 0, 0);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(headless::openHandles().streams, 1u);
    EXPECT_EQ(FSOUND_Stream_Close(stream), 1);
    EXPECT_EQ(headless::openHandles().streams, 0u);
    EXPECT_EQ(FSOUND_Stream_Close(stream), 0);
    EXPECT_EQ(headless::problems().size(), 1u) << "closed twice";
    std::filesystem::remove_all(folder);
}

TEST_F(HeadlessSound, AChannelBelongsToWhoStartedItLast) {
    headless::requireSoundFiles(false);
    FSOUND_STREAM* first = FSOUND_Stream_Open("first", 0, 0, 0);
    FSOUND_STREAM* second = FSOUND_Stream_Open("second", 0, 0, 0);
    EXPECT_EQ(FSOUND_Stream_Play(1, first), 1);
    FSOUND_Stream_Play(1, second);
    FSOUND_Stream_Stop(first);
    EXPECT_EQ(headless::playingOn(1), "second") << "the first no longer plays there";
    FSOUND_Stream_Play(2, second);
    EXPECT_EQ(headless::playingOn(1), "") << "a stream plays in one place";
    EXPECT_EQ(headless::playingOn(2), "second");
    FSOUND_Stream_Stop(second);
    EXPECT_EQ(headless::playingOn(2), "");
}

TEST_F(HeadlessSound, CallsAreWrittenDownInOrder) {
    headless::requireSoundFiles(false);
    headless::failCall(headless::Call::soundInit);
    EXPECT_EQ(FSOUND_Init(44100, 32, 0), 0);
    FSOUND_STREAM* stream = FSOUND_Stream_Open("music", 0x2000, 0, 0);
    FSOUND_Stream_SetMode(stream, 0x2002);
    FSOUND_Stream_Play(0, stream);
    const std::vector<headless::SoundCall> expected = {{"FSOUND_Init", "", -1, 0},
                                                       {"FSOUND_Stream_Open", "music", -1, 0x2000},
                                                       {"FSOUND_Stream_SetMode", "music", -1, 0x2002},
                                                       {"FSOUND_Stream_Play", "music", 0, 0x2002}};
    EXPECT_EQ(headless::soundCalls(), expected);
    FSOUND_Close();
    EXPECT_EQ(headless::problems().size(), 1u) << "closed over an open stream";
}
