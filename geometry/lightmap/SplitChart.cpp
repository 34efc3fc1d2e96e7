#include "geometry/lightmap/SplitChart.h"

#include "geometry/lightmap/AtlasMesh.h"

#include <cstddef>

namespace {

int FarthestFace(const AtlasMesh& mesh, const std::vector<int>& faces, int from)
{
    const Vec3 origin = mesh.Centroids[static_cast<size_t>(from)];
    int farthest = faces[0];
    double best = -1.0;
    for (int face : faces) {
        const Vec3 offset = mesh.Centroids[static_cast<size_t>(face)] - origin;
        if (Dot(offset, offset) > best) {
            best = Dot(offset, offset);
            farthest = face;
        }
    }
    return farthest;
}

} // namespace

std::pair<std::vector<int>, std::vector<int>> SplitChart(const AtlasMesh& mesh, const std::vector<int>& faces,
                                                         std::vector<int>& inChart)
{
    // 1: in the chart, not yet reached; 2 and 3: reached from the first or the second seed.
    for (int face : faces)
        inChart[static_cast<size_t>(face)] = 1;
    const int first = FarthestFace(mesh, faces, faces[0]);
    int second = FarthestFace(mesh, faces, first);
    if (second == first)
        second = faces[0] == first ? faces[1] : faces[0];

    std::vector<int> queue {first, second};
    inChart[static_cast<size_t>(first)] = 2;
    inChart[static_cast<size_t>(second)] = 3;
    for (size_t next = 0; next < queue.size(); ++next) {
        const size_t face = static_cast<size_t>(queue[next]);
        for (size_t edge = 3 * face; edge < 3 * face + 3; ++edge) {
            const int across = mesh.Across[edge];
            if (across >= 0 && inChart[static_cast<size_t>(across)] == 1) {
                inChart[static_cast<size_t>(across)] = inChart[face];
                queue.push_back(across);
            }
        }
    }

    std::pair<std::vector<int>, std::vector<int>> halves;
    for (int face : faces) {
        int& side = inChart[static_cast<size_t>(face)];
        (side == 2 ? halves.first : halves.second).push_back(face);
        side = 0;
    }
    return halves;
}
