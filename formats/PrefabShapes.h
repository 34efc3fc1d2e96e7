#pragma once
// The shape classes of a prefab file: each writes its "class" and its properties into a "shape"
// element, or reads them back. Property names, their order and the conditions under which a
// property is written are the editor's; values are written locale-free (see ShapeProperty).

#include "model/VMWShapeInstance3D.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

struct VMLight;
class ShapePropertyExchange;

// The properties every shape carries, and ExchangeXML built on the class's own properties.
class VMWPrefabShape : public VMWShapeInstance3D {
public:
    bool ExchangeXML(VMWShapeInstance3DCollection& owner, tinyxml2::XMLElement& element, bool write) final;

protected:
    virtual void ExchangeOwnProperties(ShapePropertyExchange& exchange) = 0;
};

class VMWStaticMeshInstance final : public VMWPrefabShape {
public:
    const char* GetClassName() const override { return "StaticMeshShape"; }

    std::string MeshFileName;
    uint32_t VisibleBitmask = 0xFFFFFFFFu;
    uint32_t LightInfluenceBitmask = 0xFFFFu;
    uint32_t CollisionBitmask = 0xFFFFu;
    bool CastStaticShadows = true;
    bool CastDynamicShadows = false;

protected:
    void ExchangeOwnProperties(ShapePropertyExchange& exchange) override;
};

class VMWEntityInstance final : public VMWPrefabShape {
public:
    const char* GetClassName() const override { return "EntityShape"; }
    // Takes "origin", "orientation", "entityKey" and "modelFile" from the key list first.
    void Prepare(VMWShapeInstance3DCollection& owner, int index) override;

    std::string EntityClass;
    std::string ModelFile;
    std::string EntityKey;
    uint32_t VisibleBitmask = 0xFFFFFFFFu;
    bool CastStaticShadows = true;
    bool CastDynamicShadows = false;
    uint32_t LightInfluenceBitmask = 0xFFFFu;
    float LightGridSampleOfs[3] = {0.0f, 0.0f, 0.0f};
    // Keys compare ignoring case.
    std::vector<std::pair<std::string, std::string>> Keys;

protected:
    std::string DefaultName(int index) const override;
    void ExchangeOwnProperties(ShapePropertyExchange& exchange) override;
};

class VMWLightInstance final : public VMWPrefabShape {
public:
    static constexpr int32_t PointType = 1;
    static constexpr int32_t DirectionalType = 3;
    static constexpr int32_t SpotType = 5;

    const char* GetClassName() const override { return "DynLightShape"; }
    // Makes the packed colour from the float channels.
    void Prepare(VMWShapeInstance3DCollection& owner, int index) override;

    int32_t Type = PointType;
    bool Dynamic = false;
    float Radius = 0.0f;
    float Multiplier = 1.0f;
    float SpotAngle = 0.0f;
    std::string ProjectedTexture;
    // 0 to 1; Prepare packs them into Colour.
    float Red = 1.0f;
    float Green = 1.0f;
    float Blue = 1.0f;
    // 0xAARRGGBB.
    uint32_t Colour = 0xFFFFFFFFu;
    std::string LightKey;
    int32_t WorldInfluenceMask = 1;
    int32_t ObjectInfluenceMask = 1;
    // The light's flag bits (VMLight).
    uint32_t Flags = 0;
    std::string CoronaTexture;
    std::string AnimationCurve;
    float AnimationTiming = 0.0f;
    float AnimationPhase = 0.0f;

protected:
    std::string DefaultName(int index) const override;
    void ExchangeOwnProperties(ShapePropertyExchange& exchange) override;
};

class VMWVisibilityZoneInstance;

class VMWPortalInstance final : public VMWPrefabShape {
public:
    const char* GetClassName() const override { return "PortalShape"; }
    // Finds the portal and zone that the target IDs name.
    void ResolveReferences(VMWShapeInstance3DCollection& owner) override;
    // Takes the IDs of the target shapes where no IDs are set; a portal named "OUTSIDE..." leads
    // outside, and so then does the zone it leads to.
    void LinkTargets(VMWShapeInstance3DCollection& owner) override;

    uint64_t TargetPortalID = 0;
    uint64_t TargetZoneID = 0;
    // Three floats per vertex, relative to the shape's position.
    std::vector<float> LocalVertexPositions;
    bool LeadsToOutside = false;
    VMWPortalInstance* TargetPortal = nullptr;
    VMWVisibilityZoneInstance* TargetZone = nullptr;

protected:
    void ExchangeOwnProperties(ShapePropertyExchange& exchange) override;
};

class VMWVisibilityZoneInstance final : public VMWPrefabShape {
public:
    const char* GetClassName() const override { return "VisibilityZoneShape"; }

    float BoundingBoxMin[3] = {0.0f, 0.0f, 0.0f};
    float BoundingBoxMax[3] = {0.0f, 0.0f, 0.0f};
    uint32_t DebugColor = 0xFFFFFFFFu;
    // The zone's submeshes of the static mesh file.
    std::vector<int32_t> SubMeshIndices;
    bool MergeWithOutside = false;

protected:
    void ExchangeOwnProperties(ShapePropertyExchange& exchange) override;
};

// The light-grid detail and box shapes differ only in their class name.
class VMWLightGridInstance final : public VMWPrefabShape {
public:
    explicit VMWLightGridInstance(bool box) : m_box(box) {}
    const char* GetClassName() const override { return m_box ? "LightGridBoxShape" : "LightGridDetailShape"; }

    float BoxSize[3] = {0.0f, 0.0f, 0.0f};
    int32_t SubDiv[3] = {1, 1, 1};

protected:
    void ExchangeOwnProperties(ShapePropertyExchange& exchange) override;

private:
    bool m_box;
};

class VMWCameraPositionInstance final : public VMWPrefabShape {
public:
    const char* GetClassName() const override { return "CameraPositionShape"; }

    std::string ObjectKey;

protected:
    void ExchangeOwnProperties(ShapePropertyExchange& exchange) override;
};

// The shape for a "class" text; null for a text that names none.
std::unique_ptr<VMWPrefabShape> NewPrefabShape(std::string_view className);

// The light's shape: its position, the orientation of its direction and second axis (for
// directional and spot lights), colour, radius, cone and engine attributes.
std::unique_ptr<VMWLightInstance> MakeLightShape(const VMLight& light);
