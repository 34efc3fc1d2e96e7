#include <maya/MFnMesh.h>

#include "SceneGraph.h"
#include "Sets.h"

namespace {

void SetStatus(MStatus* status, MStatus value)
{
  if (status)
    *status = value;
}

int SetIndex(const standin::MeshTopology& topo, const MString* uvSet)
{
  if (!uvSet)
    return topo.uvSets.empty() ? -1 : topo.currentUVSet;
  return topo.FindUVSet(uvSet->asChar());
}

bool BuildMesh(standin::Mesh& mesh, int numVertices, int numPolygons, const MFloatPointArray& points,
               const MIntArray& counts, const MIntArray& connects)
{
  if (numVertices < 0 || numPolygons < 0 || static_cast<int>(points.length()) < numVertices ||
      static_cast<int>(counts.length()) != numPolygons)
    return false;
  long long total = 0;
  for (unsigned int i = 0; i < counts.length(); ++i) {
    if (counts[i] < 3)
      return false;
    total += counts[i];
  }
  if (total != static_cast<long long>(connects.length()))
    return false;
  for (unsigned int i = 0; i < connects.length(); ++i)
    if (connects[i] < 0 || connects[i] >= numVertices)
      return false;
  auto topo = std::make_shared<standin::MeshTopology>();
  topo->vertexCount = numVertices;
  topo->faceVertices = connects.items();
  for (unsigned int i = 0; i < counts.length(); ++i)
    topo->faceOffsets.push_back(topo->faceOffsets.back() + counts[i]);
  mesh.topology = topo;
  mesh.points.clear();
  for (int i = 0; i < numVertices; ++i) {
    mesh.points.push_back(points[static_cast<unsigned int>(i)].x);
    mesh.points.push_back(points[static_cast<unsigned int>(i)].y);
    mesh.points.push_back(points[static_cast<unsigned int>(i)].z);
  }
  mesh.Invalidate();
  return true;
}

MFloatVector ToSpace(const float* v, const MMatrix& matrix, bool normal)
{
  MVector out(v[0], v[1], v[2]);
  out = normal ? out.transformAsNormal(matrix) : out * matrix;
  return MFloatVector(out.normal());
}

}

MFnMesh::MFnMesh(const MObject& object, MStatus* status) { SetStatus(status, setObject(object)); }

MFnMesh::MFnMesh(const MDagPath& path, MStatus* status) { SetStatus(status, setObject(path)); }

MStatus MFnMesh::setObject(const MObject& object)
{
  if (object.apiType() == MFn::kMeshData) {
    m_object = object;
    m_path = MDagPath();
    return MS::kSuccess;
  }
  return MFnDagNode::setObject(object);
}

MStatus MFnMesh::setObject(const MDagPath& path) { return MFnDagNode::setObject(path); }

std::shared_ptr<standin::Mesh> MFnMesh::standinMesh() const
{
  const std::uint64_t generation = standin::CurrentScene().generation;
  if (m_mesh && m_meshGeneration == generation && m_meshObject == m_object)
    return m_mesh;
  if (const auto* data = dynamic_cast<const standin::MeshData*>(m_object.standinData()))
    m_mesh = data->mesh;
  else
    m_mesh = standin::ShapeGeometry(m_object.standinNode());
  m_meshGeneration = generation;
  m_meshObject = m_object;
  return m_mesh;
}

MMatrix MFnMesh::WorldMatrix(MSpace::Space space) const
{
  return space == MSpace::kWorld && m_path.isValid() ? m_path.inclusiveMatrix() : MMatrix();
}

MObject MFnMesh::create(int numVertices, int numPolygons, const MFloatPointArray& vertexArray,
                        const MIntArray& polygonCounts, const MIntArray& polygonConnects, MObject parentOrOwner,
                        MStatus* status)
{
  auto mesh = std::make_shared<standin::Mesh>();
  if (!BuildMesh(*mesh, numVertices, numPolygons, vertexArray, polygonCounts, polygonConnects)) {
    SetStatus(status, MStatus(MS::kInvalidParameter, "MFnMesh::create: inconsistent vertex, count or index arrays"));
    return MObject();
  }
  if (auto* data = dynamic_cast<standin::MeshData*>(parentOrOwner.standinData())) {
    data->mesh = mesh;
    m_mesh.reset();
    setObject(parentOrOwner);
    SetStatus(status, MS::kSuccess);
    return parentOrOwner;
  }
  standin::Node* parent = parentOrOwner.isNull() ? nullptr : parentOrOwner.standinNode();
  if (!parentOrOwner.isNull() && (!parent || parent->type != MFn::kTransform)) {
    SetStatus(status, MS::kInvalidParameter);
    return MObject();
  }
  MStatus made;
  const MObject result = MFnDagNode::create("mesh", "polySurfaceShape1", parentOrOwner, &made);
  if (!made) {
    SetStatus(status, made);
    return MObject();
  }
  m_object.standinNode()->mesh = mesh;
  m_mesh.reset();
  SetStatus(status, MS::kSuccess);
  return result;
}

MObject MFnMesh::create(int numVertices, int numPolygons, const MFloatPointArray& vertexArray,
                        const MIntArray& polygonCounts, const MIntArray& polygonConnects, const MFloatArray& uArray,
                        const MFloatArray& vArray, MObject parentOrOwner, MStatus* status)
{
  MStatus made;
  const MObject result = create(numVertices, numPolygons, vertexArray, polygonCounts, polygonConnects, parentOrOwner, &made);
  if (made)
    made = setUVs(uArray, vArray);
  SetStatus(status, made);
  return made ? result : MObject();
}

int MFnMesh::numVertices(MStatus* status) const
{
  const auto mesh = standinMesh();
  SetStatus(status, mesh ? MS::kSuccess : MS::kFailure);
  return mesh ? mesh->topology->vertexCount : 0;
}

int MFnMesh::numPolygons(MStatus* status) const
{
  const auto mesh = standinMesh();
  SetStatus(status, mesh ? MS::kSuccess : MS::kFailure);
  return mesh ? mesh->topology->FaceCount() : 0;
}

int MFnMesh::numFaceVertices(MStatus* status) const
{
  const auto mesh = standinMesh();
  SetStatus(status, mesh ? MS::kSuccess : MS::kFailure);
  return mesh ? mesh->topology->FaceVertexCount() : 0;
}

int MFnMesh::numUVs(MStatus* status) const
{
  const auto mesh = standinMesh();
  const int set = mesh ? SetIndex(*mesh->topology, nullptr) : -1;
  SetStatus(status, mesh ? MS::kSuccess : MS::kFailure);
  return set < 0 ? 0 : static_cast<int>(mesh->topology->uvSets[static_cast<size_t>(set)].u.size());
}

int MFnMesh::numUVs(const MString& uvSet, MStatus* status) const
{
  const auto mesh = standinMesh();
  const int set = mesh ? SetIndex(*mesh->topology, &uvSet) : -1;
  SetStatus(status, set >= 0 ? MS::kSuccess : MS::kInvalidParameter);
  return set < 0 ? 0 : static_cast<int>(mesh->topology->uvSets[static_cast<size_t>(set)].u.size());
}

int MFnMesh::numUVSets(MStatus* status) const
{
  const auto mesh = standinMesh();
  SetStatus(status, mesh ? MS::kSuccess : MS::kFailure);
  return mesh ? static_cast<int>(mesh->topology->uvSets.size()) : 0;
}

MStatus MFnMesh::getPoints(MPointArray& points, MSpace::Space space) const
{
  const auto mesh = standinMesh();
  if (!mesh)
    return MS::kFailure;
  const MMatrix world = WorldMatrix(space);
  const size_t count = mesh->points.size() / 3;
  points.setLength(static_cast<unsigned int>(count));
  for (size_t i = 0; i < count; ++i)
    points[static_cast<unsigned int>(i)] = MPoint(mesh->points[i * 3], mesh->points[i * 3 + 1], mesh->points[i * 3 + 2]) * world;
  return MS::kSuccess;
}

MStatus MFnMesh::getPoint(int vertexId, MPoint& point, MSpace::Space space) const
{
  const auto mesh = standinMesh();
  if (!mesh || vertexId < 0 || vertexId >= mesh->topology->vertexCount)
    return MS::kInvalidParameter;
  const float* p = &mesh->points[static_cast<size_t>(vertexId) * 3];
  point = MPoint(p[0], p[1], p[2]) * WorldMatrix(space);
  return MS::kSuccess;
}

int MFnMesh::polygonVertexCount(int polygonId, MStatus* status) const
{
  const auto mesh = standinMesh();
  if (!mesh || polygonId < 0 || polygonId >= mesh->topology->FaceCount()) {
    SetStatus(status, MS::kInvalidParameter);
    return 0;
  }
  SetStatus(status, MS::kSuccess);
  const auto& offsets = mesh->topology->faceOffsets;
  return offsets[static_cast<size_t>(polygonId) + 1] - offsets[static_cast<size_t>(polygonId)];
}

MStatus MFnMesh::getPolygonVertices(int polygonId, MIntArray& vertexList) const
{
  MStatus status;
  const int count = polygonVertexCount(polygonId, &status);
  if (!status)
    return status;
  const auto mesh = standinMesh();
  const int begin = mesh->topology->faceOffsets[static_cast<size_t>(polygonId)];
  vertexList.setLength(static_cast<unsigned int>(count));
  for (int k = 0; k < count; ++k)
    vertexList[static_cast<unsigned int>(k)] = mesh->topology->faceVertices[static_cast<size_t>(begin + k)];
  return MS::kSuccess;
}

MStatus MFnMesh::getCurrentUVSetName(MString& setName, int) const
{
  const auto mesh = standinMesh();
  if (!mesh)
    return MS::kFailure;
  const auto& topo = *mesh->topology;
  setName = topo.uvSets.empty() ? MString() : MString(topo.uvSets[static_cast<size_t>(topo.currentUVSet)].name);
  return MS::kSuccess;
}

MString MFnMesh::currentUVSetName(MStatus* status, int instance) const
{
  MString name;
  SetStatus(status, getCurrentUVSetName(name, instance));
  return name;
}

MStatus MFnMesh::setCurrentUVSetName(const MString& setName)
{
  const auto mesh = standinMesh();
  const int set = mesh ? mesh->topology->FindUVSet(setName.asChar()) : -1;
  if (set < 0)
    return MS::kInvalidParameter;
  mesh->topology->currentUVSet = set;
  return MS::kSuccess;
}

MStatus MFnMesh::getUVSetNames(MStringArray& setNames) const
{
  setNames.clear();
  const auto mesh = standinMesh();
  if (!mesh)
    return MS::kFailure;
  for (const auto& set : mesh->topology->uvSets)
    setNames.append(MString(set.name));
  return MS::kSuccess;
}

int MFnMesh::numColorSets(MStatus* status) const
{
  const auto mesh = standinMesh();
  SetStatus(status, mesh ? MS::kSuccess : MS::kFailure);
  return mesh ? static_cast<int>(mesh->topology->colorSets.size()) : 0;
}

MStatus MFnMesh::getColorSetNames(MStringArray& setNames) const
{
  setNames.clear();
  const auto mesh = standinMesh();
  if (!mesh)
    return MS::kFailure;
  for (const auto& set : mesh->topology->colorSets)
    setNames.append(MString(set.name));
  return MS::kSuccess;
}

MStatus MFnMesh::createUVSet(MString& setName)
{
  const auto mesh = standinMesh();
  if (!mesh || setName.isEmpty() || mesh->topology->FindUVSet(setName.asChar()) >= 0)
    return MS::kInvalidParameter;
  standin::UVSet set;
  set.name = setName.asChar();
  mesh->topology->uvSets.push_back(set);
  return MS::kSuccess;
}

MStatus MFnMesh::getUV(int uvId, float& u, float& v, const MString* uvSet) const
{
  const auto mesh = standinMesh();
  const int set = mesh ? SetIndex(*mesh->topology, uvSet) : -1;
  if (set < 0)
    return MS::kInvalidParameter;
  const auto& uvs = mesh->topology->uvSets[static_cast<size_t>(set)];
  if (uvId < 0 || uvId >= static_cast<int>(uvs.u.size()))
    return MS::kInvalidParameter;
  u = uvs.u[static_cast<size_t>(uvId)];
  v = uvs.v[static_cast<size_t>(uvId)];
  return MS::kSuccess;
}

MStatus MFnMesh::getUVs(MFloatArray& uArray, MFloatArray& vArray, const MString* uvSet) const
{
  const auto mesh = standinMesh();
  const int set = mesh ? SetIndex(*mesh->topology, uvSet) : -1;
  uArray.clear();
  vArray.clear();
  if (!mesh)
    return MS::kFailure;
  if (set < 0)
    return uvSet ? MStatus(MS::kInvalidParameter) : MStatus(MS::kSuccess);
  const auto& uvs = mesh->topology->uvSets[static_cast<size_t>(set)];
  uArray.items() = uvs.u;
  vArray.items() = uvs.v;
  return MS::kSuccess;
}

MStatus MFnMesh::setUVs(const MFloatArray& uArray, const MFloatArray& vArray, const MString* uvSet)
{
  const auto mesh = standinMesh();
  if (!mesh || uArray.length() != vArray.length())
    return MS::kInvalidParameter;
  auto& topo = *mesh->topology;
  int set = SetIndex(topo, uvSet);
  if (set < 0) {
    standin::UVSet created;
    created.name = uvSet ? uvSet->asChar() : "map1";
    topo.uvSets.push_back(created);
    set = static_cast<int>(topo.uvSets.size()) - 1;
  }
  auto& uvs = topo.uvSets[static_cast<size_t>(set)];
  uvs.u = uArray.items();
  uvs.v = vArray.items();
  mesh->Invalidate();
  return MS::kSuccess;
}

MStatus MFnMesh::assignUVs(const MIntArray& uvCounts, const MIntArray& uvIds, const MString* uvSet)
{
  const auto mesh = standinMesh();
  const int set = mesh ? SetIndex(*mesh->topology, uvSet) : -1;
  if (set < 0)
    return MS::kInvalidParameter;
  const auto& topo = *mesh->topology;
  if (static_cast<int>(uvCounts.length()) != topo.FaceCount())
    return MS::kInvalidParameter;
  auto& uvs = mesh->topology->uvSets[static_cast<size_t>(set)];
  std::vector<int> assigned(static_cast<size_t>(topo.FaceVertexCount()), -1);
  unsigned int next = 0;
  for (int f = 0; f < topo.FaceCount(); ++f) {
    const int corners = topo.faceOffsets[static_cast<size_t>(f) + 1] - topo.faceOffsets[static_cast<size_t>(f)];
    const int given = uvCounts[static_cast<unsigned int>(f)];
    if (given != 0 && given != corners)
      return MS::kInvalidParameter;
    for (int k = 0; k < given; ++k) {
      if (next >= uvIds.length() || uvIds[next] < 0 || uvIds[next] >= static_cast<int>(uvs.u.size()))
        return MS::kInvalidParameter;
      assigned[static_cast<size_t>(topo.faceOffsets[static_cast<size_t>(f)] + k)] = uvIds[next++];
    }
  }
  if (next != uvIds.length())
    return MS::kInvalidParameter;
  uvs.faceVertexUV = std::move(assigned);
  mesh->Invalidate();
  return MS::kSuccess;
}

MStatus MFnMesh::getPolygonUVid(int polygonId, int vertexIndex, int& uvId, const MString* uvSet) const
{
  MStatus status;
  const int count = polygonVertexCount(polygonId, &status);
  if (!status || vertexIndex < 0 || vertexIndex >= count)
    return MS::kInvalidParameter;
  const auto mesh = standinMesh();
  const int set = SetIndex(*mesh->topology, uvSet);
  if (set < 0)
    return MS::kInvalidParameter;
  const auto& ids = mesh->topology->uvSets[static_cast<size_t>(set)].faceVertexUV;
  const int fv = mesh->topology->faceOffsets[static_cast<size_t>(polygonId)] + vertexIndex;
  if (ids.empty() || ids[static_cast<size_t>(fv)] < 0)
    return MS::kFailure;
  uvId = ids[static_cast<size_t>(fv)];
  return MS::kSuccess;
}

MStatus MFnMesh::getPolygonNormal(int polygonId, MVector& normal, MSpace::Space space) const
{
  const auto mesh = standinMesh();
  if (!mesh || polygonId < 0 || polygonId >= mesh->topology->FaceCount())
    return MS::kInvalidParameter;
  normal = MVector(ToSpace(&mesh->FaceNormals()[static_cast<size_t>(polygonId) * 3], WorldMatrix(space).inverse(), true));
  return MS::kSuccess;
}

MStatus MFnMesh::getFaceVertexNormal(int faceIndex, int vertexId, MVector& normal, MSpace::Space space) const
{
  MStatus status;
  const int count = polygonVertexCount(faceIndex, &status);
  if (!status)
    return status;
  const auto mesh = standinMesh();
  const int begin = mesh->topology->faceOffsets[static_cast<size_t>(faceIndex)];
  for (int k = 0; k < count; ++k)
    if (mesh->topology->faceVertices[static_cast<size_t>(begin + k)] == vertexId) {
      normal = MVector(ToSpace(&mesh->FaceVertexNormals()[static_cast<size_t>(begin + k) * 3], WorldMatrix(space).inverse(), true));
      return MS::kSuccess;
    }
  return MS::kInvalidParameter;
}

MStatus MFnMesh::getFaceVertexNormals(int faceIndex, MFloatVectorArray& normals, MSpace::Space space) const
{
  MStatus status;
  const int count = polygonVertexCount(faceIndex, &status);
  if (!status)
    return status;
  const auto mesh = standinMesh();
  const int begin = mesh->topology->faceOffsets[static_cast<size_t>(faceIndex)];
  const MMatrix inverse = WorldMatrix(space).inverse();
  normals.setLength(static_cast<unsigned int>(count));
  for (int k = 0; k < count; ++k)
    normals[static_cast<unsigned int>(k)] = ToSpace(&mesh->FaceVertexNormals()[static_cast<size_t>(begin + k) * 3], inverse, true);
  return MS::kSuccess;
}

MStatus MFnMesh::FaceFrames(int faceIndex, MFloatVectorArray& out, MSpace::Space space, const MString* uvSet,
                            bool binormals) const
{
  MStatus status;
  const int count = polygonVertexCount(faceIndex, &status);
  if (!status)
    return status;
  const auto mesh = standinMesh();
  const int set = SetIndex(*mesh->topology, uvSet);
  if (set < 0)
    return MS::kInvalidParameter;
  const int begin = mesh->topology->faceOffsets[static_cast<size_t>(faceIndex)];
  // Maya has no tangent frame for a face with an unmapped corner.
  const auto& ids = mesh->topology->uvSets[static_cast<size_t>(set)].faceVertexUV;
  for (int k = 0; k < count; ++k)
    if (ids.empty() || ids[static_cast<size_t>(begin + k)] < 0)
      return MStatus(MS::kFailure, "Face has corners without UVs in the set");
  const std::vector<float>& frames = binormals ? mesh->Binormals(set) : mesh->Tangents(set);
  const MMatrix world = WorldMatrix(space);
  out.setLength(static_cast<unsigned int>(count));
  for (int k = 0; k < count; ++k)
    out[static_cast<unsigned int>(k)] = ToSpace(&frames[static_cast<size_t>(begin + k) * 3], world, false);
  return MS::kSuccess;
}

// Normal and tangent ids are face-vertex ids here: each corner keeps its own, which Maya's contract allows.
MStatus MFnMesh::getNormals(MFloatVectorArray& normals, MSpace::Space space) const
{
  const auto mesh = standinMesh();
  if (!mesh)
    return MS::kFailure;
  const std::vector<float>& values = mesh->FaceVertexNormals();
  const MMatrix inverse = WorldMatrix(space).inverse();
  normals.setLength(static_cast<unsigned int>(values.size() / 3));
  for (unsigned int i = 0; i < normals.length(); ++i)
    normals[i] = ToSpace(&values[static_cast<size_t>(i) * 3], inverse, true);
  return MS::kSuccess;
}

MStatus MFnMesh::AllFrames(MFloatVectorArray& out, MSpace::Space space, const MString* uvSet, bool binormals) const
{
  const auto mesh = standinMesh();
  const int set = mesh ? SetIndex(*mesh->topology, uvSet) : -1;
  if (set < 0)
    return MS::kInvalidParameter;
  const std::vector<float>& frames = binormals ? mesh->Binormals(set) : mesh->Tangents(set);
  const MMatrix world = WorldMatrix(space);
  out.setLength(static_cast<unsigned int>(frames.size() / 3));
  for (unsigned int i = 0; i < out.length(); ++i)
    out[i] = ToSpace(&frames[static_cast<size_t>(i) * 3], world, false);
  return MS::kSuccess;
}

MStatus MFnMesh::getTangents(MFloatVectorArray& tangents, MSpace::Space space, const MString* uvSet) const
{
  return AllFrames(tangents, space, uvSet, false);
}

MStatus MFnMesh::getBinormals(MFloatVectorArray& binormals, MSpace::Space space, const MString* uvSet) const
{
  return AllFrames(binormals, space, uvSet, true);
}

MStatus MFnMesh::getFaceVertexTangents(int faceIndex, MFloatVectorArray& tangents, MSpace::Space space,
                                       const MString* uvSet) const
{
  return FaceFrames(faceIndex, tangents, space, uvSet, false);
}

MStatus MFnMesh::getFaceVertexBinormals(int faceIndex, MFloatVectorArray& binormals, MSpace::Space space,
                                        const MString* uvSet) const
{
  return FaceFrames(faceIndex, binormals, space, uvSet, true);
}

// In the order the instance was wired into its sets: the whole-object connection or the face groups.
MStatus MFnMesh::getConnectedSetsAndMembers(unsigned int instanceNumber, MObjectArray& sets, MObjectArray& comps,
                                            bool renderableSetsOnly) const
{
  sets.clear();
  comps.clear();
  standin::Node* node = m_object.standinNode();
  if (!node || node->type != MFn::kMesh)
    return MS::kFailure;
  const standin::Scene& scene = *node->scene;
  for (size_t index : node->outgoing) {
    const standin::Connection& c = scene.connections[index];
    if (!c.alive || c.src.indices.empty() || c.src.indices.front() != instanceNumber)
      continue;
    if (!standin::TypeHasFn(c.dstNode->type, renderableSetsOnly ? MFn::kShadingEngine : MFn::kSet))
      continue;
    if (c.src.attribute->name == "instObjGroups") {
      sets.append(MObject(c.dstNode));
      comps.append(MObject());
    } else if (c.src.attribute->name == "objectGroups") {
      const std::shared_ptr<standin::ComponentData> faces = standin::GroupComponent(node, c.src);
      sets.append(MObject(c.dstNode));
      comps.append(faces ? MObject(std::shared_ptr<standin::Data>(faces)) : MObject());
    }
  }
  return MS::kSuccess;
}

MStatus MFnMesh::getConnectedShaders(unsigned int instanceNumber, MObjectArray& shaders, MIntArray& indices) const
{
  MObjectArray sets;
  MObjectArray comps;
  const MStatus status = getConnectedSetsAndMembers(instanceNumber, sets, comps, true);
  shaders.clear();
  indices.clear();
  if (!status)
    return status;
  indices.setLength(static_cast<unsigned int>(numPolygons()));
  for (unsigned int f = 0; f < indices.length(); ++f)
    indices[f] = -1;
  for (unsigned int i = 0; i < sets.length(); ++i) {
    unsigned int slot = shaders.length();
    for (unsigned int s = 0; s < shaders.length(); ++s)
      if (shaders[s] == sets[i])
        slot = s;
    if (slot == shaders.length())
      shaders.append(sets[i]);
    const auto* faces = dynamic_cast<const standin::ComponentData*>(comps[i].standinData());
    if (!faces || faces->complete) {
      for (unsigned int f = 0; f < indices.length(); ++f)
        indices[f] = static_cast<int>(slot);
      continue;
    }
    for (int f : faces->elements)
      if (f >= 0 && f < static_cast<int>(indices.length()))
        indices[static_cast<unsigned int>(f)] = static_cast<int>(slot);
  }
  return MS::kSuccess;
}
