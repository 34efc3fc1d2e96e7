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
    for (int axis = 0; axis < 3; ++axis)
        inverse.Translation()[axis] = -translation[axis];
    out = inverse;
    return true;
}
