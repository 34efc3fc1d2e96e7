#include "model/ComputeWorldBounds.h"

#include "model/VMWorld.h"

namespace {

// A heightfield's heights span a signed byte's range around its first corner.
constexpr float HeightBelow = 127.0f;
constexpr float HeightAbove = 128.0f;

} // namespace

void ComputeWorldBounds(VMWorld& world)
{
    world.Bounds.Reset();
    for (const VMVertex* vertex : world.Vertices)
        if (vertex != nullptr)
            world.Bounds.Grow(vertex->Position);

    for (const VMHeightfield* heightfield : world.Heightfields) {
        if (heightfield == nullptr || heightfield->Corners.empty() || heightfield->Corners[0] == nullptr)
            continue;
        const float* corner = heightfield->Corners[0]->Position;
        const float below[3] = {corner[0], corner[1], corner[2] - HeightBelow * heightfield->HeightScale};
        const float above[3] = {corner[0], corner[1], corner[2] + HeightAbove * heightfield->HeightScale};
        world.Bounds.Grow(below);
        world.Bounds.Grow(above);
    }
}
