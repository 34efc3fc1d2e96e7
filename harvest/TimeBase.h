#pragma once
// Maya's time line in the exporter's terms: the playback range in whole frames of the UI time
// unit, and the length of one such frame in ticks of 1/24000 second, the unit in which frame
// times are chosen.

#include <maya/MTime.h>

#include <cstdint>

inline constexpr int64_t TicksPerSecond = 24000;

struct VTimeBase {
    int32_t StartFrame = 0;
    int32_t EndFrame = 0;
    // EndFrame - StartFrame + 1.
    int32_t Duration = 1;
    int64_t TicksPerFrame = TicksPerSecond;
    int64_t StartTick = 0;
    int64_t EndTick = 0;
};

// The frame length of the units the exporter knows (hours to NTSC fields); any other unit counts
// one frame a second, as the engine's tools always have.
int64_t TicksPerFrameOf(MTime::Unit unit);

// The playback range (MAnimControl) in the UI unit, truncated to whole frames; logs the line
// "Time: %d to %d, dur %d, tpf %d, frm %d" to the debug file.
VTimeBase ReadTimeBase();
