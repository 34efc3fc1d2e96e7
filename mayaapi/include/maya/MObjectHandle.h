#pragma once

#include <maya/MObject.h>

// A handle that outlives its MObject copies and can key a table of nodes.
class MObjectHandle {
public:
  MObjectHandle() = default;
  MObjectHandle(const MObject& object) : m_object(object) {}

  MObject object() const { return m_object; }
  const MObject& objectRef() const { return m_object; }
  bool isValid() const { return !m_object.isNull(); }
  bool isAlive() const { return !m_object.isNull(); }
  unsigned int hashCode() const;

  bool operator==(const MObjectHandle& other) const { return m_object == other.m_object; }
  bool operator!=(const MObjectHandle& other) const { return !(*this == other); }

private:
  MObject m_object;
};
