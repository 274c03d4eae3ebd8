#include "song.h"

#include "instruments.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>

namespace {

/// 100 dotted crotchets a minute: an eighth is a fifth of a second, a whole number of samples.
constexpr int eighthSamples = sampleRate / 5;
constexpr int eighthsPerBar = 6;
constexpr int barsPerSection = 8;
constexpr int sectionEighths = eighthsPerBar * barsPerSection;
constexpr double eighthSeconds = 0.2;

// Melodies: name, octave and, after a colon, length in eighths; "-" rests; bars are marked for the reader only.
constexpr const char* verse = "A4:1 D5:1 E5:1 F5:2 E5:1 | E5:1 D5:1 C5:1 G5:2 E5:1 | F5:2 A5:1 G5:1 F5:1 D5:1 |"
                              "E5:3 C#5:2 A4:1 | A4:1 D5:1 E5:1 F5:2 G5:1 | A5:2 Bb5:1 A5:1 G5:1 F5:1 |"
                              "G5:2 F5:1 E5:1 D5:1 C#5:1 | D5:3 D5:2 -:1";
constexpr const char* chorus = "C6:3 A5:2 F5:1 | A5:1 G5:1 F5:1 C5:3 | G5:2 A5:1 G5:1 E5:1 C5:1 | D5:1 E5:1 F5:1 A5:3 |"
                               "D6:3 Bb5:2 A5:1 | C6:2 A5:1 F5:2 G5:1 | A5:1 G5:1 F5:1 E5:2 C#5:1 | D5:5 -:1";
constexpr const char* lull =
    "D5:3 Bb4:3 | A4:2 D5:1 F5:3 | E5:2 F5:1 E5:1 D5:1 C5:1 | C5:3 A4:2 C5:1 | D5:2 G5:1 Bb5:3 |"
    "A5:2 G5:1 F5:2 D5:1 | E5:2 F5:1 G5:2 E5:1 | A5:3 C#5:2 A4:1";
// Chords, two to a bar: root, then m for minor.
constexpr const char* verseChords = "Dm Dm C C F Dm A A Dm Dm Bb F Gm A Dm Dm";
constexpr const char* chorusChords = "F F F F C C Dm Dm Bb Bb F F Dm A Dm Dm";
constexpr const char* lullChords = "Gm Gm Dm Dm C C F F Gm Gm Dm Dm C A A A";

struct Note {
    int start;  ///< eighths since the section's beginning
    int length; ///< eighths
    int pitch;  ///< semitones, 69 is A4
};

struct Chord {
    int root; ///< semitones above C, 0 to 11
    bool minor;
    /// Semitones above C of the chord's third tone, fifth or root: 0, 1 or 2.
    int tone(int which) const { return (root + (which == 0 ? 0 : (which == 1 ? (minor ? 3 : 4) : 7))) % 12; }
    bool holds(int pitch) const { return pitch % 12 == tone(0) || pitch % 12 == tone(1) || pitch % 12 == tone(2); }
};

/// Semitones above C of a name such as "F", "C#" or "Bb"; at is left behind it.
int readName(const std::string& text, std::size_t& at) {
    constexpr int steps[] = {9, 11, 0, 2, 4, 5, 7};
    int step = steps[text[at++] - 'A'];
    if (at < text.size() && text[at] == '#') {
        ++step;
        ++at;
    } else if (at < text.size() && text[at] == 'b') {
        --step;
        ++at;
    }
    return step;
}

std::vector<Note> readMelody(const char* score) {
    std::vector<Note> notes;
    std::string text = score;
    std::replace(text.begin(), text.end(), '|', ' ');
    std::istringstream in(text);
    int now = 0;
    for (std::string token; in >> token;) {
        const int length = token[token.find(':') + 1] - '0';
        if (token[0] != '-') {
            std::size_t at = 0;
            const int step = readName(token, at);
            notes.push_back({now, length, step + 12 * (token[at] - '0' + 1)});
        }
        now += length;
    }
    return notes;
}

std::vector<Chord> readChords(const char* text) {
    std::vector<Chord> chords;
    std::istringstream in(text);
    for (std::string token; in >> token;) {
        std::size_t at = 0;
        const int root = readName(token, at);
        chords.push_back({(root + 12) % 12, at < token.size()});
    }
    return chords;
}

/// Who plays what in a section; 0 is silent.
struct Arrangement {
    const char* melody;
    const char* chords;
    double whistle;
    double concertina; ///< plays the melody
    double harmony;    ///< concertina below the melody
    double strings;    ///< plays the melody
    double pad;
    double strum;
    double bass;
    double drum;
    double stomp;
};

constexpr Arrangement song[] = {
    {verse, verseChords, 0.80, 0, 0, 0, 0.30, 0.75, 0.55, 0.40, 0},
    {verse, verseChords, 0.70, 0.62, 0, 0, 0.35, 0.80, 0.85, 0.80, 0},
    {chorus, chorusChords, 0, 0.92, 0.50, 0, 0.40, 0.80, 1.0, 0.95, 0.8},
    {verse, verseChords, 0.82, 0, 0.62, 0, 0.35, 0.80, 0.90, 0.80, 0},
    {lull, lullChords, 0, 0, 0, 1.0, 0.55, 0.55, 0.55, 0, 0},
    {chorus, chorusChords, 0.72, 0.85, 0.50, 0, 0.40, 0.80, 1.0, 1.0, 1.0},
    {verse, verseChords, 0.85, 0.70, 0.55, 0.45, 0.40, 0.85, 1.0, 1.0, 0.5},
};

/// The two channels, with every voice at its place between them.
class Stage {
public:
    explicit Stage(int eighths) : left(static_cast<std::size_t>(eighths * eighthSamples)), right(left.size()) {}

    /// Puts a note at an eighth (counted from the song's beginning); side is -1 (left) to 1. Nobody is quite in time.
    void put(const Samples& note, double eighth, double side, double gain) {
        const double late = random.range(-0.004, 0.006);
        const int at = static_cast<int>(std::floor(eighth * eighthSamples + late * sampleRate + 0.5));
        addAround(left, note, at, gain * std::sqrt(0.5 - 0.5 * side));
        addAround(right, note, at, gain * std::sqrt(0.5 + 0.5 * side));
    }
    /// How hard the next note is played, about level.
    double touch(double level) { return level * random.range(0.9, 1.06); }
    std::uint64_t seed() { return random.bits(); }

    Samples left;
    Samples right;

private:
    Random random{7001};
};

/// A chord tone at least a minor third below the melody.
int harmonyBelow(int pitch, const Chord& chord) {
    int below = pitch - 3;
    while (!chord.holds(below))
        --below;
    return below;
}

/// The chord's tones from low upwards, close together.
std::vector<int> voicing(const Chord& chord, int low, int count) {
    std::vector<int> notes;
    for (int pitch = low; static_cast<int>(notes.size()) < count; ++pitch) {
        if (chord.holds(pitch))
            notes.push_back(pitch);
    }
    return notes;
}

int lowest(int step, int low) {
    return low + ((step - low) % 12 + 12) % 12;
}

void playMelody(Stage& stage, const Arrangement& part, const std::vector<Chord>& chords, int start) {
    for (const Note& note : readMelody(part.melody)) {
        const int when = start + note.start;
        const bool strong = note.start % 3 == 0;
        const double accent = note.start % 6 == 0 ? 1 : (strong ? 0.93 : 0.85);
        const double seconds = eighthSeconds * (note.length - (note.length > 1 ? 0.12 : 0.2));
        if (part.whistle > 0) {
            const double level = stage.touch(part.whistle * accent);
            stage.put(whistleNote(note.pitch, seconds, level, strong && note.length > 1, stage.seed()), when, 0.22,
                      0.40);
        }
        if (part.concertina > 0) {
            const double level = stage.touch(part.concertina * accent);
            stage.put(concertinaNote(note.pitch, seconds, level, stage.seed()), when, -0.25, 0.62);
        }
        if (part.harmony > 0) {
            const int below = harmonyBelow(note.pitch, chords[static_cast<std::size_t>(note.start / 3)]);
            const double level = stage.touch(part.harmony * accent);
            stage.put(concertinaNote(below, seconds, level, stage.seed()), when, -0.4, 0.58);
        }
        if (part.strings > 0) {
            const double level = stage.touch(part.strings * accent);
            const double ring = eighthSeconds * note.length + 0.35;
            stage.put(pluckedNote(note.pitch, ring, level, 0.85, stage.seed()), when, 0.12, 0.85);
            if (note.length > 2) // held notes are struck again an octave lower, as on double strings
                stage.put(pluckedNote(note.pitch - 12, ring, level * 0.6, 0.7, stage.seed()), when + 1, 0.3, 0.8);
        }
    }
}

void playChords(Stage& stage, const Arrangement& part, const std::vector<Chord>& chords, int start) {
    const bool picked = part.drum == 0;
    for (std::size_t half = 0; half < chords.size(); ++half) {
        const Chord& chord = chords[half];
        const int when = start + 3 * static_cast<int>(half);
        const bool changes = half % 2 == 0 || chord.root != chords[half - 1].root;
        if (changes) {
            const int halves = half % 2 == 0 && chord.root == chords[half + 1].root ? 2 : 1;
            for (const int pitch : voicing(chord, 55, 3)) {
                const Samples note = concertinaNote(pitch, eighthSeconds * (3 * halves - 0.25), part.pad, stage.seed());
                stage.put(note, when, -0.5, 0.36);
            }
        }
        const std::vector<int> strings = voicing(chord, 57, 4);
        for (int eighth = 0; eighth < 3; ++eighth) {
            if (picked) {
                const std::size_t string =
                    half % 2 == 0 ? static_cast<std::size_t>(eighth) : static_cast<std::size_t>(3 - eighth);
                const double level = stage.touch(part.strum * (eighth == 0 ? 1 : 0.8));
                stage.put(pluckedNote(strings[string], 1.0, level, 0.6, stage.seed()), when + eighth, 0.55, 0.55);
            } else if (eighth != 1) {
                // Down on the beat, up before the next; the plectrum takes the strings one after the other.
                const bool down = eighth == 0;
                const double level = stage.touch(part.strum * (down ? 0.55 : 0.8));
                for (std::size_t s = 0; s < strings.size(); ++s) {
                    const int pitch = strings[down ? s : strings.size() - 1 - s];
                    const double later = 0.05 * static_cast<double>(s);
                    const double ring = down ? 0.42 : 0.24;
                    stage.put(pluckedNote(pitch, ring, level, 0.9, stage.seed()), when + eighth + later, 0.55, 0.36);
                }
            }
        }
        const int root = lowest(chord.tone(0), 38);
        const int pitch = half % 2 == 1 && !changes ? lowest(chord.tone(2), 36) : root;
        const double bass = stage.touch(part.bass);
        stage.put(pluckedNote(pitch, 0.56, bass, 0.25, stage.seed()), when, 0, 0.9);
        if (half % 4 == 3 && !picked) // a step towards the next bar
            stage.put(pluckedNote(root + 7, 0.25, bass * 0.7, 0.25, stage.seed()), when + 2, 0, 0.8);
    }
}

void playDrums(Stage& stage, const Arrangement& part, int start) {
    const auto strike = [&stage](bool low, double level, double when) {
        const double touched = stage.touch(level);
        stage.put(drumStroke(low, touched, stage.seed()), when, -0.1, low ? 0.62 : 0.5);
    };
    for (int eighth = 0; eighth < sectionEighths; ++eighth) {
        const int when = start + eighth;
        const int inBar = eighth % eighthsPerBar;
        const bool lastBar = eighth >= sectionEighths - eighthsPerBar;
        const double accent = inBar % 3 == 0 ? 0.5 : (inBar % 3 == 2 ? 0.8 : 0.35);
        const double shaken = stage.touch(accent * (0.3 + 0.6 * part.drum));
        stage.put(shakerStroke(shaken, stage.seed()), when, -0.6, 0.16);
        if (part.drum > 0) {
            if (inBar == 0)
                strike(true, part.drum, when);
            else if (inBar == 3 || inBar == 5 || (inBar == 2 && eighth % 12 == 8))
                strike(false, part.drum * (inBar == 3 ? 0.8 : 0.5), when);
            if (lastBar && inBar >= 3) // a roll into the next section
                strike(false, part.drum * (0.3 + 0.1 * inBar), when + 0.5);
        }
        if (part.stomp > 0 && inBar == 3) {
            const double level = stage.touch(part.stomp);
            stage.put(stompStroke(level, stage.seed()), when, 0.1, 0.55);
        }
    }
}

/// A small wooden room: combs of different lengths for either ear, their ends going around the loop.
Samples roomOf(const Samples& dry, const std::vector<int>& delays) {
    std::vector<Samples> lines;
    lines.reserve(delays.size());
    for (const int delay : delays)
        lines.emplace_back(static_cast<std::size_t>(delay));
    std::vector<double> dull(lines.size());
    return renderLoop(static_cast<int>(dry.size()), [&, n = std::size_t{0}](int i) mutable {
        double sum = 0;
        for (std::size_t k = 0; k < lines.size(); ++k) {
            double& cell = lines[k][n % lines[k].size()];
            sum += cell;
            dull[k] += 0.45 * (cell - dull[k]);
            cell = dry[static_cast<std::size_t>(i)] + 0.76 * dull[k];
        }
        ++n;
        return sum;
    });
}

/// Brings both channels to the same loudness; single peaks bend.
void master(std::vector<Samples>& channels) {
    constexpr double loudness = -19;
    double squares = 0;
    for (Samples& channel : channels) {
        cutOffset(channel);
        for (const double sample : channel)
            squares += sample * sample;
    }
    const auto count = static_cast<double>(channels.size() * channels.front().size());
    const double gain = decibels(loudness) / std::sqrt(squares / count);
    for (Samples& channel : channels) {
        for (double& sample : channel)
            sample = 0.8 * saturate(sample * gain / 0.8);
        cutOffset(channel);
    }
}

} // namespace

std::vector<Samples> seaSong() {
    const int sections = static_cast<int>(std::size(song));
    Stage stage(sections * sectionEighths);
    for (int section = 0; section < sections; ++section) {
        const Arrangement& part = song[section];
        const std::vector<Chord> chords = readChords(part.chords);
        const int start = section * sectionEighths;
        playMelody(stage, part, chords, start);
        playChords(stage, part, chords, start);
        playDrums(stage, part, start);
    }
    const Samples leftRoom = roomOf(stage.left, {1327, 1571, 1823, 2011});
    const Samples rightRoom = roomOf(stage.right, {1379, 1511, 1889, 2081});
    for (std::size_t i = 0; i < stage.left.size(); ++i) {
        stage.left[i] += 0.05 * (leftRoom[i] + 0.4 * rightRoom[i]);
        stage.right[i] += 0.05 * (rightRoom[i] + 0.4 * leftRoom[i]);
    }
    std::vector<Samples> channels = {stage.left, stage.right};
    master(channels);
    return channels;
}
