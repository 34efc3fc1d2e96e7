#include "harvest/FrameTimes.h"

#include <algorithm>
#include <limits>

namespace {

constexpr int64_t MostTicks = std::numeric_limits<int32_t>::max();

// The entry's tables hold 8192 times; the last slot is where every time beyond the first 8191
// lands and is dropped.
class TimeTable {
public:
    explicit TimeTable(VAnimationDescription& entry) : m_entry(entry)
    {
        m_entry.KeyFrameTimes.assign(kMaxAnimationKeyFrames, 0);
        m_entry.KeyFrameDurations.assign(kMaxAnimationKeyFrames, 0);
        m_entry.KeyFrameCount = 0;
    }

    void Take(int64_t tick)
    {
        m_entry.KeyFrameTimes[static_cast<size_t>(m_entry.KeyFrameCount++)] = static_cast<int32_t>(tick);
        if (m_entry.KeyFrameCount == kMaxAnimationKeyFrames) {
            m_entry.KeyFrameCount = kMaxAnimationKeyFrames - 1;
            m_capped = true;
        }
    }

    void Cap() { m_capped = true; }
    int32_t Count() const { return m_entry.KeyFrameCount; }
    int32_t Last() const { return m_entry.KeyFrameTimes[static_cast<size_t>(m_entry.KeyFrameCount - 1)]; }
    bool Capped() const { return m_capped; }

    void FinishDurations(bool looped, int64_t end)
    {
        std::vector<int32_t>& times = m_entry.KeyFrameTimes;
        std::vector<int32_t>& durations = m_entry.KeyFrameDurations;
        const int32_t count = m_entry.KeyFrameCount;
        for (int32_t i = 0; i + 1 < count; ++i)
            durations[static_cast<size_t>(i)] = times[static_cast<size_t>(i) + 1] - times[static_cast<size_t>(i)];
        if (count > 0)
            durations[static_cast<size_t>(count) - 1] =
                looped ? static_cast<int32_t>(end - times[static_cast<size_t>(count) - 1]) : 1;
    }

private:
    VAnimationDescription& m_entry;
    bool m_capped = false;
};

} // namespace

FrameTimesResult ComputeFrameTimes(VAnimationDescription& entry, const VTimeBase& base, const KeyTimeSet& keys)
{
    TimeTable table(entry);
    int64_t start = base.StartTick;
    int64_t end = base.EndTick;
    if (entry.UseRange) {
        start = static_cast<int64_t>(entry.RangeStart) * base.TicksPerFrame;
        end = static_cast<int64_t>(entry.RangeEnd) * base.TicksPerFrame;
        if (start < 0 || start > end)
            return FrameTimesResult::InvalidRange;
    }
    if (start < -MostTicks || end > MostTicks || start > end)
        return FrameTimesResult::InvalidRange;

    const bool looped = entry.Looped != 0;
    if (entry.Type == kAnimTypeMorphTarget) {
        table.Take(start);
        entry.KeyFrameDurations[0] = 0;
        return FrameTimesResult::Sampled;
    }

    if (entry.UseMaxFrames) {
        for (auto key = keys.lower_bound(static_cast<int32_t>(start)); key != keys.end() && *key <= end; ++key) {
            if (table.Count() == 0 && *key != start)
                table.Take(start);
            table.Take(*key);
        }
        // A range without keys still shows its ends.
        if (table.Count() == 0)
            table.Take(start);
        if (!looped && end > table.Last())
            table.Take(end);
    } else {
        const int64_t wanted = entry.Frames > 0 ? entry.Frames : end / base.TicksPerFrame - start / base.TicksPerFrame + 1;
        const int64_t count = std::min<int64_t>(wanted, kMaxAnimationKeyFrames - 1);
        if (count < wanted)
            table.Cap();
        const int64_t steps = count + (looped ? 1 : 0) - 1;
        for (int64_t i = 0; i < count; ++i)
            table.Take(steps > 0 ? i * (end - start) / steps + start : start);
    }
    table.FinishDurations(looped, end);
    return table.Capped() ? FrameTimesResult::Capped : FrameTimesResult::Sampled;
}
