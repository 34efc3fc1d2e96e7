#include "harvest/MaterialCache.h"

void MaterialCache::Reset()
{
    m_records.clear();
    m_records.push_back(MaterialCacheRecord{});
}

MaterialCacheRecord* MaterialCache::Find(const MObject& shader, uint8_t doubleSided)
{
    for (MaterialCacheRecord& record : m_records)
        if (record.DoubleSided == doubleSided && record.Shader == shader)
            return &record;
    return nullptr;
}

MaterialCacheRecord& MaterialCache::Add(const MObject& shader, uint8_t doubleSided)
{
    m_records.push_back(MaterialCacheRecord{shader, doubleSided, nullptr});
    return m_records.back();
}
