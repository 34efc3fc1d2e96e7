#include "formats/StaticMeshLayout.h"

#include "model/VMWorld.h"

#include <algorithm>
#include <climits>

namespace {

void AppendWorldNumbers(const VPListT<VMVertex>& list, std::vector<int32_t>& numbers)
{
    for (const VMVertex* vertex : list)
        numbers.push_back(static_cast<int32_t>(vertex->Index));
}

void RangeOf(const int32_t* numbers, size_t count, int32_t& first, int32_t& last)
{
    if (count == 0) {
        first = 0;
        last = -1;
        return;
    }
    const auto [lowest, highest] = std::minmax_element(numbers, numbers + count);
    first = *lowest;
    last = *highest;
}

// A submesh's copies: its first use of a world vertex appends it to the output.
class SubmeshNumbering {
public:
    SubmeshNumbering(size_t worldVertexCount, VStaticMeshLayout& layout)
        : m_owner(worldVertexCount, -1), m_number(worldVertexCount, 0), m_layout(layout)
    {
    }

    void Append(const VPListT<VMVertex>& list, int32_t submesh, std::vector<int32_t>& numbers)
    {
        for (const VMVertex* vertex : list) {
            const size_t old = vertex->Index;
            if (m_owner[old] != submesh) {
                m_owner[old] = submesh;
                m_number[old] = static_cast<int32_t>(m_layout.Vertices.size());
                m_layout.Vertices.push_back(vertex);
            }
            numbers.push_back(m_number[old]);
        }
    }

private:
    std::vector<int32_t> m_owner;
    std::vector<int32_t> m_number;
    VStaticMeshLayout& m_layout;
};

size_t TotalCount(const VMWorld& world, bool shadow)
{
    size_t total = 0;
    for (const VMSubmesh* submesh : world.Submeshes)
        total += static_cast<size_t>((shadow ? submesh->ShadowIndices : submesh->RenderIndices).Count());
    return total;
}

} // namespace

VStaticMeshLayout LayOutStaticMesh(VMWorld& world, bool perSubmesh)
{
    VStaticMeshLayout layout;
    layout.RenderIndices.reserve(TotalCount(world, false));
    layout.ShadowIndices.reserve(TotalCount(world, true));
    if (!perSubmesh) {
        layout.Vertices.assign(world.Vertices.begin(), world.Vertices.end());
        for (const VMSubmesh* submesh : world.Submeshes) {
            AppendWorldNumbers(submesh->RenderIndices, layout.RenderIndices);
            AppendWorldNumbers(submesh->ShadowIndices, layout.ShadowIndices);
        }
        return layout;
    }

    SubmeshNumbering numbering(static_cast<size_t>(world.Vertices.Count()), layout);
    for (VMSubmesh* submesh : world.Submeshes) {
        const size_t renderStart = layout.RenderIndices.size();
        const size_t shadowStart = layout.ShadowIndices.size();
        numbering.Append(submesh->ShadowIndices, submesh->Number, layout.ShadowIndices);
        numbering.Append(submesh->RenderIndices, submesh->Number, layout.RenderIndices);
        RangeOf(layout.RenderIndices.data() + renderStart, layout.RenderIndices.size() - renderStart,
                submesh->RenderFirstVertex, submesh->RenderLastVertex);
        RangeOf(layout.ShadowIndices.data() + shadowStart, layout.ShadowIndices.size() - shadowStart,
                submesh->ShadowFirstVertex, submesh->ShadowLastVertex);
    }
    return layout;
}
