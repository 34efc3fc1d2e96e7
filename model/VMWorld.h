#pragma once
// The container of static geometry: static meshes, collision meshes, prefab meshes and the
// visibility data. Every list owns its records.

#include "model/VMBoundingBox.h"
#include "model/VMHeightfield.h"
#include "model/VMLight.h"
#include "model/VMMeshBase.h"
#include "model/VMOwnedList.h"
#include "model/VMPatch.h"
#include "model/VMPolygon.h"
#include "model/VMSubmesh.h"
#include "model/VMTriList.h"
#include "model/VMVertex.h"
#include "model/VMVisAntiPortal.h"
#include "model/VMVisArea.h"
#include "model/VMVisPlane.h"
#include "model/VMVisPortal.h"
#include "model/VMWShapeInstance3D.h"
#include "model/VMWorldRecords.h"

#include <memory>

class VMWorld : public VMMeshBase {
public:
    VMWorld() = default;
    ~VMWorld();

    VMBoundingBox Bounds;
    // Corner references of all primitives: polygon and tri-list corners, 16 or 10 per patch,
    // 4 per heightfield. Recomputed by Enumerate.
    int CornerReferenceCount = 0;

    VMOwnedList<VMTexturePlane> TexturePlanes;
    VMOwnedList<VMVertex> Vertices;
    VMOwnedList<VMPolygon> Polygons;
    VMOwnedList<VMTriList> TriLists;
    VMOwnedList<VMEntity> Entities;
    VMOwnedList<VMPatch> Patches;
    VMOwnedList<VMHeightfield> Heightfields;
    VMOwnedList<VMLight> Lights;
    VMOwnedList<VMEventArea> EventAreas;
    VMOwnedList<VMEventAreaPlane> EventAreaPlanes;
    VMOwnedList<VMVisArea> VisAreas;
    VMOwnedList<VMVisPlane> VisPlanes;
    VMOwnedList<VMVisPortal> Portals;
    VMOwnedList<VMVisAntiPortal> AntiPortals;
    VMOwnedList<VMPath> Paths;
    VMOwnedList<VMPathNode> PathNodes;
    VMOwnedList<VMShadowModel> ShadowModels;
    VMOwnedList<VMWallmark> Wallmarks;
    std::unique_ptr<VMLightGrid> LightGrid;
    VMOwnedList<VMSubmesh> Submeshes;
    VMWShapeInstance3DCollection Shapes;

    // Destroys every record; the lists end empty and the bounds at their initial values.
    void Clear();

    // Refreshes every index, the primitive numbers, the corner-reference total and the vis
    // areas' element counts. Answers 0.
    int Enumerate();

    // Factories: each answers null when memory runs out, and none adds the record.
    static std::unique_ptr<VMVertex> NewVertex();
    static std::unique_ptr<VMVertex> NewVertexCopy(const VMVertex& source);
    static std::unique_ptr<VMPolygon> NewPolygon();
    static std::unique_ptr<VMPolygon> NewTriangle(VMVertex* a, VMVertex* b, VMVertex* c);
    static std::unique_ptr<VMTriList> NewTriList();
    static std::unique_ptr<VMPatch> NewPatch(bool triangular);
    static std::unique_ptr<VMHeightfield> NewHeightfield();
    static std::unique_ptr<VMLight> NewLight();
    static std::unique_ptr<VMVisArea> NewVisArea();
    static std::unique_ptr<VMVisPlane> NewVisPlane();
    static std::unique_ptr<VMVisPortal> NewPortal(int cornerCount);
    static std::unique_ptr<VMVisAntiPortal> NewAntiPortal(int cornerCount);
    static std::unique_ptr<VMSubmesh> NewSubmesh();
    static std::unique_ptr<VMTexturePlane> NewTexturePlane();
    static std::unique_ptr<VMEntity> NewEntity();
    static std::unique_ptr<VMEventArea> NewEventArea();
    static std::unique_ptr<VMEventAreaPlane> NewEventAreaPlane();
    static std::unique_ptr<VMPath> NewPath();
    static std::unique_ptr<VMPathNode> NewPathNode();
    static std::unique_ptr<VMShadowModel> NewShadowModel();
    static std::unique_ptr<VMWallmark> NewWallmark();

    // Replaces the area's planes by the six planes of its box: for x, y and z in turn the
    // lower face (normal +1 on the axis, d = -minimum), then the upper face (normal -1,
    // d = maximum). The old planes leave the world's plane list and are destroyed. Answers 0,
    // or -301 when memory runs out (the area then has no planes).
    int RebuildBoxPlanes(VMVisArea& area);
};
