#include "model/VMTransform.h"

#include <gtest/gtest.h>

namespace {

VMTransform RotationAboutZ90(float tx, float ty, float tz)
{
    // Columns: x goes to y, y goes to -x, z stays.
    VMTransform t;
    const float m[12] = {0, 1, 0, -1, 0, 0, 0, 0, 1, tx, ty, tz};
    for (int i = 0; i < 12; ++i)
        t.M[i] = m[i];
    return t;
}

TEST(VMTransformTest, RotationIsStoredColumnByColumn)
{
    const VMTransform t = RotationAboutZ90(0, 0, 0);
    EXPECT_EQ(t.At(1, 0), 1.0f);
    EXPECT_EQ(t.At(0, 1), -1.0f);
    const float x[3] = {1, 0, 0};
    float out[3];
    t.TransformDirection(x, out);
    EXPECT_EQ(out[0], 0.0f);
    EXPECT_EQ(out[1], 1.0f);
}

TEST(VMTransformTest, TheProductAppliesTheRightTransformFirst)
{
    VMTransform shift;
    shift.Translation()[0] = 5.0f;
    const VMTransform rotate = RotationAboutZ90(0, 0, 0);
    const float origin[3] = {0, 0, 0};
    float out[3];
    (rotate * shift).TransformPoint(origin, out);
    EXPECT_FLOAT_EQ(out[0], 0.0f);
    EXPECT_FLOAT_EQ(out[1], 5.0f);
}

TEST(VMTransformTest, ATransformTimesItsInverseIsTheIdentity)
{
    VMTransform t = RotationAboutZ90(1, 2, 3);
    t.At(2, 2) = 2.0f;
    VMTransform inverse;
    ASSERT_TRUE(Invert(t, inverse));
    const VMTransform product = inverse * t;
    for (int i = 0; i < 12; ++i)
        EXPECT_NEAR(product.M[i], VMTransform::Identity().M[i], 1e-6) << i;
}

TEST(VMTransformTest, ASingularTransformHasNoInverse)
{
    VMTransform flat;
    flat.At(2, 2) = 0.0f;
    VMTransform inverse = RotationAboutZ90(1, 1, 1);
    EXPECT_FALSE(Invert(flat, inverse));
    EXPECT_TRUE(inverse.IsIdentity());
}

} // namespace
