#include "kestrel/LightmapPicture.h"

#include "formats/EncodePng.h"
#include "formats/StaticMeshReader.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <numeric>
#include <utility>
#include <vector>

namespace {

constexpr int GridSpacing = 64;
constexpr uint8_t Background[3] = {32, 32, 32};
constexpr uint8_t GridLine[3] = {64, 64, 64};
constexpr uint8_t Outline[3] = {240, 240, 240};

struct Point {
    double X;
    double Y;
};

class Canvas {
public:
    explicit Canvas(int size)
        : m_size(size)
        , m_pixels(3 * static_cast<size_t>(size) * static_cast<size_t>(size))
    {
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x)
                Set(x, y, x % GridSpacing == 0 || y % GridSpacing == 0 ? GridLine : Background);
        }
    }

    void Set(int x, int y, const uint8_t (&colour)[3])
    {
        if (x < 0 || y < 0 || x >= m_size || y >= m_size)
            return;
        std::copy(std::begin(colour), std::end(colour), m_pixels.begin() + 3 * (static_cast<ptrdiff_t>(y) * m_size + x));
    }

    // The pixels whose centres the triangle covers.
    void Fill(Point a, Point b, Point c, const uint8_t (&colour)[3])
    {
        const auto side = [](Point p, Point q, double x, double y) { return (q.X - p.X) * (y - p.Y) - (q.Y - p.Y) * (x - p.X); };
        const int x0 = std::max(0, static_cast<int>(std::floor(std::min({a.X, b.X, c.X}))));
        const int x1 = std::min(m_size - 1, static_cast<int>(std::ceil(std::max({a.X, b.X, c.X}))));
        const int y0 = std::max(0, static_cast<int>(std::floor(std::min({a.Y, b.Y, c.Y}))));
        const int y1 = std::min(m_size - 1, static_cast<int>(std::ceil(std::max({a.Y, b.Y, c.Y}))));
        for (int y = y0; y <= y1; ++y) {
            for (int x = x0; x <= x1; ++x) {
                const double d0 = side(a, b, x + 0.5, y + 0.5);
                const double d1 = side(b, c, x + 0.5, y + 0.5);
                const double d2 = side(c, a, x + 0.5, y + 0.5);
                if ((d0 >= 0 && d1 >= 0 && d2 >= 0) || (d0 <= 0 && d1 <= 0 && d2 <= 0))
                    Set(x, y, colour);
            }
        }
    }

    void Line(Point a, Point b, const uint8_t (&colour)[3])
    {
        const int steps = std::max(1, static_cast<int>(std::ceil(std::max(std::abs(b.X - a.X), std::abs(b.Y - a.Y)))));
        for (int i = 0; i <= steps; ++i) {
            const double t = static_cast<double>(i) / steps;
            Set(static_cast<int>(std::floor(a.X + t * (b.X - a.X))), static_cast<int>(std::floor(a.Y + t * (b.Y - a.Y))),
                colour);
        }
    }

    std::string Png() const { return EncodePng(m_size, m_size, m_pixels); }

private:
    int m_size;
    std::vector<uint8_t> m_pixels;
};

int Find(std::vector<int>& parent, int x)
{
    while (parent[static_cast<size_t>(x)] != x)
        x = parent[static_cast<size_t>(x)] = parent[static_cast<size_t>(parent[static_cast<size_t>(x)])];
    return x;
}

// A mid-tone colour of the chart's own, so that neighbours stand apart and outlines stand out.
void ChartColour(int chart, uint8_t (&colour)[3])
{
    uint32_t h = static_cast<uint32_t>(chart) * 2654435761u;
    for (uint8_t& channel : colour) {
        h ^= h >> 13;
        h *= 0x5bd1e995u;
        channel = static_cast<uint8_t>(70 + (h >> 24) % 130);
    }
}

AtlasPicture DrawMaterial(const VStaticMeshFile& mesh, const std::vector<uint32_t>& corners, int size)
{
    // Corners are one point of a chart when they share a vertex or a spot in the atlas; the
    // writer repeats vertices per submesh.
    std::map<std::pair<float, float>, int> pointAt;
    std::vector<int> pointOf(corners.size());
    for (size_t c = 0; c < corners.size(); ++c) {
        const VStaticMeshVertex& vertex = mesh.Vertices[corners[c]];
        pointOf[c] = pointAt.emplace(std::make_pair(vertex.SecondUV[0], vertex.SecondUV[1]), static_cast<int>(pointAt.size()))
                         .first->second;
    }
    std::vector<int> parent(pointAt.size());
    std::iota(parent.begin(), parent.end(), 0);
    for (size_t c = 0; c < corners.size(); ++c) {
        if (c % 3 != 0)
            parent[static_cast<size_t>(Find(parent, pointOf[c]))] = Find(parent, pointOf[c - c % 3]);
    }

    // An edge that one triangle of a chart runs and none runs back is part of its outline.
    std::map<std::pair<int, int>, int> runs;
    for (size_t c = 0; c < corners.size(); ++c) {
        const size_t next = c % 3 == 2 ? c - 2 : c + 1;
        ++runs[{std::min(pointOf[c], pointOf[next]), std::max(pointOf[c], pointOf[next])}];
    }

    Canvas canvas(size);
    const auto at = [&](size_t c) {
        const VStaticMeshVertex& vertex = mesh.Vertices[corners[c]];
        return Point {vertex.SecondUV[0] * static_cast<double>(size), vertex.SecondUV[1] * static_cast<double>(size)};
    };
    for (size_t c = 0; c + 2 < corners.size(); c += 3) {
        uint8_t colour[3];
        ChartColour(Find(parent, pointOf[c]), colour);
        canvas.Fill(at(c), at(c + 1), at(c + 2), colour);
    }
    for (size_t c = 0; c < corners.size(); ++c) {
        const size_t next = c % 3 == 2 ? c - 2 : c + 1;
        if (runs[{std::min(pointOf[c], pointOf[next]), std::max(pointOf[c], pointOf[next])}] == 1)
            canvas.Line(at(c), at(next), Outline);
    }
    return AtlasPicture{0, canvas.Png()};
}

} // namespace

std::vector<AtlasPicture> DrawLightmapAtlases(const VStaticMeshFile& mesh, int size)
{
    std::vector<AtlasPicture> pictures;
    if (!mesh.HasComponent(DescriptorSecondUV))
        return pictures;
    for (int material = 0; material < static_cast<int>(mesh.Materials.size()); ++material) {
        std::vector<uint32_t> corners;
        for (const VStaticMeshSubmesh& submesh : mesh.Submeshes) {
            if (submesh.Material != material)
                continue;
            const size_t first = static_cast<size_t>(std::max(0, submesh.RenderFirstIndex));
            const size_t end = std::min(mesh.Indices.size(), first + static_cast<size_t>(std::max(0, submesh.RenderIndexCount)));
            for (size_t i = first; i < end; ++i)
                corners.push_back(mesh.Indices[i]);
        }
        corners.resize(corners.size() / 3 * 3);
        if (corners.empty())
            continue;
        pictures.push_back(DrawMaterial(mesh, corners, size));
        pictures.back().Material = material;
    }
    return pictures;
}
