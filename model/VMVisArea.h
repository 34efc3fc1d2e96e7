#pragma once
// A visibility zone: its box, its planes and portals, and the primitives it lists. The area's
// primitive lists mirror the primitives' owner lists: the Link/Unlink operations keep both
// sides in step, the one-sided Add/Remove operations serve passes that rebuild one side.

#include "base/VPList.h"
#include "model/VMBoundingBox.h"

#include <string>

class VMPrimitive;
class VMPolygon;
class VMTriList;
class VMPatch;
class VMHeightfield;
struct VMVisPlane;
struct VMVisPortal;
struct VMVisAntiPortal;
struct VMSubmesh;

class VMVisArea {
public:
    VMVisArea() = default;
    VMVisArea(const VMVisArea&) = delete;
    VMVisArea& operator=(const VMVisArea&) = delete;
    // Takes itself out of the owner lists of the primitives it still lists.
    ~VMVisArea();

    VMBoundingBox Box;
    // Owned by the world's plane list; the area refers to its six box planes.
    VPListT<VMVisPlane> Planes;
    VPListT<VMVisPortal> Portals;
    // The anti-portals placed in the area; owned by the world's list.
    VPListT<VMVisAntiPortal> AntiPortals;
    VPListT<VMVisArea> Neighbours;
    std::string Name;
    // Position in the world's vis-area list, valid after enumeration.
    int Index = 0;
    // The static mesh writer's submeshes of this area.
    VPListT<VMSubmesh> Submeshes;

    const VPListT<VMPolygon>& Polygons() const { return m_polygons; }
    const VPListT<VMPatch>& Patches() const { return m_patches; }
    const VPListT<VMTriList>& TriLists() const { return m_triLists; }
    const VPListT<VMHeightfield>& Heightfields() const { return m_heightfields; }

    // The sum of the four primitive list counts.
    int ElementCount() const { return m_elementCount; }
    // Recounts from the lists; enumeration calls it.
    void RecountElements();

    // Listing a primitive twice does nothing; answers 0.
    int AddPolygon(VMPolygon* polygon);
    int AddPatch(VMPatch* patch);
    int AddTriList(VMTriList* triList);
    int AddHeightfield(VMHeightfield* heightfield);
    int AddPrimitive(VMPrimitive* primitive);
    // -1 when the area does not list it.
    int RemovePolygon(const VMPolygon* polygon);
    int RemovePatch(const VMPatch* patch);
    int RemoveTriList(const VMTriList* triList);
    int RemoveHeightfield(const VMHeightfield* heightfield);
    int RemovePrimitive(const VMPrimitive* primitive);
    bool Lists(const VMPrimitive* primitive) const;

    // Empties one primitive list on this side only; the primitives keep the area as owner.
    void ClearPolygons();
    void ClearTriLists();

    // Both directions: the area lists the primitive and the primitive lists the area. Relies on
    // the two sides mirroring each other: a primitive that lists the area is taken as listed.
    int Link(VMPrimitive& primitive);
    int Unlink(VMPrimitive& primitive);
    // Both directions: the replacement takes the polygon's place in the area's list and the
    // polygon leaves the area. -1 when the area does not list the polygon.
    int ReplacePolygon(VMPolygon& polygon, VMPolygon& replacement);

private:
    VPListT<VMPolygon> m_polygons;
    VPListT<VMPatch> m_patches;
    VPListT<VMTriList> m_triLists;
    VPListT<VMHeightfield> m_heightfields;
    int m_elementCount = 0;
};
