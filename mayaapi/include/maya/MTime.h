#pragma once

#include <maya/MStatus.h>

class MTime {
public:
  enum Unit {
    kInvalid, kHours, kMinutes, kSeconds, kMilliseconds, kGames, kFilm, kPALFrame, kNTSCFrame, kShowScan, kPALField,
    kNTSCField, k2FPS, k3FPS, k4FPS, k5FPS, k6FPS, k8FPS, k10FPS, k12FPS, k16FPS, k20FPS, k40FPS, k75FPS, k80FPS,
    k100FPS, k120FPS, k125FPS, k150FPS, k200FPS, k240FPS, k250FPS, k300FPS, k375FPS, k400FPS, k500FPS, k600FPS,
    k750FPS, k1200FPS, k1500FPS, k2000FPS, k3000FPS, k6000FPS, kUserDef, kLast
  };

  MTime() : m_value(0.0), m_unit(uiUnit()) {}
  MTime(double value, Unit unit = uiUnit()) : m_value(value), m_unit(unit) {}

  double value() const { return m_value; }
  Unit unit() const { return m_unit; }
  MStatus setValue(double value) { m_value = value; return MS::kSuccess; }
  MStatus setUnit(Unit unit);
  double as(Unit unit) const;
  double asUnits(Unit unit) const { return as(unit); }

  bool operator==(const MTime& o) const { return as(kSeconds) == o.as(kSeconds); }
  bool operator!=(const MTime& o) const { return !(*this == o); }
  bool operator<(const MTime& o) const { return as(kSeconds) < o.as(kSeconds); }
  bool operator<=(const MTime& o) const { return as(kSeconds) <= o.as(kSeconds); }
  bool operator>(const MTime& o) const { return o < *this; }
  bool operator>=(const MTime& o) const { return o <= *this; }
  MTime operator+(const MTime& o) const { return MTime(m_value + o.as(m_unit), m_unit); }
  MTime operator-(const MTime& o) const { return MTime(m_value - o.as(m_unit), m_unit); }

  // Length of one unit in seconds; units without a fixed rate (user defined, invalid, last) count as seconds.
  static double secondsPerUnit(Unit unit);
  static Unit uiUnit();
  static MStatus setUIUnit(Unit unit);

private:
  double m_value;
  Unit m_unit;
};
