#pragma once

#include <maya/MDagPath.h>
#include <maya/MIntArray.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>
#include <maya/MVectorArray.h>

#include <memory>
#include <string>
#include <vector>

namespace standin {
struct Mesh;
}

using float2 = float[2];

// Walks the polygons of a mesh, or of a polygon component of it, over the mesh's flat arrays.
class MItMeshPolygon {
public:
  MItMeshPolygon(const MObject& polyObject, MStatus* status = nullptr);
  MItMeshPolygon(const MDagPath& polyObject, const MObject& component = MObject::kNullObj, MStatus* status = nullptr);

  bool isDone(MStatus* status = nullptr) const;
  MStatus next();
  MStatus reset();
  unsigned int count(MStatus* status = nullptr) const;
  unsigned int index(MStatus* status = nullptr) const;
  MStatus setIndex(int index, int& prevIndex);
  unsigned int polygonVertexCount(MStatus* status = nullptr) const;
  int vertexIndex(int vertex, MStatus* status = nullptr) const;
  MStatus getVertices(MIntArray& vertices) const;
  MPoint point(int vertex, MSpace::Space space = MSpace::kObject, MStatus* status = nullptr) const;
  MStatus getPoints(MPointArray& points, MSpace::Space space = MSpace::kObject) const;
  bool hasUVs(MStatus* status = nullptr) const;
  MStatus getUVIndex(int vertex, int& uvIndex, const MString* uvSet = nullptr) const;
  MStatus getUVIndex(int vertex, int& uvIndex, float& u, float& v, const MString* uvSet = nullptr) const;
  MStatus getUV(int vertex, float2& uv, const MString* uvSet = nullptr) const;
  MStatus getNormal(MVector& normal, MSpace::Space space = MSpace::kObject) const;
  MStatus getNormal(unsigned int vertex, MVector& normal, MSpace::Space space = MSpace::kObject) const;
  MStatus getNormals(MVectorArray& normals, MSpace::Space space = MSpace::kObject) const;
  // Where the corner's normal and tangent sit in MFnMesh::getNormals and getTangents.
  int normalIndex(int localVertexIndex, MStatus* status = nullptr) const;
  int tangentIndex(int localVertexIndex, MStatus* status = nullptr) const;
  MStatus numTriangles(int& triangleCount) const;

private:
  void Init(std::shared_ptr<standin::Mesh> mesh, const MObject& component, const MMatrix& world);
  int UVSetIndex(const MString* uvSet) const;
  int CornerBegin() const;
  bool OnFace() const;

  std::shared_ptr<standin::Mesh> m_mesh;
  std::vector<int> m_faces;
  bool m_allFaces = true;
  unsigned int m_position = 0;
  int m_face = 0;
  MMatrix m_world;
  MMatrix m_normalMatrix;
  mutable const MString* m_lastSetName = nullptr;
  mutable std::string m_lastSetText;
  mutable int m_lastSetIndex = -1;
};
