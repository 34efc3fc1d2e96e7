#pragma once
// The animation entries the command line adds to a model export: those spelled out with "--anim"
// and those "--clips" makes of the clips the importer laid on the time line.

#include "importers/ImportResult.h"
#include "settings/VAnimationDescription.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// "NAME:START-END[:loop][:type=bone|muscle|morph][:motion=xyz][:rot=x|y|z]": a bone animation (or
// the type named) of the frames START to END of the scene's time unit, sampled once a frame;
// "motion" names the axes whose root travel becomes root motion, "rot" the axis whose turn does.
// Nothing, with the reason in error, for a text that does not read so.
std::optional<VAnimationDescription> ParseAnimationEntry(std::string_view text, std::string& error);

// One entry of the given type per clip, over the whole frames that hold it, sampled once a frame.
// A clip that begins before frame 0 cannot be sampled: it is left out and named in skipped.
std::vector<VAnimationDescription> ClipEntries(const std::vector<ImportedClip>& clips, int32_t type,
                                               std::vector<std::string>& skipped);
