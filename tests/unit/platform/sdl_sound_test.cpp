// The sound calls on the real mixer. SDL's disk driver writes what would be heard to a file; every test sound is one
// constant sample value, so the file tells what played when.

#include "platform/fsound.h"
#include "platform/sdl/sound_device.h"
#include "platform/sdl/wave_sound.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <unistd.h>

namespace {

constexpr int rate = 44100;

std::string number(std::size_t value, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i)
        bytes.push_back(static_cast<char>(value >> (8 * i) & 0xFFu));
    return bytes;
}

/// How a WAV file holds its samples; as numbers of the format.
struct Coding {
    unsigned tag = 1; ///< 1 PCM, 3 float, 6 A-law, 7 mu-law, 0xfffe what an extended head says
    unsigned bits = 16;
    unsigned channels = 2;
    unsigned rate = 44100;
    unsigned extendedTag = 1;
};

/// A WAV file of so many frames, in each of which every channel has the same bytes.
std::string waveBytes(const Coding& coding, std::size_t frames, const std::string& sample) {
    const unsigned frameSize = coding.channels * coding.bits / 8;
    std::string format = number(coding.tag, 2) + number(coding.channels, 2) + number(coding.rate, 4) +
                         number(coding.rate * frameSize, 4) + number(frameSize, 2) + number(coding.bits, 2);
    if (coding.tag == 0xfffe)
        format += number(22, 2) + number(coding.bits, 2) + number(0, 4) + number(coding.extendedTag, 2) +
                  std::string("\0\0\0\0\x10\0\x80\0\0\xaa\0\x38\x9b\x71", 14);
    std::string data;
    for (std::size_t i = 0; i < frames * coding.channels; ++i)
        data += sample;
    return "RIFF" + number(20 + format.size() + data.size(), 4) + "WAVEfmt " + number(format.size(), 4) + format +
           "data" + number(data.size(), 4) + data;
}

WaveSound decoded(const std::string& file) {
    return decodeWave({file.begin(), file.end()}, rate);
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
        folder = std::filesystem::path(testing::TempDir()) / ("brackenmoor_sdl_sound_" + std::to_string(getpid()));
        std::filesystem::create_directories(folder);
        write("low.wav", waveBytes({}, rate * 30 / 1000, "\xe8\x03"));  // 1000
        write("high.wav", waveBytes({}, rate * 40 / 1000, "\xb8\x0b")); // 3000
        setenv("SDL_AUDIODRIVER", "disk", 1);
        setenv("SDL_DISKAUDIOFILE", (folder / "heard.raw").c_str(), 1);
        ASSERT_EQ(FSOUND_Init(rate, 32, 0), 1);
    }
    void TearDown() override {
        silence();
        std::filesystem::remove_all(folder);
    }

    void write(const char* name, const std::string& bytes) const {
        std::ofstream(folder / name, std::ios::binary) << bytes;
    }
    FSOUND_STREAM* open(const std::filesystem::path& name, bool loops = false) {
        FSOUND_STREAM* const stream = FSOUND_Stream_Open((folder / name).c_str(), 0x2000, 0, 0);
        if (stream != nullptr)
            opened.push_back(stream);
        FSOUND_Stream_SetMode(stream, loops ? 0x2000 | FSOUND_LOOP_NORMAL : 0x2000);
        return stream;
    }
    void silence() {
        for (FSOUND_STREAM* const stream : opened)
            EXPECT_EQ(FSOUND_Stream_Close(stream), 1);
        opened.clear();
        FSOUND_Close();
    }

    /// Ends the mixer: what was heard up to here, silence at both ends left out.
    std::vector<Stretch> heard() {
        silence();
        std::ifstream file(folder / "heard.raw", std::ios::binary);
        std::vector<Stretch> stretches;
        std::array<std::int16_t, 2> frame{};
        while (file.read(reinterpret_cast<char*>(frame.data()), sizeof frame)) {
            if (stretches.empty() ? frame[0] != 0 : stretches.back().value != frame[0])
                stretches.push_back({frame[0], 0});
            if (!stretches.empty())
                ++stretches.back().length;
        }
        if (!stretches.empty() && stretches.back().value == 0)
            stretches.pop_back();
        return stretches;
    }

    std::filesystem::path folder;
    std::vector<FSOUND_STREAM*> opened;
};

} // namespace

TEST_F(SdlSound, ALoopHasNoGapUntilItIsStoppedAndAnotherChannelPlaysOnceWhole) {
    FSOUND_STREAM* const low = open("low.wav", true);
    EXPECT_EQ(FSOUND_Stream_Play(0, low), 0);
    listen(200);
    FSOUND_Stream_Play(3, open("high.wav"));
    listen(200);
    FSOUND_Stream_Stop(low);
    listen(100);
    const auto stretches = heard();
    ASSERT_EQ(stretches.size(), 3u);
    for (const std::size_t i : {0u, 2u}) {
        EXPECT_EQ(stretches[i].value, 1000);
        EXPECT_GT(stretches[i].length, std::size_t{rate} * 50 / 1000) << "longer than its 30 ms";
    }
    EXPECT_EQ(stretches[1].value, 4000);
    EXPECT_EQ(stretches[1].length, static_cast<std::size_t>(rate * 40 / 1000));
}

TEST_F(SdlSound, AChannelPlaysWhatWasStartedLastAndAnEarlierSoundCannotStopIt) {
    FSOUND_STREAM* const low = open("low.wav", true);
    FSOUND_Stream_Play(1, low);
    listen(150);
    FSOUND_Stream_Play(1, open("high.wav", true));
    listen(150);
    FSOUND_Stream_Stop(low);
    listen(300);
    const auto stretches = heard();
    ASSERT_EQ(stretches.size(), 2u) << "the two are never mixed";
    EXPECT_EQ(stretches[0].value, 1000);
    EXPECT_EQ(stretches[1].value, 3000);
    EXPECT_GT(stretches[1].length, std::size_t{rate} / 5) << "on through the stop of the other";
}

TEST_F(SdlSound, WhatIsNoSoundDoesNotOpenAndSaysWhy) {
    for (const char* const missing : {"none.wav", ""}) { // the folder itself
        EXPECT_EQ(open(missing), nullptr);
        EXPECT_STREQ(FSOUND_Stream_GetOpenFault(), "") << "a sound that is left out is no fault";
    }
    write("text.wav", "no sound");
    EXPECT_EQ(open("text.wav"), nullptr);
    EXPECT_STREQ(FSOUND_Stream_GetOpenFault(), "not a WAV file");
    EXPECT_NE(open("low.wav"), nullptr);
    EXPECT_STREQ(FSOUND_Stream_GetOpenFault(), "");
    const std::set<std::string> usable = {"cut-short.wav", "second-format-after-the-first.wav"};
    for (const auto& file : std::filesystem::directory_iterator(BRACKENMOOR_TEST_DATA_DIR "/hostile/wav")) {
        FSOUND_STREAM* const stream = open(file.path());
        EXPECT_EQ(stream != nullptr, usable.contains(file.path().filename().string())) << file.path();
        FSOUND_Stream_Play(1, stream);
    }
    EXPECT_EQ(opened.size(), 1 + usable.size());
}

TEST_F(SdlSound, ALostDeviceIsRegainedAndWhatLoopsGoesOn) {
    FSOUND_Stream_Play(0, open("low.wav", true));
    FSOUND_Stream_Play(2, open("high.wav"));
    FSOUND_STREAM* const gone = open("high.wav", true);
    FSOUND_Stream_Play(3, gone);
    setenv("SDL_AUDIODRIVER", "no such driver", 1);
    loseSoundDevice();
    regainSoundDevice();
    FSOUND_STREAM* const late = open("low.wav");
    EXPECT_NE(late, nullptr);
    EXPECT_EQ(FSOUND_Stream_Play(1, open("high.wav", true)), 1);
    FSOUND_Stream_Stop(gone);
    setenv("SDL_AUDIODRIVER", "disk", 1); // which begins its file anew
    regainSoundDevice();
    listen(1050);
    regainSoundDevice();
    listen(300);
    EXPECT_EQ(FSOUND_Stream_Play(4, late), 4);
    listen(200);
    std::map<int, std::size_t> lengths;
    for (const Stretch& stretch : heard())
        lengths[stretch.value] += stretch.length;
    EXPECT_LE(lengths.rbegin()->first, 5000) << "what ended or was stopped was played again";
    EXPECT_GT(lengths[4000], std::size_t{rate} / 10);
    EXPECT_EQ(lengths[5000], static_cast<std::size_t>(rate * 30 / 1000));
}

TEST_F(SdlSound, WithoutADeviceEverythingSucceedsInSilence) {
    FSOUND_Close();
    setenv("SDL_AUDIODRIVER", "no such driver", 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(FSOUND_Init(rate, 32, 0), 1);
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    FSOUND_STREAM* const stream = open("low.wav");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(FSOUND_Stream_Play(1, stream), 1);
    EXPECT_EQ(FSOUND_Stream_Stop(stream), 1);
    EXPECT_EQ(open("none.wav"), nullptr);
}

TEST(WaveSound, OrdinaryCodingsAreDecoded) {
    // Each of the samples is a quarter of full scale.
    const std::string pcm24("\0\0\x20", 3);
    const std::string real("\0\0\x80\x3e", 4);
    const std::pair<Coding, std::string> cases[] = {
        {{1, 8, 1, 44100, 1}, "\xa0"},
        {{1, 24, 2, 44100, 1}, pcm24},
        {{1, 32, 1, 22050, 1}, '\0' + pcm24},
        {{3, 32, 2, 48000, 1}, real},
        {{0xfffe, 24, 2, 96000, 1}, pcm24},
        {{0xfffe, 32, 1, 8000, 3}, real},
        {{6, 8, 1, 8000, 1}, "\xb5"},
        {{7, 8, 2, 11025, 1}, "\x9f"},
        {{1, 16, 4, 44100, 1}, std::string("\0\x20", 2)},
    };
    for (const auto& [coding, sample] : cases) {
        SCOPED_TRACE(std::to_string(coding.tag) + ' ' + std::to_string(coding.bits));
        const WaveSound sound = decoded(waveBytes(coding, coding.rate / 10, sample));
        ASSERT_EQ(sound.fault, "");
        EXPECT_NEAR(static_cast<double>(sound.samples.size()), rate / 10 * 4, 16);
        std::int16_t middle = 0;
        std::memcpy(&middle, &sound.samples[sound.samples.size() / 8 * 4], 2);
        // What more than two channels are mixed down to is the library's affair.
        EXPECT_NEAR(middle, 8192, coding.channels <= 2 ? 300 : 4192);
    }
}

TEST(WaveSound, AFileCutShortAnywhereHasNoMoreThanItsWholeSamples) {
    std::string whole = waveBytes({}, 4, "ab");
    whole.insert(36, std::string("LIST\1\0\0\0x\0", 10)); // an odd chunk, and its filling byte
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        const WaveSound sound = decoded(whole.substr(0, length));
        ASSERT_EQ(sound.fault.empty(), length >= 58) << length << sound.fault;
        ASSERT_EQ(sound.samples.size(), length >= 58 ? (length - 54) / 4 * 4 : 0) << length;
    }
}

TEST(WaveSound, WhatCannotBePlayedAtThisLengthOrRateIsRefused) {
    const auto faultOf = [](unsigned itsRate, std::size_t frames) {
        return decoded(waveBytes({1, 8, 1, itsRate, 1}, frames, "\x80")).fault;
    };
    EXPECT_EQ(faultOf(1'000, 600'000), "");
    EXPECT_EQ(faultOf(1'000, 600'001), "longer than ten minutes");
    EXPECT_EQ(faultOf(999, 1'000), "999 sample frames a second");
    EXPECT_EQ(faultOf(768'001, 1'000), "768001 sample frames a second");
    EXPECT_EQ(faultOf(88'200, 1), "too short to be played");
    EXPECT_NE(faultOf(44'100, 0), "");
}
