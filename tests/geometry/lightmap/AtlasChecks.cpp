#include "AtlasChecks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>
#include <numeric>
#include <vector>

namespace {

struct P2 {
    double X;
    double Y;
};

double Cross(P2 o, P2 a, P2 b)
{
    return (a.X - o.X) * (b.Y - o.Y) - (a.Y - o.Y) * (b.X - o.X);
}

// Whether the closed triangle meets the closed square [x, x + 1] x [y, y + 1]: separating axes
// are the square's two axes and the triangle's three edge normals.
bool MeetsTexel(const std::array<P2, 3>& t, int x, int y)
{
    const double minX = std::min({t[0].X, t[1].X, t[2].X});
    const double maxX = std::max({t[0].X, t[1].X, t[2].X});
    const double minY = std::min({t[0].Y, t[1].Y, t[2].Y});
    const double maxY = std::max({t[0].Y, t[1].Y, t[2].Y});
    if (maxX < x || minX > x + 1 || maxY < y || minY > y + 1)
        return false;
    const P2 square[4] = {{double(x), double(y)}, {x + 1.0, double(y)}, {x + 1.0, y + 1.0}, {double(x), y + 1.0}};
    for (int k = 0; k < 3; ++k) {
        const P2 a = t[k];
        const P2 b = t[(k + 1) % 3];
        const P2 normal {b.Y - a.Y, a.X - b.X};
        double triangleLow = INFINITY, triangleHigh = -INFINITY, squareLow = INFINITY, squareHigh = -INFINITY;
        for (const P2& p : t) {
            const double d = normal.X * p.X + normal.Y * p.Y;
            triangleLow = std::min(triangleLow, d);
            triangleHigh = std::max(triangleHigh, d);
        }
        for (const P2& p : square) {
            const double d = normal.X * p.X + normal.Y * p.Y;
            squareLow = std::min(squareLow, d);
            squareHigh = std::max(squareHigh, d);
        }
        if (squareHigh < triangleLow || squareLow > triangleHigh)
            return false;
    }
    return true;
}

double SurfaceArea(std::span<const float> positions, size_t triangle)
{
    double e1[3], e2[3];
    for (size_t axis = 0; axis < 3; ++axis) {
        e1[axis] = double(positions[3 * (3 * triangle + 1) + axis]) - positions[3 * (3 * triangle) + axis];
        e2[axis] = double(positions[3 * (3 * triangle + 2) + axis]) - positions[3 * (3 * triangle) + axis];
    }
    const double nx = e1[1] * e2[2] - e1[2] * e2[1];
    const double ny = e1[2] * e2[0] - e1[0] * e2[2];
    const double nz = e1[0] * e2[1] - e1[1] * e2[0];
    return 0.5 * std::sqrt(nx * nx + ny * ny + nz * nz);
}

bool Sliver(std::span<const float> positions, size_t triangle)
{
    double longest = 0.0;
    for (size_t k = 0; k < 3; ++k) {
        double squared = 0.0;
        for (size_t axis = 0; axis < 3; ++axis) {
            const double d = double(positions[3 * (3 * triangle + (k + 1) % 3) + axis]) - positions[3 * (3 * triangle + k) + axis];
            squared += d * d;
        }
        longest = std::max(longest, squared);
    }
    return SurfaceArea(positions, triangle) <= 1e-6 * longest;
}

int Find(std::vector<int>& parent, int x)
{
    while (parent[static_cast<size_t>(x)] != x) {
        parent[static_cast<size_t>(x)] = parent[static_cast<size_t>(parent[static_cast<size_t>(x)])];
        x = parent[static_cast<size_t>(x)];
    }
    return x;
}

} // namespace

std::string CheckAtlas(std::span<const float> positions, std::span<const float> uvs, std::span<const uint32_t> corners,
                       int size, int gutter, double maxStretch, AtlasFigures& figures)
{
    // Corners are one point of a chart when they name the same vertex or lie on exactly the
    // same UVs: vertices split along a base-UV seam inside a chart keep their place.
    const size_t triangleCount = corners.size() / 3;
    const size_t cornerCount = corners.size();
    std::vector<int> parent(cornerCount);
    std::iota(parent.begin(), parent.end(), 0);
    const auto join = [&](size_t a, size_t b) {
        parent[static_cast<size_t>(Find(parent, static_cast<int>(a)))] = Find(parent, static_cast<int>(b));
    };
    std::map<uint32_t, size_t> firstWithVertex;
    std::map<std::pair<float, float>, size_t> firstAtUV;
    for (size_t c = 0; c < cornerCount; ++c) {
        if (c % 3 != 0)
            join(c, c - c % 3);
        const auto [vertex, addedVertex] = firstWithVertex.emplace(corners[c], c);
        if (!addedVertex)
            join(c, vertex->second);
        const auto [uv, addedUV] = firstAtUV.emplace(std::make_pair(uvs[2 * c], uvs[2 * c + 1]), c);
        if (!addedUV)
            join(c, uv->second);
    }
    std::vector<int> chartNumber(cornerCount, -1);
    std::vector<int> chartOf(triangleCount);
    figures = AtlasFigures{};
    for (size_t t = 0; t < triangleCount; ++t) {
        int& number = chartNumber[static_cast<size_t>(Find(parent, static_cast<int>(3 * t)))];
        if (number < 0)
            number = figures.Charts++;
        chartOf[t] = number;
    }

    for (float uv : uvs) {
        if (!(uv >= 0.0f && uv <= 1.0f))
            return "a UV lies outside [0, 1]";
    }

    // Texels each chart touches, and folds.
    std::vector<int> label(static_cast<size_t>(size) * static_cast<size_t>(size), -1);
    double flatArea = 0.0;
    P2 low {INFINITY, INFINITY};
    P2 high {-INFINITY, -INFINITY};
    for (size_t t = 0; t < triangleCount; ++t) {
        std::array<P2, 3> texel;
        for (size_t k = 0; k < 3; ++k)
            texel[k] = {uvs[2 * (3 * t + k)] * double(size), uvs[2 * (3 * t + k) + 1] * double(size)};
        const double twiceArea = Cross(texel[0], texel[1], texel[2]);
        // A sliver (its height below a millionth of its longest side) may lose what little area it
        // has when its UVs are rounded to floats; it has no texels to lose.
        if (!(twiceArea > 0.0) && !Sliver(positions, t))
            return "triangle " + std::to_string(t) + " is turned over or without area";
        flatArea += 0.5 * twiceArea;
        for (const P2& p : texel) {
            low = {std::min(low.X, p.X), std::min(low.Y, p.Y)};
            high = {std::max(high.X, p.X), std::max(high.Y, p.Y)};
        }
        const int x0 = std::max(0, static_cast<int>(std::floor(std::min({texel[0].X, texel[1].X, texel[2].X}))) - 1);
        const int x1 = std::min(size - 1, static_cast<int>(std::floor(std::max({texel[0].X, texel[1].X, texel[2].X}))));
        const int y0 = std::max(0, static_cast<int>(std::floor(std::min({texel[0].Y, texel[1].Y, texel[2].Y}))) - 1);
        const int y1 = std::min(size - 1, static_cast<int>(std::floor(std::max({texel[0].Y, texel[1].Y, texel[2].Y}))));
        for (int y = y0; y <= y1; ++y) {
            for (int x = x0; x <= x1; ++x) {
                if (!MeetsTexel(texel, x, y))
                    continue;
                int& owner = label[static_cast<size_t>(y) * static_cast<size_t>(size) + static_cast<size_t>(x)];
                if (owner >= 0 && owner != chartOf[t])
                    return "two charts share a texel";
                owner = chartOf[t];
            }
        }
    }
    figures.Utilisation = flatArea / ((high.X - low.X) * (high.Y - low.Y));

    // Per texel, the lowest and highest chart within gutter texels across and along, taken
    // over rows and then over columns; a texel of a chart must see no other.
    const int border = (gutter + 1) / 2;
    const size_t n = static_cast<size_t>(size);
    std::vector<int> rowLowest(n * n);
    std::vector<int> rowHighest(n * n);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            int least = INT32_MAX;
            int most = -1;
            for (int dx = std::max(0, x - gutter); dx <= std::min(size - 1, x + gutter); ++dx) {
                const int owner = label[static_cast<size_t>(y) * n + static_cast<size_t>(dx)];
                if (owner >= 0) {
                    least = std::min(least, owner);
                    most = std::max(most, owner);
                }
            }
            rowLowest[static_cast<size_t>(y) * n + static_cast<size_t>(x)] = least;
            rowHighest[static_cast<size_t>(y) * n + static_cast<size_t>(x)] = most;
        }
    }
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const size_t at = static_cast<size_t>(y) * n + static_cast<size_t>(x);
            if (label[at] < 0)
                continue;
            if (x < border || y < border || x >= size - border || y >= size - border)
                return "a chart lies within the border";
            for (int dy = std::max(0, y - gutter); dy <= std::min(size - 1, y + gutter); ++dy) {
                const size_t there = static_cast<size_t>(dy) * n + static_cast<size_t>(x);
                if (rowLowest[there] != label[at] && rowLowest[there] != INT32_MAX)
                    return "two charts lie closer than the gutter";
                if (rowHighest[there] != label[at] && rowHighest[there] != -1)
                    return "two charts lie closer than the gutter";
            }
        }
    }

    // Overlaps within a chart: sample points strictly inside two triangles. Edges are left out
    // by a small inset, so that neighbours sharing an edge do not count.
    const int fine = 2 * size;
    std::vector<uint8_t> covered(static_cast<size_t>(fine) * static_cast<size_t>(fine), 0);
    for (size_t t = 0; t < triangleCount; ++t) {
        std::array<P2, 3> p;
        for (size_t k = 0; k < 3; ++k)
            p[k] = {uvs[2 * (3 * t + k)] * double(fine), uvs[2 * (3 * t + k) + 1] * double(fine)};
        const double twiceArea = Cross(p[0], p[1], p[2]);
        const int x0 = std::max(0, static_cast<int>(std::floor(std::min({p[0].X, p[1].X, p[2].X}))));
        const int x1 = std::min(fine - 1, static_cast<int>(std::floor(std::max({p[0].X, p[1].X, p[2].X}))));
        const int y0 = std::max(0, static_cast<int>(std::floor(std::min({p[0].Y, p[1].Y, p[2].Y}))));
        const int y1 = std::min(fine - 1, static_cast<int>(std::floor(std::max({p[0].Y, p[1].Y, p[2].Y}))));
        for (int y = y0; y <= y1; ++y) {
            for (int x = x0; x <= x1; ++x) {
                const P2 s {x + 0.5, y + 0.5};
                const double inset = 1e-6 * twiceArea;
                if (Cross(p[0], p[1], s) <= inset || Cross(p[1], p[2], s) <= inset || Cross(p[2], p[0], s) <= inset)
                    continue;
                uint8_t& count = covered[static_cast<size_t>(y) * static_cast<size_t>(fine) + static_cast<size_t>(x)];
                if (count++ > 0)
                    return "triangle " + std::to_string(t) + " overlaps another";
            }
        }
    }

    // Per chart, the L2 stretch of Sander et al., normalised by the chart's areas.
    std::vector<double> surface(static_cast<size_t>(figures.Charts), 0.0);
    std::vector<double> flat(static_cast<size_t>(figures.Charts), 0.0);
    std::vector<double> squares(static_cast<size_t>(figures.Charts), 0.0);
    for (size_t t = 0; t < triangleCount; ++t) {
        double q[3][3];
        P2 s[3];
        for (size_t k = 0; k < 3; ++k) {
            for (size_t axis = 0; axis < 3; ++axis)
                q[k][axis] = positions[3 * (3 * t + k) + axis];
            s[k] = {uvs[2 * (3 * t + k)], uvs[2 * (3 * t + k) + 1]};
        }
        const double a = 0.5 * Cross(s[0], s[1], s[2]);
        const double area = SurfaceArea(positions, t);
        if (!(area > 0.0))
            continue;
        double ss = 0.0, tt = 0.0;
        for (size_t axis = 0; axis < 3; ++axis) {
            const double dS = (q[0][axis] * (s[1].Y - s[2].Y) + q[1][axis] * (s[2].Y - s[0].Y) + q[2][axis] * (s[0].Y - s[1].Y)) / (2 * a);
            const double dT = (q[0][axis] * (s[2].X - s[1].X) + q[1][axis] * (s[0].X - s[2].X) + q[2][axis] * (s[1].X - s[0].X)) / (2 * a);
            ss += dS * dS;
            tt += dT * dT;
        }
        const size_t c = static_cast<size_t>(chartOf[t]);
        surface[c] += area;
        flat[c] += a;
        squares[c] += area * 0.5 * (ss + tt);
    }
    for (size_t c = 0; c < surface.size(); ++c) {
        if (!(surface[c] > 0.0))
            continue;
        const double l2 = std::sqrt(squares[c] / surface[c] * flat[c] / surface[c]);
        const double stretch = 1.0 - 1.0 / l2;
        figures.LargestStretch = std::max(figures.LargestStretch, stretch);
        if (stretch > maxStretch + 1e-6)
            return "chart " + std::to_string(c) + " is stretched by " + std::to_string(stretch);
    }
    return {};
}
