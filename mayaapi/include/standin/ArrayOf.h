#pragma once

#include <maya/MStatus.h>

#include <vector>

namespace standin {

// The common body of Maya's value arrays (MIntArray, MPointArray, ...): contiguous storage with Maya's method names.
template <typename T>
class ArrayOf {
public:
  ArrayOf() = default;
  ArrayOf(unsigned int count, const T& initial = T()) : m_items(count, initial) {}
  ArrayOf(const T* items, unsigned int count) : m_items(items, items + count) {}

  unsigned int length() const { return static_cast<unsigned int>(m_items.size()); }
  MStatus setLength(unsigned int count) { m_items.resize(count); return MS::kSuccess; }
  MStatus append(const T& item) { m_items.push_back(item); return MS::kSuccess; }
  MStatus insert(const T& item, unsigned int index)
  {
    if (index > m_items.size())
      return MS::kInvalidParameter;
    m_items.insert(m_items.begin() + index, item);
    return MS::kSuccess;
  }
  MStatus remove(unsigned int index)
  {
    if (index >= m_items.size())
      return MS::kInvalidParameter;
    m_items.erase(m_items.begin() + index);
    return MS::kSuccess;
  }
  MStatus set(const T& item, unsigned int index)
  {
    if (index >= m_items.size())
      return MS::kInvalidParameter;
    m_items[index] = item;
    return MS::kSuccess;
  }
  MStatus clear() { m_items.clear(); return MS::kSuccess; }
  MStatus get(T* out) const
  {
    for (size_t i = 0; i < m_items.size(); ++i)
      out[i] = m_items[i];
    return MS::kSuccess;
  }
  MStatus copy(const ArrayOf& source) { m_items = source.m_items; return MS::kSuccess; }
  T& operator[](unsigned int index) { return m_items[index]; }
  const T& operator[](unsigned int index) const { return m_items[index]; }

  std::vector<T>& items() { return m_items; }
  const std::vector<T>& items() const { return m_items; }

private:
  std::vector<T> m_items;
};

}
