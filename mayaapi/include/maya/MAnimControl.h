#pragma once

#include <maya/MStatus.h>
#include <maya/MTime.h>

// The playback range and the current time, in the UI time unit.
class MAnimControl {
public:
  static MTime minTime();
  static MTime maxTime();
  static MStatus setMinTime(const MTime& time);
  static MStatus setMaxTime(const MTime& time);
  static MStatus setMinMaxTime(const MTime& minTime, const MTime& maxTime);
  static MTime animationStartTime() { return minTime(); }
  static MTime animationEndTime() { return maxTime(); }
  static MTime currentTime();
  static MStatus setCurrentTime(const MTime& time);
};
