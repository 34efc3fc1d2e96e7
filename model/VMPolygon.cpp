#include "model/VMPolygon.h"

#include <algorithm>

VMPolygon::VMPolygon(VMVertex* a, VMVertex* b, VMVertex* c)
    : VMPrimitive(VMPrimitiveKind::Polygon)
    , Neighbours(3, nullptr)
{
    Corners = {a, b, c};
}

void VMPolygon::CopySplitAttributesFrom(const VMPolygon& source)
{
    CopyAttributesFrom(source);
    std::copy(std::begin(source.PolygonAttributes), std::end(source.PolygonAttributes), PolygonAttributes);
    std::copy(std::begin(source.Subdivisions), std::end(source.Subdivisions), Subdivisions);
    std::copy(std::begin(source.SurfaceValues), std::end(source.SurfaceValues), SurfaceValues);
    Group = source.Group;
    std::copy(std::begin(source.Plane), std::end(source.Plane), Plane);
    PlaneFlags = (PlaneFlags & ~PlaneValidFlag) | (source.PlaneFlags & PlaneValidFlag);
}
