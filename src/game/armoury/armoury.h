#pragma once

#include "core/scene/weapon_entry.h"

/// The weapons of a fresh team with their ammunition. Another weapon is a class beside the five, a line here and a
/// picture in the HUD's sheet; its key is the next digit.
WeaponList issueWeapons(Team* owner);
