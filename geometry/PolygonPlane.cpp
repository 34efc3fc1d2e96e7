#include "geometry/PolygonPlane.h"

#include "model/VMPolygon.h"
#include "model/VMVertex.h"

#include <algorithm>
#include <cmath>

namespace {

void Difference(const VMVertex& to, const VMVertex& from, double out[3])
{
    for (int axis = 0; axis < 3; ++axis)
        out[axis] = static_cast<double>(to.Position[axis]) - static_cast<double>(from.Position[axis]);
}

}

bool PolygonPlane(VMPolygon& polygon, double plane[4])
{
    if (polygon.HasValidPlane()) {
        std::copy(std::begin(polygon.Plane), std::end(polygon.Plane), plane);
        return true;
    }
    const int count = polygon.CornerCount();
    if (count < 3)
        return false;

    double best[3] = {0.0, 0.0, 0.0};
    double bestSquaredLength = 0.0;
    for (int i = 0; i + 2 < count; ++i) {
        const VMVertex& origin = *polygon.Corners[static_cast<size_t>(i)];
        double edge[3];
        Difference(*polygon.Corners[static_cast<size_t>(i + 1)], origin, edge);
        for (int j = i + 2; j < count; ++j) {
            double toCorner[3];
            Difference(*polygon.Corners[static_cast<size_t>(j)], origin, toCorner);
            const double cross[3] = {edge[1] * toCorner[2] - edge[2] * toCorner[1],
                                     edge[2] * toCorner[0] - edge[0] * toCorner[2],
                                     edge[0] * toCorner[1] - edge[1] * toCorner[0]};
            const double squaredLength = cross[0] * cross[0] + cross[1] * cross[1] + cross[2] * cross[2];
            if (squaredLength > bestSquaredLength) {
                bestSquaredLength = squaredLength;
                std::copy(std::begin(cross), std::end(cross), best);
            }
        }
    }
    if (!(bestSquaredLength > 0.0))
        return false;

    const double length = std::sqrt(bestSquaredLength);
    if (!(length > 0.0)) {
        std::fill(std::begin(polygon.Plane), std::end(polygon.Plane), 0.0);
        return false;
    }
    const VMVertex& first = *polygon.Corners[0];
    polygon.Plane[0] = best[0] / length;
    polygon.Plane[1] = best[1] / length;
    polygon.Plane[2] = best[2] / length;
    polygon.Plane[3] = polygon.Plane[0] * first.Position[0] + polygon.Plane[1] * first.Position[1] +
                       polygon.Plane[2] * first.Position[2];
    polygon.PlaneFlags |= VMPolygon::PlaneValidFlag;
    std::copy(std::begin(polygon.Plane), std::end(polygon.Plane), plane);
    return true;
}
