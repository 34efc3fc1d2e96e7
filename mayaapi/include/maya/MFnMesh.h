#pragma once

#include <maya/MFloatArray.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MIntArray.h>
#include <maya/MObjectArray.h>
#include <maya/MPointArray.h>
#include <maya/MStringArray.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>

#include <cstdint>
#include <memory>

namespace standin {
struct Mesh;
}

// A mesh shape on a DAG path or node, or a mesh data object; a path through a skinned shape reads the deformed
// mesh, a skin cluster's input data object the mesh before skinning.
class MFnMesh : public MFnDagNode {
public:
  MFnMesh() = default;
  MFnMesh(const MObject& object, MStatus* status = nullptr);
  MFnMesh(const MDagPath& path, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kMesh; }
  MStatus setObject(const MObject& object) override;
  MStatus setObject(const MDagPath& path) override;

  MObject create(int numVertices, int numPolygons, const MFloatPointArray& vertexArray, const MIntArray& polygonCounts,
                 const MIntArray& polygonConnects, MObject parentOrOwner = MObject::kNullObj, MStatus* status = nullptr);
  MObject create(int numVertices, int numPolygons, const MFloatPointArray& vertexArray, const MIntArray& polygonCounts,
                 const MIntArray& polygonConnects, const MFloatArray& uArray, const MFloatArray& vArray,
                 MObject parentOrOwner = MObject::kNullObj, MStatus* status = nullptr);

  int numVertices(MStatus* status = nullptr) const;
  int numPolygons(MStatus* status = nullptr) const;
  int numFaceVertices(MStatus* status = nullptr) const;
  int numUVs(MStatus* status = nullptr) const;
  int numUVs(const MString& uvSet, MStatus* status = nullptr) const;
  int numUVSets(MStatus* status = nullptr) const;
  MStatus getPoints(MPointArray& points, MSpace::Space space = MSpace::kObject) const;
  MStatus getPoint(int vertexId, MPoint& point, MSpace::Space space = MSpace::kObject) const;
  int polygonVertexCount(int polygonId, MStatus* status = nullptr) const;
  MStatus getPolygonVertices(int polygonId, MIntArray& vertexList) const;

  MStatus getCurrentUVSetName(MString& setName, int instance = -1) const;
  MString currentUVSetName(MStatus* status = nullptr, int instance = -1) const;
  MStatus setCurrentUVSetName(const MString& setName);
  MStatus getUVSetNames(MStringArray& setNames) const;
  int numColorSets(MStatus* status = nullptr) const;
  MStatus getColorSetNames(MStringArray& setNames) const;
  MStatus createUVSet(MString& setName);
  MStatus getUV(int uvId, float& u, float& v, const MString* uvSet = nullptr) const;
  MStatus getUVs(MFloatArray& uArray, MFloatArray& vArray, const MString* uvSet = nullptr) const;
  MStatus setUVs(const MFloatArray& uArray, const MFloatArray& vArray, const MString* uvSet = nullptr);
  MStatus assignUVs(const MIntArray& uvCounts, const MIntArray& uvIds, const MString* uvSet = nullptr);
  MStatus getPolygonUVid(int polygonId, int vertexIndex, int& uvId, const MString* uvSet = nullptr) const;

  MStatus getPolygonNormal(int polygonId, MVector& normal, MSpace::Space space = MSpace::kObject) const;
  MStatus getFaceVertexNormal(int faceIndex, int vertexId, MVector& normal, MSpace::Space space = MSpace::kObject) const;
  MStatus getFaceVertexNormals(int faceIndex, MFloatVectorArray& normals, MSpace::Space space = MSpace::kObject) const;
  // Normals, tangents and binormals of the whole mesh, indexed by MItMeshPolygon::normalIndex and tangentIndex.
  MStatus getNormals(MFloatVectorArray& normals, MSpace::Space space = MSpace::kObject) const;
  MStatus getTangents(MFloatVectorArray& tangents, MSpace::Space space = MSpace::kObject,
                      const MString* uvSet = nullptr) const;
  MStatus getBinormals(MFloatVectorArray& binormals, MSpace::Space space = MSpace::kObject,
                       const MString* uvSet = nullptr) const;
  MStatus getFaceVertexTangents(int faceIndex, MFloatVectorArray& tangents, MSpace::Space space = MSpace::kObject,
                                const MString* uvSet = nullptr) const;
  MStatus getFaceVertexBinormals(int faceIndex, MFloatVectorArray& binormals, MSpace::Space space = MSpace::kObject,
                                 const MString* uvSet = nullptr) const;

  // Shading sets of one instance with the faces each holds; a null component stands for the whole mesh.
  MStatus getConnectedSetsAndMembers(unsigned int instanceNumber, MObjectArray& sets, MObjectArray& comps,
                                     bool renderableSetsOnly) const;
  MStatus getConnectedShaders(unsigned int instanceNumber, MObjectArray& shaders, MIntArray& indices) const;

  std::shared_ptr<standin::Mesh> standinMesh() const;

private:
  MStatus FaceFrames(int faceIndex, MFloatVectorArray& out, MSpace::Space space, const MString* uvSet, bool binormals) const;
  MStatus AllFrames(MFloatVectorArray& out, MSpace::Space space, const MString* uvSet, bool binormals) const;
  MMatrix WorldMatrix(MSpace::Space space) const;

  // The resolved mesh, kept while the scene is unchanged so that per-face queries do no graph lookups.
  mutable std::shared_ptr<standin::Mesh> m_mesh;
  mutable std::uint64_t m_meshGeneration = 0;
  mutable MObject m_meshObject;
};
