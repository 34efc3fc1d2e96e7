#pragma once
// The fields that every primitive of a world shares (polygons, tri-lists, patches,
// heightfields) and the reference-counted material.
//
// A primitive and the vis areas in its owner list mirror each other; a primitive that is
// destroyed takes itself out of its areas, and gives its material's use back.

#include "base/VPList.h"

#include <cstdint>
#include <string>
#include <vector>

struct VMMaterial;
struct VMVertex;
// The group attribute of a primitive that belongs to no group.
inline constexpr uint32_t NoGroup = 0xFFFFFFFFu;

class VMVisArea;

enum class VMPrimitiveKind { Polygon, TriList, Patch, Heightfield };

class VMPrimitive {
public:
    VMPrimitive(const VMPrimitive&) = delete;
    VMPrimitive& operator=(const VMPrimitive&) = delete;

    uint64_t AttributeBits = 0;
    uint32_t AttributeWord = 0;
    // The mesh node number of the Maya node the primitive came from.
    uint32_t SourceNode = 0;
    // Position in its list and number among all primitives of the world; valid after enumeration.
    uint32_t Index = 0;
    int32_t PrimitiveNumber = -1;
    // The node's render attributes: collision flags in the low 16 bits, shadow and render flags.
    int32_t CollisionFlags = -1;
    int32_t CastShadows = 1;
    int32_t Visible = 1;
    int32_t LayerAttribute = -1;
    // In winding order.
    std::vector<VMVertex*> Corners;
    // The vis areas that list this primitive.
    VPListT<VMVisArea> Owners;
    std::string Name;
    uint32_t NameAttribute = 0;
    float Factors[3] = {1.0f, 1.0f, 1.0f};
    uint32_t Opacity = 255;

    VMPrimitiveKind Kind() const { return m_kind; }
    int CornerCount() const { return static_cast<int>(Corners.size()); }

    VMMaterial* Material() const { return m_material; }
    // Raises the new material's use count and lowers the old one's (never below 0).
    void SetMaterial(VMMaterial* material);

    // The attribute copy of every pass that makes a primitive from another: the attribute
    // words, source node, the four render attributes, name, name attribute, opacity and the
    // material (with its use count); not the corners, owners, numbering or factors.
    void CopyAttributesFrom(const VMPrimitive& source);

protected:
    explicit VMPrimitive(VMPrimitiveKind kind) : m_kind(kind) {}
    ~VMPrimitive();

    // Each concrete kind calls it from its destructor, while the record is still whole.
    void LeaveOwners();

private:
    VMPrimitiveKind m_kind;
    VMMaterial* m_material = nullptr;
};
