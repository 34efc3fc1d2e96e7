#include "model/VMAnimation.h"

#include <algorithm>
#include <new>
#include <utility>

namespace {

// Room is made up front only for a plausible number of keys; more keys still fit, the arrays
// then grow as they are added.
constexpr int MaxReservedFrames = 8192;

} // namespace

VMAnimation::VMAnimation(std::string name, int frameCapacity)
    : Name(std::move(name))
    , m_frameCapacity(std::clamp(frameCapacity, 0, MaxReservedFrames))
{
    Keys.reserve(static_cast<size_t>(m_frameCapacity));
}

int VMAnimation::AddFrame(std::unique_ptr<VMAnimFrame> frame, float time, int32_t durationMs)
{
    if (!frame)
        return -1;
    try {
        Keys.push_back({time, durationMs});
    } catch (const std::bad_alloc&) {
        return -301;
    }
    if (Frames.Add(std::move(frame)) != 0) {
        Keys.pop_back();
        return -301;
    }
    m_frameCapacity = std::max(m_frameCapacity, FrameCount());
    return 0;
}

int VMAnimation::AddVertexFrame(std::unique_ptr<VMVertexTrack> track, float time, int32_t durationMs)
{
    if (!track)
        return -1;
    try {
        Keys.push_back({time, durationMs});
    } catch (const std::bad_alloc&) {
        return -301;
    }
    if (VertexTracks.Add(std::move(track)) != 0) {
        Keys.pop_back();
        return -301;
    }
    m_frameCapacity = std::max(m_frameCapacity, FrameCount());
    return 0;
}
