#pragma once

#include <maya/MDagPath.h>
#include <maya/MItMeshVertex.h>
#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

// The points of a geometry (all of them or a vertex component), as deformers see them.
class MItGeometry {
public:
  MItGeometry(const MDagPath& dagPath, const MObject& component = MObject::kNullObj, MStatus* status = nullptr);

  bool isDone(MStatus* status = nullptr) const { return m_vertices.isDone(status); }
  MStatus next() { return m_vertices.next(); }
  MStatus reset() { return m_vertices.reset(); }
  int count(MStatus* status = nullptr) const { return m_vertices.count(status); }
  int index(MStatus* status = nullptr) const { return m_vertices.index(status); }
  MObject component(MStatus* status = nullptr) const;
  MPoint position(MSpace::Space space = MSpace::kObject, MStatus* status = nullptr) const
  {
    return m_vertices.position(space, status);
  }

private:
  MItMeshVertex m_vertices;
};
