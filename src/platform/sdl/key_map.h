#pragma once

// Keys by position: which virtual-key code a key of the keyboard stands for. SDL's scancodes are the usage numbers of
// the USB keyboard page; so W, A, S and D stay where they are on every layout.

/// Virtual-key code of the key with this usage number, or 0 for a key that has none here.
int virtualKeyOf(int usage);

/// The same, but the arrow keys stand for W, A, S and D, and the keypad's 1 to 5 for the others.
int gameKeyOf(int usage);

/// Whether the key's messages are the WM_SYSKEY ones: F10 by itself, and any key while Alt is held.
bool isSystemKey(int virtualKey, bool altHeld);
