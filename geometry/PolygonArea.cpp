#include "geometry/PolygonArea.h"

#include <cmath>

double FanTriangleArea(const VMVertexData& origin, const VMVertexData& previous, const VMVertexData& current)
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
