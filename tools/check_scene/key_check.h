#pragma once

#include "check_scene/findings.h"
#include "check_scene/keys.h"

/// Judges the words with an asterisk of one text: what is no key, what is read differently than it looks,
/// what is out of range, what stands twice.
/// @param uses of the settings or of one block
/// @param playerCount how many players there are
void CheckKeys(Findings& findings, const TextFile& file, const std::vector<KeyUse>& uses, KeyPlace place,
               int playerCount);
