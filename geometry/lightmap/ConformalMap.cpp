// Least squares conformal maps: Levy, Petitjean, Ray and Maillot, "Least Squares Conformal Maps
// for Automatic Texture Atlas Generation" (SIGGRAPH 2002). Per face, with its corners laid out
// in its own plane and W_j the edge opposite corner j as a complex number, the map U = u + iv
// is conformal when sum_j W_j U_j = 0; the squared residues, divided by twice the face's area,
// are summed over the chart and minimised with two points held. The normal equations are
// sparse, symmetric and positive definite.

#include "geometry/lightmap/ConformalMap.h"

#include "geometry/lightmap/AtlasMesh.h"
#include "geometry/lightmap/Chart.h"

#include <Eigen/IterativeLinearSolvers>
#include <Eigen/SparseCore>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace {

constexpr double SolverTolerance = 1e-6;
// Conjugate gradients start from the projection, which is close to conformal already; each
// iteration only lowers the energy, so a capped run is never worse than where it started and
// keeps a large chart's cost linear.
constexpr int MaxIterations = 25;

// The two points farthest apart along the flattening's longer side.
std::array<size_t, 2> PinnedPoints(const std::vector<Vec2>& uv)
{
    Vec2 low = uv[0];
    Vec2 high = uv[0];
    for (const Vec2& p : uv) {
        low = {std::min(low.X, p.X), std::min(low.Y, p.Y)};
        high = {std::max(high.X, p.X), std::max(high.Y, p.Y)};
    }
    const bool alongX = high.X - low.X >= high.Y - low.Y;
    std::array<size_t, 2> pins {0, 0};
    for (size_t i = 0; i < uv.size(); ++i) {
        const double value = alongX ? uv[i].X : uv[i].Y;
        if (value < (alongX ? uv[pins[0]].X : uv[pins[0]].Y))
            pins[0] = i;
        if (value > (alongX ? uv[pins[1]].X : uv[pins[1]].Y))
            pins[1] = i;
    }
    return pins;
}

// The complex edge coefficients of one face in a frame of its own plane, corner 0 at the
// origin and corner 1 on the positive x axis, so that the face runs counter-clockwise.
std::array<Vec2, 3> EdgeCoefficients(Vec3 a, Vec3 b, Vec3 c)
{
    const Vec3 ab = b - a;
    const Vec3 ac = c - a;
    const double abLength = Length(ab);
    const Vec2 p1 {0.0, 0.0};
    const Vec2 p2 {abLength, 0.0};
    const Vec2 p3 {Dot(ac, ab) / abLength, Length(Cross(ab, ac)) / abLength};
    return {p3 - p2, p1 - p3, p2 - p1};
}

} // namespace

bool ConformalMap(const AtlasMesh& mesh, Chart& chart)
{
    const size_t pointCount = chart.Points.size();
    if (pointCount < 3)
        return false;
    const std::array<size_t, 2> pins = PinnedPoints(chart.UV);
    if (pins[0] == pins[1])
        return false;
    // Free points take two unknowns each, u and v side by side; held points none.
    std::vector<int> unknownOf(pointCount);
    int unknownCount = 0;
    for (size_t point = 0; point < pointCount; ++point)
        unknownOf[point] = point == pins[0] || point == pins[1] ? -1 : 2 * unknownCount++;
    const int size = 2 * unknownCount;

    // Two rows per face with area: the real and imaginary part of sum_j W_j U_j over
    // (u1, v1, u2, v2, u3, v3); held points move to the right-hand side.
    std::vector<Eigen::Triplet<double>> entries;
    entries.reserve(chart.Faces.size() * 12);
    std::vector<double> heldParts;
    heldParts.reserve(chart.Faces.size() * 2);
    int rowCount = 0;
    for (size_t i = 0; i < chart.Faces.size(); ++i) {
        const int face = chart.Faces[i];
        const double area = mesh.Areas[static_cast<size_t>(face)];
        if (!(area > 0.0))
            continue;
        const std::array<Vec2, 3> w = EdgeCoefficients(mesh.Corner(face, 0), mesh.Corner(face, 1), mesh.Corner(face, 2));
        const double weight = 1.0 / std::sqrt(2.0 * area);
        for (int part = 0; part < 2; ++part) {
            double heldPart = 0.0;
            for (size_t j = 0; j < 3; ++j) {
                const uint32_t point = chart.Corners[3 * i + j];
                const double onU = (part == 0 ? w[j].X : w[j].Y) * weight;
                const double onV = (part == 0 ? -w[j].Y : w[j].X) * weight;
                const int unknown = unknownOf[point];
                if (unknown < 0) {
                    heldPart += onU * chart.UV[point].X + onV * chart.UV[point].Y;
                } else {
                    entries.emplace_back(rowCount, unknown, onU);
                    entries.emplace_back(rowCount, unknown + 1, onV);
                }
            }
            heldParts.push_back(-heldPart);
            ++rowCount;
        }
    }
    if (rowCount == 0)
        return false;

    Eigen::SparseMatrix<double> system(rowCount, size);
    system.setFromTriplets(entries.begin(), entries.end());
    const Eigen::VectorXd rhs = Eigen::Map<const Eigen::VectorXd>(heldParts.data(), rowCount);
    // The projection is close to conformal already; points that no face with area constrains
    // keep it, as conjugate gradients leave the guess untouched along the null space.
    Eigen::VectorXd guess(size);
    for (size_t point = 0; point < pointCount; ++point) {
        const int unknown = unknownOf[point];
        if (unknown >= 0) {
            guess[unknown] = chart.UV[point].X;
            guess[unknown + 1] = chart.UV[point].Y;
        }
    }
    Eigen::LeastSquaresConjugateGradient<Eigen::SparseMatrix<double>> solver;
    solver.setMaxIterations(MaxIterations);
    solver.setTolerance(SolverTolerance);
    solver.compute(system);
    const Eigen::VectorXd solution = solver.solveWithGuess(rhs, guess);
    if (!solution.allFinite())
        return false;
    for (size_t point = 0; point < pointCount; ++point) {
        const int unknown = unknownOf[point];
        if (unknown >= 0)
            chart.UV[point] = {solution[unknown], solution[unknown + 1]};
    }
    return true;
}
