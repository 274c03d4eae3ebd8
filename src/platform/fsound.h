#pragma once

// The calls of the sound library that the game plays music and effects through, and one that says why a file is
// refused.
//
// A stream is one opened sound file. Channels are numbered from 0; a stream started on a channel replaces what plays
// there; one stream plays on one channel at a time and starting it again starts it from its beginning. A looping stream
// repeats without a gap. Without a sound device every call succeeds in silence.

struct FSOUND_STREAM;

/// Bit of a stream's mode: repeat for ever.
inline constexpr unsigned int FSOUND_LOOP_NORMAL = 0x2;

/// Starts the mixer: output rate in Hz, number of channels, flags (0). 1 on success.
signed char FSOUND_Init(int mixRate, int maxSoftwareChannels, unsigned int flags);
/// Stops the mixer.
void FSOUND_Close();
/// Opens a WAV file; null when it is missing, unreadable or no sound (sdl/wave_sound.h). The caller closes the stream.
FSOUND_STREAM* FSOUND_Stream_Open(const char* fileName, unsigned int mode, int offset, int length);
/// Why the file that was opened last is no sound; "" when it is one, or not there.
const char* FSOUND_Stream_GetOpenFault();
signed char FSOUND_Stream_Close(FSOUND_STREAM* stream);
/// Plays the stream from its beginning on a channel; the channel's number, or -1.
int FSOUND_Stream_Play(int channel, FSOUND_STREAM* stream);
signed char FSOUND_Stream_Stop(FSOUND_STREAM* stream);
/// Sets the mode bits of the stream, looping among them. 1 on success.
signed char FSOUND_Stream_SetMode(FSOUND_STREAM* stream, unsigned int mode);
