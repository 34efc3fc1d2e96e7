#include "formats/ShapeOrientation.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double ToDegrees = 180.0 / std::numbers::pi;

} // namespace

void OrientationFromAxes(const float forward[3], const float down[3], float orientation[3])
{
    // Columns of the rotation: x = forward, z = -down, y = z cross x.
    const double x[3] = {forward[0], forward[1], forward[2]};
    const double z[3] = {-down[0], -down[1], -down[2]};
    const double y[3] = {z[1] * x[2] - z[2] * x[1], z[2] * x[0] - z[0] * x[2], z[0] * x[1] - z[1] * x[0]};
    const double pitch = std::asin(std::clamp(-x[2], -1.0, 1.0));
    double yaw = 0.0;
    double roll = 0.0;
    if (std::abs(x[2]) < 0.99999) {
        yaw = std::atan2(x[1], x[0]);
        roll = std::atan2(y[2], z[2]);
    } else {
        // Looking straight up or down, yaw and roll turn about the same axis; all of it is yaw.
        yaw = std::atan2(-y[0], y[1]);
    }
    orientation[0] = static_cast<float>(yaw * ToDegrees);
    orientation[1] = static_cast<float>(pitch * ToDegrees);
    orientation[2] = static_cast<float>(roll * ToDegrees);
}

void ForwardFromOrientation(const float orientation[3], float forward[3])
{
    const double yaw = orientation[0] / ToDegrees;
    const double pitch = orientation[1] / ToDegrees;
    forward[0] = static_cast<float>(std::cos(yaw) * std::cos(pitch));
    forward[1] = static_cast<float>(std::sin(yaw) * std::cos(pitch));
    forward[2] = static_cast<float>(-std::sin(pitch));
}
