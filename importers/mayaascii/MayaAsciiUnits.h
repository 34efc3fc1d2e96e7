#pragma once
// The units of a Maya ASCII file's values (its currentUnit command); the stand-in holds centimetres, radians and
// seconds.

#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MTime.h>

#include <string>

struct MaUnits {
    MDistance::Unit Linear = MDistance::kCentimeters;
    MAngle::Unit Angular = MAngle::kDegrees;
    MTime::Unit Time = MTime::kFilm;

    double Centimeters(double value) const { return MDistance(value, Linear).asCentimeters(); }
    double Radians(double value) const { return MAngle(value, Angular).asRadians(); }
    double Seconds(double value) const { return MTime(value, Time).as(MTime::kSeconds); }
};

// currentUnit's names ("cm", "centimeter", "deg", "ntsc", "23.976fps" ...); false, leaving unit alone, for a name
// Maya does not have.
bool LinearUnitNamed(const std::string& name, MDistance::Unit& unit);
bool AngularUnitNamed(const std::string& name, MAngle::Unit& unit);
bool TimeUnitNamed(const std::string& name, MTime::Unit& unit);
