#pragma once
// A polygon of a skinned model; harvested faces are triangles.

#include <cstddef>
#include <vector>

struct VMMaterial;
struct VMSkinVertex;

class VMFace {
public:
    VMFace() = default;
    VMFace(const VMFace&) = delete;
    VMFace& operator=(const VMFace&) = delete;
    // Gives the material's use back.
    ~VMFace();

    int CornerCount() const { return static_cast<int>(m_corners.size()); }
    const std::vector<VMSkinVertex*>& Corners() const { return m_corners; }
    VMSkinVertex* Corner(int index) const { return m_corners[static_cast<size_t>(index)]; }
    void SetCorner(int index, VMSkinVertex* vertex) { m_corners[static_cast<size_t>(index)] = vertex; }
    // A second pointer per corner, kept in step with the corners.
    VMSkinVertex* CornerLink(int index) const { return m_cornerLinks[static_cast<size_t>(index)]; }
    void SetCornerLink(int index, VMSkinVertex* vertex) { m_cornerLinks[static_cast<size_t>(index)] = vertex; }

    // Appends a corner to both arrays; -301 when memory runs out, and the face keeps its old corners.
    int AddCorner(VMSkinVertex* vertex);
    void ReverseCorners();

    VMMaterial* Material() const { return m_material; }
    // Raises the new material's use count and lowers the old one's (never below 0).
    void SetMaterial(VMMaterial* material);

    int Index = 0;

private:
    std::vector<VMSkinVertex*> m_corners;
    std::vector<VMSkinVertex*> m_cornerLinks;
    VMMaterial* m_material = nullptr;
};
