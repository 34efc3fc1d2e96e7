#include "harvest/TimeBase.h"

#include "report/DebugFile.h"

#include <maya/MAnimControl.h>

int64_t TicksPerFrameOf(MTime::Unit unit)
{
    switch (unit) {
    case MTime::kHours: return 86400000;
    case MTime::kMinutes: return 1440000;
    case MTime::kSeconds: return 24000;
    case MTime::kMilliseconds: return 24;
    case MTime::kGames: return 1600;
    case MTime::kFilm: return 1000;
    case MTime::kPALFrame: return 960;
    case MTime::kNTSCFrame: return 800;
    case MTime::kShowScan: return 500;
    case MTime::kPALField: return 480;
    case MTime::kNTSCField: return 400;
    default: return TicksPerSecond;
    }
}

VTimeBase ReadTimeBase()
{
    const MTime::Unit unit = MTime::uiUnit();
    VTimeBase base;
    base.StartFrame = static_cast<int32_t>(MAnimControl::minTime().as(unit));
    base.EndFrame = static_cast<int32_t>(MAnimControl::maxTime().as(unit));
    base.Duration = base.EndFrame - base.StartFrame + 1;
    base.TicksPerFrame = TicksPerFrameOf(unit);
    base.StartTick = base.StartFrame * base.TicksPerFrame;
    base.EndTick = base.EndFrame * base.TicksPerFrame;
    DebugPrint("Time: %d to %d, dur %d, tpf %d, frm %d\r\n", base.StartFrame, base.EndFrame, base.Duration,
               static_cast<int>(base.TicksPerFrame), static_cast<int>(base.Duration / base.TicksPerFrame));
    return base;
}
