#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MTime.h>

#include "SceneGraph.h"

#include <numbers>

double MTime::secondsPerUnit(Unit unit)
{
  static const double kFramesPerSecond[] = {
      0, 0, 0, 0, 0, 15, 24, 25, 30, 48, 50, 60, 2, 3, 4, 5, 6, 8, 10, 12, 16, 20, 40, 75, 80, 100, 120, 125, 150,
      200, 240, 250, 300, 375, 400, 500, 600, 750, 1200, 1500, 2000, 3000, 6000};
  switch (unit) {
  case kHours: return 3600.0;
  case kMinutes: return 60.0;
  case kSeconds: return 1.0;
  case kMilliseconds: return 0.001;
  default: break;
  }
  if (unit >= kGames && unit <= k6000FPS)
    return 1.0 / kFramesPerSecond[unit];
  return 1.0;
}

MStatus MTime::setUnit(Unit unit)
{
  m_value = as(unit);
  m_unit = unit;
  return MS::kSuccess;
}

double MTime::as(Unit unit) const { return m_value * secondsPerUnit(m_unit) / secondsPerUnit(unit); }

MTime::Unit MTime::uiUnit() { return standin::CurrentScene().timeUnit; }

MStatus MTime::setUIUnit(Unit unit)
{
  if (unit <= kInvalid || unit >= kLast)
    return MS::kInvalidParameter;
  standin::CurrentScene().timeUnit = unit;
  return MS::kSuccess;
}

double MDistance::centimetersPerUnit(Unit unit)
{
  switch (unit) {
  case kInches: return 2.54;
  case kFeet: return 30.48;
  case kYards: return 91.44;
  case kMiles: return 160934.4;
  case kMillimeters: return 0.1;
  case kKilometers: return 100000.0;
  case kMeters: return 100.0;
  default: return 1.0;
  }
}

double MDistance::as(Unit unit) const { return m_value * centimetersPerUnit(m_unit) / centimetersPerUnit(unit); }

MDistance::Unit MDistance::uiUnit() { return standin::CurrentScene().distanceUnit; }

MStatus MDistance::setUIUnit(Unit unit)
{
  if (unit <= kInvalid || unit >= kLast)
    return MS::kInvalidParameter;
  standin::CurrentScene().distanceUnit = unit;
  return MS::kSuccess;
}

double MAngle::as(Unit unit) const
{
  auto radiansPer = [](Unit u) {
    switch (u) {
    case kDegrees: return std::numbers::pi / 180.0;
    case kAngMinutes: return std::numbers::pi / 10800.0;
    case kAngSeconds: return std::numbers::pi / 648000.0;
    default: return 1.0;
    }
  };
  return m_value * radiansPer(m_unit) / radiansPer(unit);
}

MAngle::Unit MAngle::uiUnit() { return standin::CurrentScene().angleUnit; }

MStatus MAngle::setUIUnit(Unit unit)
{
  if (unit <= kInvalid || unit >= kLast)
    return MS::kInvalidParameter;
  standin::CurrentScene().angleUnit = unit;
  return MS::kSuccess;
}
