#include "geometry/SplitPolygon.h"

#include "geometry/PolygonArea.h"
#include "model/VMPolygon.h"
#include "model/VMSkinVertex.h"
#include "model/VMVertex.h"
#include "model/VMVisArea.h"
#include "model/VMWorld.h"

#include <cmath>
#include <cstddef>
#include <new>
#include <utility>
#include <vector>

namespace {

constexpr double SmallestPieceArea = 1e-7;
constexpr double NearCornerSquaredDistance = 1e-5;

template <class Vertex>
struct Piece {
    std::vector<Vertex*> Corners;
    int Depth;
    int CornerLimit;
};

struct Diagonal {
    int First;
    int Last;
};

// The diagonal (first, last) whose first piece, corners first..last, halves the area best.
// Answers false when no diagonal gives two pieces of usable area.
template <class Vertex>
bool FindBestDiagonal(const std::vector<Vertex*>& corners, double area, Diagonal& best)
{
    const int count = static_cast<int>(corners.size());
    double bestScore = area + 1.0;
    bool found = false;
    for (int i = 0; i < count - 2; ++i) {
        // The first piece's fan grows by one triangle per step of j, summed in the same order
        // as PolygonArea over that piece.
        double pieceArea = 0.0;
        for (int j = i + 2; j < count; ++j) {
            pieceArea += FanTriangleArea(*corners[static_cast<size_t>(i)], *corners[static_cast<size_t>(j - 1)],
                                         *corners[static_cast<size_t>(j)]);
            if (count - (j - i + 1) + 2 < 3)
                continue;
            const double score = pieceArea > SmallestPieceArea && area - pieceArea > SmallestPieceArea
                                     ? std::fabs(area - 2.0 * pieceArea)
                                     : area + 2.0;
            if (score < bestScore) {
                bestScore = score;
                best = {i, j};
                found = true;
            }
        }
    }
    return found;
}

template <class Vertex>
std::vector<Vertex*> WithoutNearCorners(const std::vector<Vertex*>& corners)
{
    std::vector<Vertex*> kept;
    kept.reserve(corners.size());
    for (Vertex* corner : corners) {
        bool near = false;
        for (const Vertex* other : kept) {
            const float dx = corner->Position[0] - other->Position[0];
            const float dy = corner->Position[1] - other->Position[1];
            const float dz = corner->Position[2] - other->Position[2];
            if (static_cast<double>(dx * dx + dy * dy + dz * dz) < NearCornerSquaredDistance) {
                near = true;
                break;
            }
        }
        if (!near)
            kept.push_back(corner);
    }
    return kept;
}

// Splits one piece: either hands it on or pushes its sub-pieces, the first piece on top so that
// pieces are handed on in the order of a depth-first split.
template <class Vertex>
int SplitPiece(Piece<Vertex> piece, std::vector<Piece<Vertex>>& pending, const PieceSink<Vertex>& addPiece)
{
    const int count = static_cast<int>(piece.Corners.size());
    if (count < 3)
        return 0;
    if (count <= piece.CornerLimit)
        return addPiece(piece.Corners);

    const double area = PolygonArea(piece.Corners.data(), count);
    if (area <= SmallestPieceArea)
        return 0;

    Diagonal diagonal{0, 0};
    if (FindBestDiagonal(piece.Corners, area, diagonal)) {
        const auto begin = piece.Corners.begin();
        std::vector<Vertex*> second(begin + diagonal.Last, piece.Corners.end());
        second.insert(second.end(), begin, begin + diagonal.First + 1);
        std::vector<Vertex*> first(begin + diagonal.First, begin + diagonal.Last + 1);
        pending.push_back({std::move(second), piece.Depth + 1, 3});
        pending.push_back({std::move(first), piece.Depth + 1, 3});
        return 0;
    }

    std::vector<Vertex*> kept = WithoutNearCorners(piece.Corners);
    if (kept.size() == piece.Corners.size())
        return 0;
    pending.push_back({std::move(kept), piece.Depth + 1, 3});
    return 0;
}

} // namespace

template <class Vertex>
int SplitCorners(Vertex* const* corners, int count, int depth, int cornerLimit, const PieceSink<Vertex>& addPiece)
{
    if (count < 3)
        return 0;
    try {
        // An explicit stack: a hostile polygon of many thousand corners must not exhaust the
        // call stack.
        std::vector<Piece<Vertex>> pending;
        pending.push_back({std::vector<Vertex*>(corners, corners + count), depth, cornerLimit});
        while (!pending.empty()) {
            Piece<Vertex> piece = std::move(pending.back());
            pending.pop_back();
            const int result = SplitPiece(std::move(piece), pending, addPiece);
            if (result != 0)
                return result;
        }
    } catch (const std::bad_alloc&) {
        return -301;
    }
    return 0;
}

template int SplitCorners(VMVertex* const*, int, int, int, const PieceSink<VMVertex>&);
template int SplitCorners(VMSkinVertex* const*, int, int, int, const PieceSink<VMSkinVertex>&);

int SplitPolygon(VMWorld& world, const VMPolygon& source, VMVertex* const* corners, int count, int depth,
                 int cornerLimit)
{
    return SplitCorners<VMVertex>(corners, count, depth, cornerLimit, [&](const std::vector<VMVertex*>& pieceCorners) {
        std::unique_ptr<VMPolygon> polygon = VMWorld::NewPolygon();
        if (!polygon)
            return -301;
        polygon->Corners = pieceCorners;
        polygon->Neighbours.assign(pieceCorners.size(), nullptr);
        polygon->CopySplitAttributesFrom(source);
        for (VMVisArea* area : source.Owners)
            area->Link(*polygon);
        return world.Polygons.Add(polygon.release());
    });
}
