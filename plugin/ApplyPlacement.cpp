#include "plugin/ApplyPlacement.h"

#include "model/VMTransform.h"
#include "model/VMWorld.h"

namespace {

void TransformPointInPlace(const VMTransform& transform, float point[3])
{
    const float in[3] = {point[0], point[1], point[2]};
    transform.TransformPoint(in, point);
}

void TransformDirectionInPlace(const VMTransform& transform, float direction[3])
{
    const float in[3] = {direction[0], direction[1], direction[2]};
    transform.TransformDirection(in, direction);
}

} // namespace

void ApplyPlacement(VMWorld& world, const VMTransform& placement)
{
    for (VMVertex* vertex : world.Vertices) {
        TransformPointInPlace(placement, vertex->Position);
        TransformDirectionInPlace(placement, vertex->Normal);
        TransformDirectionInPlace(placement, vertex->Tangent);
    }
    for (VMLight* light : world.Lights) {
        TransformPointInPlace(placement, light->Position);
        TransformDirectionInPlace(placement, light->Direction);
        TransformDirectionInPlace(placement, light->SecondAxis);
    }
    for (VMVisPortal* portal : world.Portals) {
        for (const auto& corner : portal->Corners)
            TransformPointInPlace(placement, corner->Position);
    }
}
