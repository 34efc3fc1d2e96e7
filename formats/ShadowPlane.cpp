#include "formats/ShadowPlane.h"

#include <cfloat>
#include <cmath>

void ComputeShadowPlane(const float a[3], const float b[3], const float c[3], float plane[4])
{
    const float ca[3] = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
    const float ba[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
    float normal[3] = {
        ca[1] * ba[2] - ca[2] * ba[1],
        ca[2] * ba[0] - ca[0] * ba[2],
        ca[0] * ba[1] - ca[1] * ba[0],
    };
    const float length = std::sqrt(normal[0] * normal[0] + normal[1] * normal[1] + normal[2] * normal[2]);
    if (length >= FLT_EPSILON) {
        for (float& component : normal)
            component /= length;
    }
    plane[0] = normal[0];
    plane[1] = normal[1];
    plane[2] = normal[2];
    plane[3] = -(normal[0] * a[0] + normal[1] * a[1] + normal[2] * a[2]);
}
