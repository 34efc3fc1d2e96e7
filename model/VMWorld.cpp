#include "model/VMWorld.h"

#include "model/MakeRecord.h"

namespace {

template <class T>
void NumberByPosition(const VMOwnedList<T>& list)
{
    int index = 0;
    for (T* record : list) {
        if (record != nullptr)
            record->Index = index;
        ++index;
    }
}

template <class T>
void NumberPrimitives(const VMOwnedList<T>& list, int& primitiveNumber, int& cornerTotal)
{
    uint32_t index = 0;
    for (T* primitive : list) {
        if (primitive != nullptr) {
            primitive->Index = index;
            primitive->PrimitiveNumber = primitiveNumber++;
            cornerTotal += primitive->CornerCount();
        }
        ++index;
    }
}

} // namespace

VMWorld::~VMWorld()
{
    Clear();
}

void VMWorld::Clear()
{
    // The areas go first: each takes itself out of the few owner lists of its primitives,
    // whereas a primitive leaving first would search its areas' long primitive lists.
    VisAreas.Clear();
    Polygons.Clear();
    TriLists.Clear();
    Patches.Clear();
    Heightfields.Clear();
    Submeshes.Clear();
    VisPlanes.Clear();
    Portals.Clear();
    AntiPortals.Clear();
    Vertices.Clear();
    TexturePlanes.Clear();
    Entities.Clear();
    Lights.Clear();
    EventAreas.Clear();
    EventAreaPlanes.Clear();
    Paths.Clear();
    PathNodes.Clear();
    ShadowModels.Clear();
    Wallmarks.Clear();
    LightGrid.reset();
    Shapes.Clear();
    ClearMeshBase();
    Bounds.Reset();
    CornerReferenceCount = 0;
}

int VMWorld::Enumerate()
{
    CornerReferenceCount = 0;
    EnumerateMaterials();
    NumberByPosition(Vertices);

    int primitiveNumber = 0;
    NumberPrimitives(Polygons, primitiveNumber, CornerReferenceCount);
    NumberPrimitives(TriLists, primitiveNumber, CornerReferenceCount);
    NumberPrimitives(Patches, primitiveNumber, CornerReferenceCount);
    NumberPrimitives(Heightfields, primitiveNumber, CornerReferenceCount);

    NumberByPosition(TexturePlanes);
    NumberByPosition(Entities);
    NumberByPosition(Lights);
    NumberByPosition(EventAreas);
    NumberByPosition(EventAreaPlanes);
    NumberByPosition(VisAreas);
    NumberByPosition(VisPlanes);
    NumberByPosition(Portals);
    NumberByPosition(AntiPortals);
    NumberByPosition(Paths);
    NumberByPosition(PathNodes);
    NumberByPosition(ShadowModels);
    NumberByPosition(Wallmarks);

    int submeshNumber = 0;
    for (VMSubmesh* submesh : Submeshes) {
        if (submesh != nullptr)
            submesh->Number = submeshNumber;
        ++submeshNumber;
    }

    for (VMVisArea* area : VisAreas)
        if (area != nullptr)
            area->RecountElements();
    return 0;
}

std::unique_ptr<VMVertex> VMWorld::NewVertex() { return MakeRecord<VMVertex>(); }
std::unique_ptr<VMVertex> VMWorld::NewVertexCopy(const VMVertex& source) { return source.Copy(); }
std::unique_ptr<VMPolygon> VMWorld::NewPolygon() { return MakeRecord<VMPolygon>(); }
std::unique_ptr<VMPolygon> VMWorld::NewTriangle(VMVertex* a, VMVertex* b, VMVertex* c)
{
    return MakeRecord<VMPolygon>(a, b, c);
}
std::unique_ptr<VMTriList> VMWorld::NewTriList() { return MakeRecord<VMTriList>(); }
std::unique_ptr<VMPatch> VMWorld::NewPatch(bool triangular) { return MakeRecord<VMPatch>(triangular); }
std::unique_ptr<VMHeightfield> VMWorld::NewHeightfield() { return MakeRecord<VMHeightfield>(); }
std::unique_ptr<VMLight> VMWorld::NewLight() { return MakeRecord<VMLight>(); }
std::unique_ptr<VMVisArea> VMWorld::NewVisArea() { return MakeRecord<VMVisArea>(); }
std::unique_ptr<VMVisPlane> VMWorld::NewVisPlane() { return MakeRecord<VMVisPlane>(); }
std::unique_ptr<VMVisPortal> VMWorld::NewPortal(int cornerCount) { return VMVisPortal::Create(cornerCount); }
std::unique_ptr<VMVisAntiPortal> VMWorld::NewAntiPortal(int cornerCount)
{
    return VMVisAntiPortal::Create(cornerCount);
}
std::unique_ptr<VMSubmesh> VMWorld::NewSubmesh() { return MakeRecord<VMSubmesh>(); }
std::unique_ptr<VMTexturePlane> VMWorld::NewTexturePlane() { return MakeRecord<VMTexturePlane>(); }
std::unique_ptr<VMEntity> VMWorld::NewEntity() { return MakeRecord<VMEntity>(); }
std::unique_ptr<VMEventArea> VMWorld::NewEventArea() { return MakeRecord<VMEventArea>(); }
std::unique_ptr<VMEventAreaPlane> VMWorld::NewEventAreaPlane() { return MakeRecord<VMEventAreaPlane>(); }
std::unique_ptr<VMPath> VMWorld::NewPath() { return MakeRecord<VMPath>(); }
std::unique_ptr<VMPathNode> VMWorld::NewPathNode() { return MakeRecord<VMPathNode>(); }
std::unique_ptr<VMShadowModel> VMWorld::NewShadowModel() { return MakeRecord<VMShadowModel>(); }
std::unique_ptr<VMWallmark> VMWorld::NewWallmark() { return MakeRecord<VMWallmark>(); }

int VMWorld::RebuildBoxPlanes(VMVisArea& area)
{
    for (VMVisPlane* plane : area.Planes)
        VisPlanes.Remove(VisPlanes.Find(plane));
    area.Planes.Clear();

    for (int axis = 0; axis < 3; ++axis) {
        for (int side = 0; side < 2; ++side) {
            std::unique_ptr<VMVisPlane> plane = NewVisPlane();
            if (!plane)
                return -301;
            const bool lowerFace = side == 0;
            plane->Normal[axis] = lowerFace ? 1.0 : -1.0;
            plane->D = lowerFace ? -static_cast<double>(area.Box.Min[axis]) : static_cast<double>(area.Box.Max[axis]);
            plane->Area = &area;
            area.Planes.Add(plane.get());
            if (VisPlanes.Add(std::move(plane)) != 0) {
                area.Planes.Remove(area.Planes.Count() - 1);
                return -301;
            }
        }
    }
    return 0;
}
