#include "model/VMTransform.h"

#include <cmath>

bool VMTransform::IsIdentity() const
{
    const VMTransform identity;
    for (int i = 0; i < 12; ++i)
        if (M[i] != identity.M[i])
            return false;
    return true;
}

void VMTransform::TransformDirection(const float in[3], float out[3]) const
{
    float result[3];
    for (int row = 0; row < 3; ++row)
        result[row] = At(row, 0) * in[0] + At(row, 1) * in[1] + At(row, 2) * in[2];
    for (int row = 0; row < 3; ++row)
        out[row] = result[row];
}

void VMTransform::TransformPoint(const float in[3], float out[3]) const
{
    TransformDirection(in, out);
    for (int row = 0; row < 3; ++row)
        out[row] += M[9 + row];
}

VMTransform operator*(const VMTransform& a, const VMTransform& b)
{
    VMTransform result;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            result.At(row, column) = a.At(row, 0) * b.At(0, column) + a.At(row, 1) * b.At(1, column)
                                   + a.At(row, 2) * b.At(2, column);
        }
    }
    a.TransformPoint(b.Translation(), result.Translation());
    return result;
}

bool Invert(const VMTransform& transform, VMTransform& out)
{
    const auto m = [&](int row, int column) { return static_cast<double>(transform.At(row, column)); };
    const double cofactor[3][3] = {
        {m(1, 1) * m(2, 2) - m(1, 2) * m(2, 1), m(1, 2) * m(2, 0) - m(1, 0) * m(2, 2), m(1, 0) * m(2, 1) - m(1, 1) * m(2, 0)},
        {m(0, 2) * m(2, 1) - m(0, 1) * m(2, 2), m(0, 0) * m(2, 2) - m(0, 2) * m(2, 0), m(0, 1) * m(2, 0) - m(0, 0) * m(2, 1)},
        {m(0, 1) * m(1, 2) - m(0, 2) * m(1, 1), m(0, 2) * m(1, 0) - m(0, 0) * m(1, 2), m(0, 0) * m(1, 1) - m(0, 1) * m(1, 0)},
    };
    const double determinant = m(0, 0) * cofactor[0][0] + m(0, 1) * cofactor[0][1] + m(0, 2) * cofactor[0][2];
    if (!std::isfinite(determinant) || std::fabs(determinant) < 1e-30) {
        out = VMTransform::Identity();
        return false;
    }
    VMTransform inverse;
    // The inverse is the transposed cofactor matrix over the determinant.
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            inverse.At(row, column) = static_cast<float>(cofactor[column][row] / determinant);
    float translation[3];
    inverse.TransformDirection(transform.Translation(), translation);
    // 0 - t rather than -t: an untranslated transform inverts to +0, not -0, as files show it.
    for (int axis = 0; axis < 3; ++axis)
        inverse.Translation()[axis] = 0.0f - translation[axis];
    out = inverse;
    return true;
}

void RotationToQuaternion(const VMTransform& transform, float quaternion[4])
{
    const auto m = [&](int row, int column) { return transform.At(row, column); };
    float& x = quaternion[0];
    float& y = quaternion[1];
    float& z = quaternion[2];
    float& w = quaternion[3];
    const float trace = m(0, 0) + m(1, 1) + m(2, 2);
    if (trace >= 0.0f) {
        const float s = std::sqrt(trace + 1.0f);
        w = 0.5f * s;
        const float f = 0.5f / s;
        x = (m(2, 1) - m(1, 2)) * f;
        y = (m(0, 2) - m(2, 0)) * f;
        z = (m(1, 0) - m(0, 1)) * f;
    } else if (m(0, 0) >= m(1, 1) && m(0, 0) >= m(2, 2)) {
        const float s = std::sqrt(m(0, 0) - m(1, 1) - m(2, 2) + 1.0f);
        x = 0.5f * s;
        const float f = 0.5f / s;
        y = (m(0, 1) + m(1, 0)) * f;
        z = (m(0, 2) + m(2, 0)) * f;
        w = (m(2, 1) - m(1, 2)) * f;
    } else if (m(1, 1) >= m(2, 2)) {
        const float s = std::sqrt(m(1, 1) - m(0, 0) - m(2, 2) + 1.0f);
        y = 0.5f * s;
        const float f = 0.5f / s;
        x = (m(0, 1) + m(1, 0)) * f;
        z = (m(1, 2) + m(2, 1)) * f;
        w = (m(0, 2) - m(2, 0)) * f;
    } else {
        const float s = std::sqrt(m(2, 2) - m(0, 0) - m(1, 1) + 1.0f);
        z = 0.5f * s;
        const float f = 0.5f / s;
        x = (m(0, 2) + m(2, 0)) * f;
        y = (m(1, 2) + m(2, 1)) * f;
        w = (m(1, 0) - m(0, 1)) * f;
    }
    const float length = std::sqrt(x * x + y * y + z * z + w * w);
    if (length > 0.0f) {
        for (int i = 0; i < 4; ++i)
            quaternion[i] /= length;
    }
}

VMTransform TransformFromQuaternion(const float quaternion[4], const float translation[3])
{
    float x = quaternion[0], y = quaternion[1], z = quaternion[2], w = quaternion[3];
    const float length = std::sqrt(x * x + y * y + z * z + w * w);
    if (length > 0.0f) {
        x /= length;
        y /= length;
        z /= length;
        w /= length;
    }
    VMTransform result;
    result.At(0, 0) = 1.0f - 2.0f * (y * y + z * z);
    result.At(0, 1) = 2.0f * (x * y - z * w);
    result.At(0, 2) = 2.0f * (x * z + y * w);
    result.At(1, 0) = 2.0f * (x * y + z * w);
    result.At(1, 1) = 1.0f - 2.0f * (x * x + z * z);
    result.At(1, 2) = 2.0f * (y * z - x * w);
    result.At(2, 0) = 2.0f * (x * z - y * w);
    result.At(2, 1) = 2.0f * (y * z + x * w);
    result.At(2, 2) = 1.0f - 2.0f * (x * x + y * y);
    for (int axis = 0; axis < 3; ++axis)
        result.Translation()[axis] = translation[axis];
    return result;
}
