#pragma once

#include <maya/MDagPath.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>

#include <memory>
#include <vector>

namespace standin {
struct Mesh;
}

class MItMeshVertex {
public:
  MItMeshVertex(const MObject& polyObject, MStatus* status = nullptr);
  MItMeshVertex(const MDagPath& polyObject, const MObject& component = MObject::kNullObj, MStatus* status = nullptr);

  bool isDone(MStatus* status = nullptr) const;
  MStatus next();
  MStatus reset();
  int count(MStatus* status = nullptr) const;
  int index(MStatus* status = nullptr) const;
  MStatus setIndex(int index, int& prevIndex);
  MPoint position(MSpace::Space space = MSpace::kObject, MStatus* status = nullptr) const;

private:
  void Init(std::shared_ptr<standin::Mesh> mesh, const MObject& component, const MMatrix& world);

  std::shared_ptr<standin::Mesh> m_mesh;
  std::vector<int> m_vertices;
  bool m_allVertices = true;
  int m_count = 0;
  unsigned int m_position = 0;
  int m_vertex = 0;
  MMatrix m_world;
};
