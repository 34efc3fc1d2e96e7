#include "harvest/MeshNodeTable.h"

#include "report/DebugFile.h"

#include <algorithm>

void MeshNodeTable::Reset(int expectedCount)
{
    m_entries.clear();
    m_entries.reserve(static_cast<size_t>(std::max(expectedCount, 0)));
}

void MeshNodeTable::Add(std::string_view name, int32_t vertexCount, int32_t vertexBase)
{
    MeshNodeEntry entry;
    entry.VertexCount = vertexCount;
    entry.VertexBase = vertexBase;
    entry.Name = std::string(name.substr(0, MaxNameLength));
    m_entries.push_back(std::move(entry));
}

int MeshNodeTable::Find(std::string_view fullPathName) const
{
    const std::string searched(fullPathName);
    for (size_t i = 0; i < m_entries.size(); ++i) {
        DebugPrint("Comp: [%s:%s]\n", searched.c_str(), m_entries[i].Name.c_str());
        if (m_entries[i].Name == searched)
            return static_cast<int>(i);
    }
    return -1;
}
