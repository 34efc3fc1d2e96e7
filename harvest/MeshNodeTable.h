#pragma once
// One entry per exported mesh node, in export order: where its vertices start in the model, so
// that skinning and vertex animation can find a node's vertices again by its path.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct MeshNodeEntry {
    int32_t VertexCount = 0;
    int32_t VertexBase = 0;
    std::string Name;
};

class MeshNodeTable {
public:
    // Names are kept to 255 characters.
    static constexpr size_t MaxNameLength = 255;

    void Reset(int expectedCount);
    // Grows as needed, so a walk that meets more nodes than the precalculation counted is safe.
    void Add(std::string_view name, int32_t vertexCount, int32_t vertexBase);

    // Compares full path names in entry order, tracing each comparison; -1 when none matches.
    int Find(std::string_view fullPathName) const;

    int Count() const { return static_cast<int>(m_entries.size()); }
    const MeshNodeEntry& operator[](int index) const { return m_entries[static_cast<size_t>(index)]; }

private:
    std::vector<MeshNodeEntry> m_entries;
};
