#include "geometry/PolygonArea.h"

#include "model/VMVertex.h"

#include <cmath>

double FanTriangleArea(const VMVertex& origin, const VMVertex& previous, const VMVertex& current)
{
    const float ax = previous.Position[0] - origin.Position[0];
    const float ay = previous.Position[1] - origin.Position[1];
    const float az = previous.Position[2] - origin.Position[2];
    const float bx = current.Position[0] - origin.Position[0];
    const float by = current.Position[1] - origin.Position[1];
    const float bz = current.Position[2] - origin.Position[2];
    const float cx = ay * bz - az * by;
    const float cy = az * bx - ax * bz;
    const float cz = ax * by - ay * bx;
    const float squaredLength = cx * cx + cy * cy + cz * cz;
    if (squaredLength == 0.0f)
        return 0.0;
    return 0.5 * std::sqrt(static_cast<double>(squaredLength));
}

double PolygonArea(const VMVertex* const* corners, int count)
{
    double area = 0.0;
    for (int k = 2; k < count; ++k)
        area += FanTriangleArea(*corners[0], *corners[k - 1], *corners[k]);
    return area;
}
