// The sound calls on the real mixer. SDL's disk driver writes what would be heard to a file; every test sound is one
// constant sample value, so the file tells what played when.

#include "platform/fsound.h"
#include "platform/sdl/sound_device.h"
#include "platform/sdl/wave_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int rate = 44100;

void append(std::string& bytes, std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i)
        bytes.push_back(static_cast<char>(value >> (8 * i) & 0xFFu));
}

/// A stereo WAV file of this many milliseconds, every sample of which is `value`.
void writeWave(const std::filesystem::path& path, int milliseconds, std::int16_t value) {
    const auto frames = static_cast<std::uint32_t>(rate * milliseconds / 1000);
    std::string bytes = "RIFF";
    append(bytes, 36 + frames * 4, 4);
    bytes += "WAVEfmt ";
    append(bytes, 16, 4);
    append(bytes, 1, 2); // PCM
    append(bytes, 2, 2);
    append(bytes, rate, 4);
    append(bytes, rate * 4, 4);
    append(bytes, 4, 2);
    append(bytes, 16, 2);
    bytes += "data";
    append(bytes, frames * 4, 4);
    for (std::uint32_t i = 0; i < frames * 2; ++i)
        append(bytes, static_cast<std::uint16_t>(value), 2);
    std::ofstream(path, std::ios::binary) << bytes;
}

void listen(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

/// A stretch of equal samples.
struct Stretch {
    std::int16_t value = 0;
    std::size_t length = 0;
};

class SdlSound : public testing::Test {
protected:
    void SetUp() override {
        folder = std::filesystem::path(testing::TempDir()) / "brackenmoor_sdl_sound";
        std::filesystem::create_directories(folder);
        writeWave(folder / "low.wav", 30, 1000);
        writeWave(folder / "high.wav", 40, 3000);
        setenv("SDL_AUDIODRIVER", "disk", 1);
        setenv("SDL_DISKAUDIOFILE", (folder / "heard.raw").c_str(), 1);
        ASSERT_EQ(FSOUND_Init(rate, 32, 0), 1);
    }
    void TearDown() override { std::filesystem::remove_all(folder); }

    FSOUND_STREAM* open(const char* name) const { return FSOUND_Stream_Open((folder / name).c_str(), 0x2000, 0, 0); }

    /// What was heard up to the end of the mixer, silence at both ends left out.
    std::vector<Stretch> heard() const {
        std::ifstream file(folder / "heard.raw", std::ios::binary);
        std::vector<Stretch> stretches;
        std::int16_t left = 0;
        std::int16_t right = 0;
        while (file.read(reinterpret_cast<char*>(&left), 2) && file.read(reinterpret_cast<char*>(&right), 2)) {
            if (stretches.empty() && left == 0)
                continue;
            if (stretches.empty() || stretches.back().value != left)
                stretches.push_back({left, 0});
            ++stretches.back().length;
        }
        if (!stretches.empty() && stretches.back().value == 0)
            stretches.pop_back();
        return stretches;
    }

    std::filesystem::path folder;
};

} // namespace

TEST_F(SdlSound, ALoopHasNoGapAndGoesOnUntilItIsStopped) {
    FSOUND_STREAM* stream = open("low.wav");
    ASSERT_NE(stream, nullptr);
    FSOUND_Stream_SetMode(stream, 0x2000 | FSOUND_LOOP_NORMAL);
    EXPECT_EQ(FSOUND_Stream_Play(1, stream), 1);
    listen(400);
    FSOUND_Stream_Stop(stream);
    listen(100);
    FSOUND_Stream_Close(stream);
    FSOUND_Close();
    const auto stretches = heard();
    ASSERT_EQ(stretches.size(), 1u) << "one unbroken sound";
    EXPECT_EQ(stretches[0].value, 1000);
    EXPECT_GT(stretches[0].length, std::size_t{rate} / 10) << "several times its 30 ms";
}

TEST_F(SdlSound, WithoutALoopItPlaysOnceWhole) {
    FSOUND_STREAM* stream = open("high.wav");
    FSOUND_Stream_Play(2, stream);
    listen(300);
    FSOUND_Stream_Close(stream);
    FSOUND_Close();
    const auto stretches = heard();
    ASSERT_EQ(stretches.size(), 1u);
    EXPECT_EQ(stretches[0].length, static_cast<std::size_t>(rate * 40 / 1000));
}

TEST_F(SdlSound, AChannelPlaysWhatWasStartedLastAndAnEarlierSoundCannotStopIt) {
    FSOUND_STREAM* low = open("low.wav");
    FSOUND_STREAM* high = open("high.wav");
    FSOUND_Stream_SetMode(low, 0x2000 | FSOUND_LOOP_NORMAL);
    FSOUND_Stream_SetMode(high, 0x2000 | FSOUND_LOOP_NORMAL);
    FSOUND_Stream_Play(1, low);
    listen(150);
    FSOUND_Stream_Play(1, high);
    listen(150);
    FSOUND_Stream_Stop(low);
    listen(300);
    FSOUND_Stream_Close(low);
    FSOUND_Stream_Close(high);
    FSOUND_Close();
    const auto stretches = heard();
    ASSERT_EQ(stretches.size(), 2u) << "the two are never mixed";
    EXPECT_EQ(stretches[0].value, 1000);
    EXPECT_EQ(stretches[1].value, 3000);
    EXPECT_GT(stretches[1].length, std::size_t{rate} / 5) << "on through the stop of the other";
}

TEST_F(SdlSound, DifferentChannelsAreHeardTogether) {
    FSOUND_STREAM* low = open("low.wav");
    FSOUND_STREAM* high = open("high.wav");
    FSOUND_Stream_SetMode(low, 0x2000 | FSOUND_LOOP_NORMAL);
    FSOUND_Stream_Play(0, low);
    FSOUND_Stream_Play(3, high);
    listen(300);
    FSOUND_Stream_Close(low);
    FSOUND_Stream_Close(high);
    FSOUND_Close();
    bool together = false;
    for (const Stretch& stretch : heard())
        together = together || stretch.value == 4000;
    EXPECT_TRUE(together);
}

TEST_F(SdlSound, WhatIsNoSoundDoesNotOpen) {
    EXPECT_EQ(open("none.wav"), nullptr);
    EXPECT_EQ(FSOUND_Stream_Open(folder.c_str(), 0x2000, 0, 0), nullptr);
    std::ofstream(folder / "text.wav") << "no sound";
    EXPECT_EQ(open("text.wav"), nullptr);
    std::filesystem::resize_file(folder / "low.wav", 30);
    EXPECT_EQ(open("low.wav"), nullptr) << "cut off in its header";
    FSOUND_Close();
}

TEST_F(SdlSound, HostileFilesAreNoSoundOrAnHonestOne) {
    const std::filesystem::path hostile = std::filesystem::path(BRACKENMOOR_TEST_DATA_DIR) / "hostile/wav";
    const std::set<std::string> usable = {"cut-short.wav", "second-format-after-the-first.wav"};
    std::size_t opened = 0;
    for (const auto& file : std::filesystem::directory_iterator(hostile)) {
        FSOUND_STREAM* stream = FSOUND_Stream_Open(file.path().c_str(), 0x2000, 0, 0);
        EXPECT_EQ(stream != nullptr, usable.contains(file.path().filename().string())) << file.path();
        opened += stream != nullptr ? 1 : 0;
        FSOUND_Stream_Play(1, stream);
        FSOUND_Stream_Close(stream);
    }
    EXPECT_EQ(opened, usable.size());
    FSOUND_Close();
}

TEST_F(SdlSound, AFileCutShortAnywhereHasNoMoreThanItsWholeSamples) {
    std::ifstream file(folder / "low.wav", std::ios::binary);
    std::vector<std::uint8_t> bytes(std::istreambuf_iterator<char>(file), {});
    bytes.resize(60);
    for (std::size_t length = 0; length <= bytes.size(); ++length) {
        const auto wave = readWave(std::span(bytes).first(length));
        ASSERT_EQ(wave.has_value(), length >= 48) << length;
        if (wave) {
            EXPECT_EQ(wave->samples.size(), (length - 44) / 4 * 4);
        }
    }
    FSOUND_Close();
}

TEST_F(SdlSound, ALostDeviceIsRegainedAndWhatLoopsGoesOn) {
    FSOUND_STREAM* low = open("low.wav");
    FSOUND_STREAM* high = open("high.wav");
    FSOUND_STREAM* once = open("high.wav");
    FSOUND_STREAM* gone = open("high.wav");
    FSOUND_Stream_SetMode(low, 0x2000 | FSOUND_LOOP_NORMAL);
    FSOUND_Stream_Play(0, low);
    FSOUND_Stream_Play(2, once);
    FSOUND_Stream_Play(3, gone);
    setenv("SDL_AUDIODRIVER", "no such driver", 1);
    loseSoundDevice();
    regainSoundDevice();
    FSOUND_STREAM* late = open("low.wav");
    EXPECT_NE(late, nullptr);
    FSOUND_Stream_SetMode(high, 0x2000 | FSOUND_LOOP_NORMAL);
    EXPECT_EQ(FSOUND_Stream_Play(1, high), 1);
    FSOUND_Stream_Close(gone);
    setenv("SDL_AUDIODRIVER", "disk", 1); // which begins its file anew
    regainSoundDevice();
    listen(1050);
    regainSoundDevice();
    listen(300);
    EXPECT_EQ(FSOUND_Stream_Play(4, late), 4);
    listen(200);
    for (FSOUND_STREAM* const stream : {low, high, once, late})
        FSOUND_Stream_Close(stream);
    FSOUND_Close();
    std::size_t both = 0;
    std::size_t withLate = 0;
    for (const Stretch& stretch : heard()) {
        both += stretch.value == 4000 ? stretch.length : 0;
        withLate += stretch.value == 5000 ? stretch.length : 0;
        EXPECT_LE(stretch.value, 5000) << "what ends by itself was played again";
    }
    EXPECT_GT(both, std::size_t{rate} / 10);
    EXPECT_EQ(withLate, static_cast<std::size_t>(rate * 30 / 1000));
}

TEST(SdlSoundWithoutDevice, EverythingSucceedsInSilence) {
    const auto path = std::filesystem::path(testing::TempDir()) / "brackenmoor_silent.wav";
    writeWave(path, 10, 1);
    setenv("SDL_AUDIODRIVER", "no such driver", 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(FSOUND_Init(rate, 32, 0), 1);
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    FSOUND_STREAM* stream = FSOUND_Stream_Open(path.c_str(), 0x2000, 0, 0);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(FSOUND_Stream_Play(1, stream), 1);
    EXPECT_EQ(FSOUND_Stream_Stop(stream), 1);
    EXPECT_EQ(FSOUND_Stream_Close(stream), 1);
    EXPECT_EQ(FSOUND_Stream_Open((path.string() + ".none").c_str(), 0x2000, 0, 0), nullptr);
    FSOUND_Close();
    std::filesystem::remove(path);
}
