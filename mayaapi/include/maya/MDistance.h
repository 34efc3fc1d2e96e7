#pragma once

#include <maya/MStatus.h>

class MDistance {
public:
  enum Unit { kInvalid, kInches, kFeet, kYards, kMiles, kMillimeters, kCentimeters, kKilometers, kMeters, kLast };

  MDistance() = default;
  MDistance(double value, Unit unit = kCentimeters) : m_value(value), m_unit(unit) {}

  double value() const { return m_value; }
  Unit unit() const { return m_unit; }
  MStatus setValue(double value) { m_value = value; return MS::kSuccess; }
  MStatus setUnit(Unit unit) { m_unit = unit; return MS::kSuccess; }
  double as(Unit unit) const;
  double asCentimeters() const { return as(kCentimeters); }
  double asMeters() const { return as(kMeters); }
  double asMillimeters() const { return as(kMillimeters); }
  double asInches() const { return as(kInches); }
  double asFeet() const { return as(kFeet); }

  static Unit uiUnit();
  static MStatus setUIUnit(Unit unit);
  static Unit internalUnit() { return kCentimeters; }
  static double centimetersPerUnit(Unit unit);

private:
  double m_value = 0.0;
  Unit m_unit = kCentimeters;
};
