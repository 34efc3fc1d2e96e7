#pragma once
// The materials made so far in one export, one per (shader, double-sided flag). The cache only
// refers to the materials; their container owns them.

#include <maya/MObject.h>

#include <cstdint>
#include <vector>

struct VMMaterial;

struct MaterialCacheRecord {
    MObject Shader;
    uint8_t DoubleSided = 0;
    // Null also when making the material failed, so that a broken shader is read once.
    VMMaterial* Material = nullptr;
};

class MaterialCache {
public:
    // Empties the cache and puts in the record of the missing shader.
    void Reset();
    void Clear() { m_records.clear(); }

    // Null when the pair has not been met.
    MaterialCacheRecord* Find(const MObject& shader, uint8_t doubleSided);
    MaterialCacheRecord& Add(const MObject& shader, uint8_t doubleSided);

    int Count() const { return static_cast<int>(m_records.size()); }

private:
    std::vector<MaterialCacheRecord> m_records;
};
