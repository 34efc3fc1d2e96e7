#pragma once
// Puts the scene where the model is harvested from: frame 0 and, with the option
// GotoBindPose, the skeleton of the first joint found back in its bind pose.

#include <maya/MTime.h>

struct HarvestState;

// Answers the time Maya showed before, which the translator's writer restores after the export.
MTime EnterBindPose(const HarvestState& state);
