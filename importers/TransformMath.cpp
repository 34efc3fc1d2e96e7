#include "importers/TransformMath.h"

#include <maya/MEulerRotation.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double kTurn = 2.0 * std::numbers::pi;

double NearestAngle(double angle, double previous)
{
    return angle + kTurn * std::round((previous - angle) / kTurn);
}

MVector Unwrapped(const MVector& euler, const MVector& previous)
{
    return {NearestAngle(euler.x, previous.x), NearestAngle(euler.y, previous.y), NearestAngle(euler.z, previous.z)};
}

double Distance(const MVector& a, const MVector& b)
{
    return std::abs(a.x - b.x) + std::abs(a.y - b.y) + std::abs(a.z - b.z);
}

} // namespace

MMatrix ComposeTransform(const RecordTransform& transform)
{
    MMatrix scale;
    scale[0][0] = transform.Scale.x;
    scale[1][1] = transform.Scale.y;
    scale[2][2] = transform.Scale.z;
    MMatrix translate;
    translate[3][0] = transform.Translate.x;
    translate[3][1] = transform.Translate.y;
    translate[3][2] = transform.Translate.z;
    const MEulerRotation rotation(transform.Rotate, MEulerRotation::kXYZ);
    return scale * rotation.asMatrix() * translate;
}

RecordTransform DecomposeTransform(const MMatrix& matrix)
{
    RecordTransform result;
    result.Translate = MVector(matrix[3][0], matrix[3][1], matrix[3][2]);
    double rows[3][3];
    double scale[3];
    for (int i = 0; i < 3; ++i) {
        scale[i] = std::sqrt(matrix[i][0] * matrix[i][0] + matrix[i][1] * matrix[i][1] + matrix[i][2] * matrix[i][2]);
        for (int j = 0; j < 3; ++j)
            rows[i][j] = scale[i] > 0.0 ? matrix[i][j] / scale[i] : (i == j ? 1.0 : 0.0);
    }
    // A mirroring matrix keeps a proper rotation by taking the reflection into the x scale.
    if (matrix.det3x3() < 0.0) {
        scale[0] = -scale[0];
        for (int j = 0; j < 3; ++j)
            rows[0][j] = -rows[0][j];
    }
    result.Scale = MVector(scale[0], scale[1], scale[2]);
    const double sinY = std::clamp(-rows[0][2], -1.0, 1.0);
    const double y = std::asin(sinY);
    double x = 0.0;
    double z = 0.0;
    if (std::abs(sinY) < 0.9999999) {
        x = std::atan2(rows[1][2], rows[2][2]);
        z = std::atan2(rows[0][1], rows[0][0]);
    } else {
        x = std::atan2(-rows[2][1], rows[1][1]);
    }
    result.Rotate = MVector(x, y, z);
    return result;
}

MVector NearestEuler(const MVector& euler, const MVector& previous)
{
    const MVector first = Unwrapped(euler, previous);
    const MVector second =
        Unwrapped(MVector(euler.x + std::numbers::pi, std::numbers::pi - euler.y, euler.z + std::numbers::pi), previous);
    return Distance(first, previous) <= Distance(second, previous) ? first : second;
}
