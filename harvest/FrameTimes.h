#pragma once
// Which moments of the time line one animation entry samples: its frame times and durations in
// ticks, kept in the entry's key-frame tables.

#include "harvest/TimeBase.h"
#include "settings/VAnimationDescription.h"

#include <cstdint>
#include <set>

// Maya key times in ticks (key time in the UI unit times the ticks per frame, truncated),
// ascending without repeats.
using KeyTimeSet = std::set<int32_t>;

enum class FrameTimesResult {
    Sampled,
    // The entry's own range starts before 0, after its end, or beyond what 32-bit ticks hold.
    InvalidRange,
    // Only the first 8191 times could be kept.
    Capped,
};

// The range is the entry's own (frames times ticks per frame) or the time base's. A morph
// target samples its start once, with duration 0. With key frames: every key time in the range,
// the start before them when it is no key, and, unless looped, the end after them when it lies
// later; a range without keys gives its start and, unless looped, its end. Otherwise N frames
// (the entry's count, or one per frame of the range; at most 8191) at start + i (end - start) /
// (N - 1) truncated, the last on the end; looped, the divisor is N and the last sample leaves
// one step before the end; a single frame samples the start. Durations are the gaps to the next
// time; the last one is 1, or for a looped entry what is left to the end.
FrameTimesResult ComputeFrameTimes(VAnimationDescription& entry, const VTimeBase& base, const KeyTimeSet& keys);
