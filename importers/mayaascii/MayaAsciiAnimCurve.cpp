#include "importers/mayaascii/MayaAsciiAnimCurve.h"

#include <standin/SceneBuilder.h>

#include <algorithm>
#include <optional>

namespace {

enum Channel { TimeValue, InType, OutType, InX, InY, OutX, OutY, DefaultType, Ignored, NotKeyData };

Channel ChannelOf(const std::string& name)
{
    struct Entry {
        const char* Long;
        const char* Short;
        Channel Which;
    };
    static const Entry kEntries[] = {
        {"keyTimeValue", "ktv", TimeValue}, {"keyTanInType", "kit", InType},   {"keyTanOutType", "kot", OutType},
        {"keyTanInX", "kix", InX},          {"keyTanInY", "kiy", InY},         {"keyTanOutX", "kox", OutX},
        {"keyTanOutY", "koy", OutY},        {"tangentType", "tan", DefaultType}, {"keyTanLocked", "kl", Ignored},
        {"keyWeightLocked", "kwl", Ignored}, {"keyBreakdown", "kbd", Ignored}, {"keyTickDrawSpecial", "ktd", Ignored},
    };
    for (const Entry& entry : kEntries)
        if (name == entry.Long || name == entry.Short)
            return entry.Which;
    return NotKeyData;
}

// The tangent type codes Maya files write (the animCurve node's tangentType numbering, not MFnAnimCurve's); a
// curve that names no type has the node's default, 4, which Maya draws clamped.
std::optional<standin::TangentType> TangentOf(int code)
{
    using T = standin::TangentType;
    switch (code) {
    case 0:
    case 4: return T::Clamped;
    case 1: return T::Fixed;
    case 2: return T::Linear;
    case 3: return T::Flat;
    case 5: return T::Step;
    case 6: return T::Slow;
    case 7: return T::Fast;
    case 9: return T::Spline;
    case 10: return T::Clamped;
    case 16: return T::Plateau;
    case 17: return T::StepNext;
    case 18: return T::Auto;
    default: return std::nullopt;
    }
}

template <typename T>
bool Store(std::vector<T>& array, const MaPlugSegment& segment, const std::vector<double>& values, size_t width,
           std::string& why)
{
    const size_t first = segment.First.value_or(0);
    const size_t count = segment.First ? segment.Last - first + 1 : values.size() / width;
    if (values.size() != count * width) {
        why = "it gives " + std::to_string(values.size()) + " values for " + std::to_string(count) + " keys";
        return false;
    }
    // Keys are written in order; a key far beyond those there is a damaged file.
    if (first * width > array.size() + 65536 * width) {
        why = "it names key " + std::to_string(first) + " far beyond the keys before it";
        return false;
    }
    if (array.size() < (first + count) * width)
        array.resize((first + count) * width);
    for (size_t i = 0; i < values.size(); ++i)
        array[first * width + i] = static_cast<T>(std::clamp(values[i], -1e300, 1e300));
    return true;
}

} // namespace

bool MaCurveData::Holds(const MaPlugPath& path) { return ChannelOf(path.Segments.front().Name) != NotKeyData; }

bool MaCurveData::Take(const MaPlugPath& path, const MaSetAttr& set, const MaUnits& units, std::string& why)
{
    m_units = units;
    const MaPlugSegment& segment = path.Segments.front();
    const std::vector<double>& values = set.Numbers;
    std::vector<double> codes;
    switch (ChannelOf(segment.Name)) {
    case TimeValue: return Store(m_timeValues, segment, values, 2, why);
    case InType:
    case OutType:
        for (double value : values)
            codes.push_back(value >= 0.0 && value < 1000.0 ? value : 0.0);
        return Store(ChannelOf(segment.Name) == InType ? m_inTypes : m_outTypes, segment, codes, 1, why);
    case InX: return Store(m_handles[0], segment, values, 1, why);
    case InY: return Store(m_handles[1], segment, values, 1, why);
    case OutX: return Store(m_handles[2], segment, values, 1, why);
    case OutY: return Store(m_handles[3], segment, values, 1, why);
    case DefaultType:
        if (values.size() == 1 && values.front() >= 0.0 && values.front() < 1000.0)
            m_defaultType = static_cast<int>(values.front());
        return true;
    case Ignored:
    case NotKeyData: return true;
    }
    return true;
}

void MaCurveData::Build(const MObject& curve, const std::string& name, int line, ImportResult& result) const
{
    // Times of curves keyed on time are in the file's time unit; those of driven keys are the driver's values.
    const bool timed = curve.hasFn(MFn::kAnimCurveTimeToDistance) || curve.hasFn(MFn::kAnimCurveTimeToAngular) ||
                       curve.hasFn(MFn::kAnimCurveTimeToUnitless) || curve.hasFn(MFn::kAnimCurveTimeToTime);
    const bool linear = curve.hasFn(MFn::kAnimCurveTimeToDistance) || curve.hasFn(MFn::kAnimCurveUnitlessToDistance);
    const bool angular = curve.hasFn(MFn::kAnimCurveTimeToAngular) || curve.hasFn(MFn::kAnimCurveUnitlessToAngular);
    const bool times = curve.hasFn(MFn::kAnimCurveTimeToTime) || curve.hasFn(MFn::kAnimCurveUnitlessToTime);
    std::vector<standin::KeySpec> keys;
    std::optional<int> unknown;
    const size_t count = m_timeValues.size() / 2;
    for (size_t k = 0; k < count; ++k) {
        standin::KeySpec key;
        const double input = m_timeValues[k * 2];
        const double value = m_timeValues[k * 2 + 1];
        key.time = timed ? MTime(input, m_units.Time) : MTime(input, MTime::kSeconds);
        key.value = linear ? m_units.Centimeters(value) : angular ? m_units.Radians(value)
                                                        : times ? m_units.Seconds(value) : value;
        const int codes[] = {k < m_inTypes.size() && m_inTypes[k] != 0 ? m_inTypes[k] : m_defaultType,
                             k < m_outTypes.size() && m_outTypes[k] != 0 ? m_outTypes[k] : m_defaultType};
        standin::TangentType* types[] = {&key.in, &key.out};
        for (size_t side = 0; side < 2; ++side) {
            const auto type = TangentOf(codes[side]);
            if (!type)
                unknown = codes[side];
            *types[side] = type.value_or(standin::TangentType::Clamped);
        }
        double* handles[] = {&key.inX, &key.inY, &key.outX, &key.outY};
        for (size_t h = 0; h < 4; ++h)
            *handles[h] = k < m_handles[h].size() ? m_handles[h][k] : 0.0;
        keys.push_back(key);
    }
    if (unknown)
        result.Warn("the curve '" + name + "' has keys of unknown tangent type " + std::to_string(*unknown) +
                        ", evaluated as clamped",
                    line);
    if (!standin::SetKeys(curve, keys))
        result.Warn("the keys of the curve '" + name + "' could not be set", line);
}
