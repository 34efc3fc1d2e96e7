#include <maya/MEulerRotation.h>
#include <maya/MMatrix.h>
#include <maya/MQuaternion.h>
#include <maya/MVector.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;

// The turn by angle about a unit axis, in Maya's row vectors (Rodrigues' formula, transposed).
MMatrix TurnAbout(const MVector& axis, double angle)
{
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double k[3] = {axis.x, axis.y, axis.z};
    MMatrix m;
    for (unsigned int r = 0; r < 3; ++r)
        for (unsigned int col = 0; col < 3; ++col)
            m(col, r) = (r == col ? c : 0.0) + (1.0 - c) * k[r] * k[col];
    m(2, 1) -= s * k[0];
    m(1, 2) += s * k[0];
    m(0, 2) -= s * k[1];
    m(2, 0) += s * k[1];
    m(1, 0) -= s * k[2];
    m(0, 1) += s * k[2];
    return m;
}

void ExpectMatricesNear(const MMatrix& actual, const MMatrix& expected)
{
    for (unsigned int r = 0; r < 4; ++r)
        for (unsigned int c = 0; c < 4; ++c)
            EXPECT_NEAR(actual(r, c), expected(r, c), 1e-12) << "row " << r << " column " << c;
}

struct TraceCase {
    const char* Name;
    MVector Axis;
    double Degrees;
};

class QuaternionFromMatrix : public ::testing::TestWithParam<TraceCase> {};

TEST_P(QuaternionFromMatrix, EachBranchOfTheTraceMethodGivesTheTurnsUnitQuaternion)
{
    const MVector axis = GetParam().Axis;
    const double half = GetParam().Degrees * kDegree / 2.0;
    const MMatrix turn = TurnAbout(axis, 2.0 * half);
    MQuaternion q;
    q = turn;
    EXPECT_NEAR(q.x, axis.x * std::sin(half), 1e-12);
    EXPECT_NEAR(q.y, axis.y * std::sin(half), 1e-12);
    EXPECT_NEAR(q.z, axis.z * std::sin(half), 1e-12);
    EXPECT_NEAR(q.w, std::cos(half), 1e-12);
    ExpectMatricesNear(q.asMatrix(), turn);
}

INSTANTIATE_TEST_SUITE_P(
    Branches, QuaternionFromMatrix,
    ::testing::Values(TraceCase{"PositiveTrace", MVector(0.36, 0.48, 0.8), 60.0},
                      TraceCase{"LargestX", MVector(0.8, 0.36, 0.48), 160.0},
                      TraceCase{"LargestY", MVector(0.48, 0.8, 0.36), 160.0},
                      TraceCase{"LargestZ", MVector(0.36, 0.48, 0.8), 160.0}),
    [](const ::testing::TestParamInfo<TraceCase>& test) { return std::string(test.param.Name); });

TEST(QuaternionTest, AProductTurnsByTheLeftFirstAsMatricesDo)
{
    const MQuaternion first(90.0 * kDegree, MVector::zAxis);
    const MQuaternion second(90.0 * kDegree, MVector::xAxis);
    // x turns onto y about z, then y onto z about x.
    EXPECT_TRUE((MVector::xAxis * (first * second).asMatrix()).isEquivalent(MVector::zAxis, 1e-12));
    ExpectMatricesNear((first * second).asMatrix(), first.asMatrix() * second.asMatrix());
    EXPECT_TRUE((first * first.inverse()).isEquivalent(MQuaternion::identity, 1e-12));
    EXPECT_TRUE(MQuaternion(MVector::xAxis, MVector::yAxis).isEquivalent(first, 1e-12));
}

class EulerOrders : public ::testing::TestWithParam<MEulerRotation::RotationOrder> {};

TEST_P(EulerOrders, MatrixQuaternionAndAnglesAgree)
{
    const MEulerRotation rotation(0.3, -0.7, 1.1, GetParam());
    MQuaternion q;
    q = rotation;
    ExpectMatricesNear(q.asMatrix(), rotation.asMatrix());
    EXPECT_TRUE(MEulerRotation::decompose(rotation.asMatrix(), GetParam()).isEquivalent(rotation, 1e-12));
    ExpectMatricesNear(rotation.reorder(MEulerRotation::kYXZ).asMatrix(), rotation.asMatrix());
    ExpectMatricesNear(rotation.asMatrix() * rotation.inverse().asMatrix(), MMatrix::identity);

    // Middle axis at a quarter turn: the first axis takes the whole turn of the other two.
    double angles[3] = {0.4, 0.4, 0.4};
    static const int kMiddle[6] = {1, 2, 0, 2, 0, 1};
    angles[kMiddle[GetParam()]] = std::numbers::pi / 2.0;
    const MEulerRotation locked(angles[0], angles[1], angles[2], GetParam());
    MEulerRotation decomposed(0.0, 0.0, 0.0, GetParam());
    decomposed = locked.asMatrix();
    ExpectMatricesNear(decomposed.asMatrix(), locked.asMatrix());
}

INSTANTIATE_TEST_SUITE_P(All, EulerOrders,
                         ::testing::Values(MEulerRotation::kXYZ, MEulerRotation::kYZX, MEulerRotation::kZXY,
                                           MEulerRotation::kXZY, MEulerRotation::kYXZ, MEulerRotation::kZYX));

}
