#include "model/VMFace.h"

#include "model/VMMaterial.h"

#include <algorithm>
#include <new>

VMFace::~VMFace()
{
    SetMaterial(nullptr);
}

int VMFace::AddCorner(VMSkinVertex* vertex)
{
    try {
        // Room in both arrays first, so that running out of memory leaves them in step.
        m_corners.reserve(m_corners.size() + 1);
        m_cornerLinks.reserve(m_cornerLinks.size() + 1);
    } catch (const std::bad_alloc&) {
        return -301;
    }
    m_corners.push_back(vertex);
    m_cornerLinks.push_back(nullptr);
    return 0;
}

void VMFace::ReverseCorners()
{
    std::reverse(m_corners.begin(), m_corners.end());
    std::reverse(m_cornerLinks.begin(), m_cornerLinks.end());
}

void VMFace::SetMaterial(VMMaterial* material)
{
    if (material == m_material)
        return;
    if (material != nullptr)
        ++material->UseCount;
    if (m_material != nullptr && m_material->UseCount > 0)
        --m_material->UseCount;
    m_material = material;
}
