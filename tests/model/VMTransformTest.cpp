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

TEST(VMTransformTest, ATransformTimesItsInverseIsTheIdentityAndASingularOneHasNone)
{
    VMTransform t = RotationAboutZ90(1, 2, 3);
    t.At(2, 2) = 2.0f;
    VMTransform inverse;
    ASSERT_TRUE(Invert(t, inverse));
    const VMTransform product = inverse * t;
    for (int i = 0; i < 12; ++i)
        EXPECT_NEAR(product.M[i], VMTransform::Identity().M[i], 1e-6) << i;
    VMTransform flat;
    flat.At(2, 2) = 0.0f;
    EXPECT_FALSE(Invert(flat, inverse)) << "a singular transform has no inverse";
    EXPECT_TRUE(inverse.IsIdentity());
}

struct QuaternionCase {
    const char* Name;
    float Rotation[9];
    float Quaternion[4];
};

class QuaternionTest : public testing::TestWithParam<QuaternionCase> {};

// One rotation for each branch of the trace method, and back.
TEST_P(QuaternionTest, TheTraceMethodGivesTheUnitQuaternionAndItsMatrixTheRotationAgain)
{
    const QuaternionCase& c = GetParam();
    VMTransform rotation;
    for (int i = 0; i < 9; ++i)
        rotation.M[i] = c.Rotation[i];
    float q[4];
    RotationToQuaternion(rotation, q);
    for (int i = 0; i < 4; ++i)
        EXPECT_NEAR(q[i], c.Quaternion[i], 1e-6f) << i;

    const float translation[3] = {1, 2, 3};
    const VMTransform back = TransformFromQuaternion(q, translation);
    for (int i = 0; i < 9; ++i)
        EXPECT_NEAR(back.M[i], c.Rotation[i], 1e-6f) << i;
    EXPECT_EQ(back.Translation()[2], 3.0f);
}

constexpr float Half = 0.70710678f;

INSTANTIATE_TEST_SUITE_P(
    Branches, QuaternionTest,
    testing::Values(QuaternionCase {"TraceQuarterTurnAboutZ", {0, 1, 0, -1, 0, 0, 0, 0, 1}, {0, 0, Half, Half}},
                    QuaternionCase {"LargestX", {1, 0, 0, 0, -1, 0, 0, 0, -1}, {1, 0, 0, 0}},
                    QuaternionCase {"LargestY", {-1, 0, 0, 0, 1, 0, 0, 0, -1}, {0, 1, 0, 0}},
                    QuaternionCase {"LargestZ", {-1, 0, 0, 0, -1, 0, 0, 0, 1}, {0, 0, 1, 0}},
                    // A half turn about an axis between x and z, x the larger.
                    QuaternionCase {"LargestXTilted", {Half, 0, Half, 0, -1, 0, Half, 0, -Half},
                                    {0.9238795f, 0, 0.3826834f, 0}}),
    [](const testing::TestParamInfo<QuaternionCase>& paramInfo) { return paramInfo.param.Name; });

} // namespace
