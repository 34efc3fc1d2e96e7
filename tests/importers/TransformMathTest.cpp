#include "importers/TransformMath.h"

#include <maya/MEulerRotation.h>

#include <gtest/gtest.h>

#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;

TEST(TransformMath, DecomposingAComposedTransformGivesItsValuesBack)
{
    RecordTransform transform;
    transform.Translate = MVector(10.0, -2.0, 3.5);
    transform.Rotate = MVector(0.3, -0.7, 1.2);
    transform.Scale = MVector(2.0, 0.5, 1.5);
    const RecordTransform back = DecomposeTransform(ComposeTransform(transform));
    EXPECT_TRUE(back.Translate.isEquivalent(transform.Translate, 1e-9));
    EXPECT_TRUE(back.Rotate.isEquivalent(transform.Rotate, 1e-9));
    EXPECT_TRUE(back.Scale.isEquivalent(transform.Scale, 1e-9));
}

TEST(TransformMath, RotationOrderIsXFirstAsMayasDefault)
{
    RecordTransform transform;
    transform.Rotate = MVector(0.4, 0.9, -0.2);
    const MMatrix expected = MEulerRotation(0.4, 0.9, -0.2, MEulerRotation::kXYZ).asMatrix();
    EXPECT_TRUE(ComposeTransform(transform).isEquivalent(expected, 1e-12));
}

// A mirror keeps a proper rotation with a negative x scale; gimbal lock still rebuilds the same matrix.
TEST(TransformMath, MirroredAndGimbalLockedMatricesAreRebuiltFromTheirDecomposition)
{
    RecordTransform mirrored;
    mirrored.Rotate = MVector(0.0, 0.5, 0.0);
    mirrored.Scale = MVector(-1.0, 1.0, 1.0);
    RecordTransform locked;
    locked.Rotate = MVector(0.3, kPi / 2.0, 0.6);
    for (const RecordTransform& transform : {mirrored, locked}) {
        const MMatrix matrix = ComposeTransform(transform);
        const RecordTransform back = DecomposeTransform(matrix);
        EXPECT_EQ(back.Scale.x < 0.0, transform.Scale.x < 0.0);
        EXPECT_TRUE(ComposeTransform(back).isEquivalent(matrix, 1e-9));
    }
}

TEST(TransformMath, NearestEulerUnwrapsAFullTurn)
{
    const MVector near = NearestEuler(MVector(-3.1, 0.0, 0.0), MVector(3.1, 0.0, 0.0));
    EXPECT_NEAR(near.x, -3.1 + 2.0 * kPi, 1e-12);
}

// (pi, pi - 0.1, pi) turns like (0, 0.1, 0), which lies next to the previous key.
TEST(TransformMath, NearestEulerTakesTheOtherSolutionWhenItIsCloser)
{
    const MVector near = NearestEuler(MVector(kPi, kPi - 0.1, kPi), MVector(0.0, 0.1, 0.0));
    EXPECT_NEAR(near.x, 0.0, 1e-9);
    EXPECT_NEAR(near.y, 0.1, 1e-9);
    EXPECT_NEAR(near.z, 0.0, 1e-9);
    RecordTransform a;
    a.Rotate = near;
    RecordTransform b;
    b.Rotate = MVector(kPi, kPi - 0.1, kPi);
    EXPECT_TRUE(ComposeTransform(a).isEquivalent(ComposeTransform(b), 1e-9));
}

} // namespace
