#include "importers/mayaascii/MayaAsciiUnits.h"

#include <algorithm>
#include <iterator>

namespace {

template <typename Unit>
struct Named {
    const char* Name;
    Unit Value;
};

template <typename Unit, size_t N>
bool Find(const Named<Unit> (&table)[N], const std::string& name, Unit& unit)
{
    const auto found = std::find_if(std::begin(table), std::end(table), [&](const Named<Unit>& entry) { return name == entry.Name; });
    if (found == std::end(table))
        return false;
    unit = found->Value;
    return true;
}

} // namespace

bool LinearUnitNamed(const std::string& name, MDistance::Unit& unit)
{
    static const Named<MDistance::Unit> kUnits[] = {
        {"mm", MDistance::kMillimeters}, {"millimeter", MDistance::kMillimeters}, {"cm", MDistance::kCentimeters},
        {"centimeter", MDistance::kCentimeters}, {"m", MDistance::kMeters}, {"meter", MDistance::kMeters},
        {"km", MDistance::kKilometers}, {"kilometer", MDistance::kKilometers}, {"in", MDistance::kInches},
        {"inch", MDistance::kInches}, {"ft", MDistance::kFeet}, {"foot", MDistance::kFeet},
        {"yd", MDistance::kYards}, {"yard", MDistance::kYards}, {"mi", MDistance::kMiles}, {"mile", MDistance::kMiles},
    };
    return Find(kUnits, name, unit);
}

bool AngularUnitNamed(const std::string& name, MAngle::Unit& unit)
{
    static const Named<MAngle::Unit> kUnits[] = {
        {"deg", MAngle::kDegrees}, {"degree", MAngle::kDegrees}, {"rad", MAngle::kRadians},
        {"radian", MAngle::kRadians}, {"min", MAngle::kAngMinutes}, {"angMinute", MAngle::kAngMinutes},
        {"sec", MAngle::kAngSeconds}, {"angSecond", MAngle::kAngSeconds},
    };
    return Find(kUnits, name, unit);
}

bool TimeUnitNamed(const std::string& name, MTime::Unit& unit)
{
    static const Named<MTime::Unit> kUnits[] = {
        {"hour", MTime::kHours}, {"min", MTime::kMinutes}, {"sec", MTime::kSeconds},
        {"millisec", MTime::kMilliseconds}, {"game", MTime::kGames}, {"film", MTime::kFilm},
        {"pal", MTime::kPALFrame}, {"ntsc", MTime::kNTSCFrame}, {"show", MTime::kShowScan},
        {"palf", MTime::kPALField}, {"ntscf", MTime::kNTSCField}, {"2fps", MTime::k2FPS}, {"3fps", MTime::k3FPS},
        {"4fps", MTime::k4FPS}, {"5fps", MTime::k5FPS}, {"6fps", MTime::k6FPS}, {"8fps", MTime::k8FPS},
        {"10fps", MTime::k10FPS}, {"12fps", MTime::k12FPS}, {"16fps", MTime::k16FPS}, {"20fps", MTime::k20FPS},
        {"40fps", MTime::k40FPS}, {"75fps", MTime::k75FPS}, {"80fps", MTime::k80FPS}, {"100fps", MTime::k100FPS},
        {"120fps", MTime::k120FPS}, {"125fps", MTime::k125FPS}, {"150fps", MTime::k150FPS},
        {"200fps", MTime::k200FPS}, {"240fps", MTime::k240FPS}, {"250fps", MTime::k250FPS},
        {"300fps", MTime::k300FPS}, {"375fps", MTime::k375FPS}, {"400fps", MTime::k400FPS},
        {"500fps", MTime::k500FPS}, {"600fps", MTime::k600FPS}, {"750fps", MTime::k750FPS},
        {"1200fps", MTime::k1200FPS}, {"1500fps", MTime::k1500FPS}, {"2000fps", MTime::k2000FPS},
        {"3000fps", MTime::k3000FPS}, {"6000fps", MTime::k6000FPS},
    };
    return Find(kUnits, name, unit);
}
