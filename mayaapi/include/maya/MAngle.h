#pragma once

#include <maya/MStatus.h>

class MAngle {
public:
  enum Unit { kInvalid, kRadians, kDegrees, kAngMinutes, kAngSeconds, kLast };

  MAngle() = default;
  MAngle(double value, Unit unit = kRadians) : m_value(value), m_unit(unit) {}

  double value() const { return m_value; }
  Unit unit() const { return m_unit; }
  double as(Unit unit) const;
  double asRadians() const { return as(kRadians); }
  double asDegrees() const { return as(kDegrees); }

  static Unit uiUnit();
  static MStatus setUIUnit(Unit unit);
  static Unit internalUnit() { return kRadians; }

private:
  double m_value = 0.0;
  Unit m_unit = kRadians;
};
