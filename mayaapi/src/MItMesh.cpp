#include <maya/MItGeometry.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>

#include "SceneGraph.h"


namespace {

void SetStatus(MStatus* status, MStatus value)
{
  if (status)
    *status = value;
}

std::shared_ptr<standin::Mesh> MeshOfObject(const MObject& object)
{
  if (const auto* data = dynamic_cast<const standin::MeshData*>(object.standinData()))
    return data->mesh;
  return standin::ShapeGeometry(object.standinNode());
}

std::shared_ptr<standin::Mesh> MeshOfPath(const MDagPath& path)
{
  MDagPath shape = path;
  if (!shape.isValid() || !shape.extendToShape())
    return nullptr;
  return standin::ShapeGeometry(shape.standinLast());
}

// Element list of a component, or false when it names elements the mesh does not have.
bool Elements(const MObject& component, int limit, std::vector<int>& elements, bool& all)
{
  const auto* data = dynamic_cast<const standin::ComponentData*>(component.standinData());
  all = !data || data->complete;
  elements.clear();
  if (all)
    return component.isNull() || data;
  for (int e : data->elements)
    if (e < 0 || e >= limit)
      return false;
  elements = data->elements;
  return true;
}

}

MItMeshPolygon::MItMeshPolygon(const MObject& polyObject, MStatus* status)
{
  std::shared_ptr<standin::Mesh> mesh = MeshOfObject(polyObject);
  Init(mesh, MObject(), MMatrix());
  SetStatus(status, mesh ? MS::kSuccess : MS::kInvalidParameter);
}

MItMeshPolygon::MItMeshPolygon(const MDagPath& polyObject, const MObject& component, MStatus* status)
{
  std::shared_ptr<standin::Mesh> mesh = MeshOfPath(polyObject);
  Init(mesh, component, polyObject.isValid() ? polyObject.inclusiveMatrix() : MMatrix());
  SetStatus(status, m_mesh ? MS::kSuccess : MS::kInvalidParameter);
}

void MItMeshPolygon::Init(std::shared_ptr<standin::Mesh> mesh, const MObject& component, const MMatrix& world)
{
  m_mesh = std::move(mesh);
  if (m_mesh && !Elements(component, m_mesh->topology->FaceCount(), m_faces, m_allFaces))
    m_mesh.reset();
  m_world = world;
  m_normalMatrix = world.inverse();
  reset();
}

MStatus MItMeshPolygon::reset()
{
  m_position = 0;
  m_face = m_allFaces || m_faces.empty() ? 0 : m_faces.front();
  return MS::kSuccess;
}

bool MItMeshPolygon::isDone(MStatus* status) const
{
  SetStatus(status, MS::kSuccess);
  return m_position >= count();
}

MStatus MItMeshPolygon::next()
{
  if (isDone())
    return MS::kFailure;
  ++m_position;
  if (m_position < count())
    m_face = m_allFaces ? static_cast<int>(m_position) : m_faces[m_position];
  return MS::kSuccess;
}

unsigned int MItMeshPolygon::count(MStatus* status) const
{
  SetStatus(status, m_mesh ? MS::kSuccess : MS::kFailure);
  if (!m_mesh)
    return 0;
  return m_allFaces ? static_cast<unsigned int>(m_mesh->topology->FaceCount()) : static_cast<unsigned int>(m_faces.size());
}

unsigned int MItMeshPolygon::index(MStatus* status) const
{
  SetStatus(status, m_mesh ? MS::kSuccess : MS::kFailure);
  return static_cast<unsigned int>(m_face);
}

MStatus MItMeshPolygon::setIndex(int index, int& prevIndex)
{
  if (!m_mesh || index < 0 || index >= m_mesh->topology->FaceCount())
    return MS::kInvalidParameter;
  prevIndex = m_face;
  m_face = index;
  if (m_allFaces)
    m_position = static_cast<unsigned int>(index);
  return MS::kSuccess;
}

int MItMeshPolygon::CornerBegin() const { return m_mesh->topology->faceOffsets[static_cast<size_t>(m_face)]; }

// False for a mesh without faces, where there is no current polygon to ask about.
bool MItMeshPolygon::OnFace() const { return m_mesh && m_face < m_mesh->topology->FaceCount(); }

unsigned int MItMeshPolygon::polygonVertexCount(MStatus* status) const
{
  SetStatus(status, OnFace() ? MS::kSuccess : MS::kFailure);
  if (!OnFace())
    return 0;
  const auto& offsets = m_mesh->topology->faceOffsets;
  return static_cast<unsigned int>(offsets[static_cast<size_t>(m_face) + 1] - offsets[static_cast<size_t>(m_face)]);
}

int MItMeshPolygon::vertexIndex(int vertex, MStatus* status) const
{
  if (!OnFace() || vertex < 0 || vertex >= static_cast<int>(polygonVertexCount())) {
    SetStatus(status, MS::kInvalidParameter);
    return -1;
  }
  SetStatus(status, MS::kSuccess);
  return m_mesh->topology->faceVertices[static_cast<size_t>(CornerBegin() + vertex)];
}

int MItMeshPolygon::normalIndex(int localVertexIndex, MStatus* status) const
{
  if (!OnFace() || localVertexIndex < 0 || localVertexIndex >= static_cast<int>(polygonVertexCount())) {
    SetStatus(status, MS::kInvalidParameter);
    return -1;
  }
  SetStatus(status, MS::kSuccess);
  return CornerBegin() + localVertexIndex;
}

int MItMeshPolygon::tangentIndex(int localVertexIndex, MStatus* status) const
{
  return normalIndex(localVertexIndex, status);
}

MStatus MItMeshPolygon::getVertices(MIntArray& vertices) const
{
  const unsigned int n = polygonVertexCount();
  vertices.setLength(n);
  for (unsigned int k = 0; k < n; ++k)
    vertices[k] = vertexIndex(static_cast<int>(k));
  return m_mesh ? MS::kSuccess : MS::kFailure;
}

MPoint MItMeshPolygon::point(int vertex, MSpace::Space space, MStatus* status) const
{
  MStatus found;
  const int v = vertexIndex(vertex, &found);
  SetStatus(status, found);
  if (!found)
    return MPoint();
  const float* p = &m_mesh->points[static_cast<size_t>(v) * 3];
  const MPoint local(p[0], p[1], p[2]);
  return space == MSpace::kWorld ? local * m_world : local;
}

MStatus MItMeshPolygon::getPoints(MPointArray& points, MSpace::Space space) const
{
  const unsigned int n = polygonVertexCount();
  points.setLength(n);
  for (unsigned int k = 0; k < n; ++k)
    points[k] = point(static_cast<int>(k), space);
  return m_mesh ? MS::kSuccess : MS::kFailure;
}

// Remembers the last set asked for, so that a loop asking for one set by name does no name search per corner.
int MItMeshPolygon::UVSetIndex(const MString* uvSet) const
{
  const auto& topo = *m_mesh->topology;
  if (!uvSet)
    return topo.uvSets.empty() ? -1 : topo.currentUVSet;
  if (uvSet != m_lastSetName || m_lastSetText != uvSet->asStdString()) {
    m_lastSetName = uvSet;
    m_lastSetText = uvSet->asStdString();
    m_lastSetIndex = topo.FindUVSet(m_lastSetText);
  }
  return m_lastSetIndex;
}

bool MItMeshPolygon::hasUVs(MStatus* status) const
{
  SetStatus(status, OnFace() ? MS::kSuccess : MS::kFailure);
  if (!OnFace())
    return false;
  const int set = UVSetIndex(nullptr);
  if (set < 0)
    return false;
  const auto& ids = m_mesh->topology->uvSets[static_cast<size_t>(set)].faceVertexUV;
  if (ids.empty())
    return false;
  for (unsigned int k = 0; k < polygonVertexCount(); ++k)
    if (ids[static_cast<size_t>(CornerBegin()) + k] < 0)
      return false;
  return true;
}

MStatus MItMeshPolygon::getUVIndex(int vertex, int& uvIndex, const MString* uvSet) const
{
  if (!OnFace() || vertex < 0 || vertex >= static_cast<int>(polygonVertexCount()))
    return MS::kInvalidParameter;
  const int set = UVSetIndex(uvSet);
  if (set < 0)
    return MS::kInvalidParameter;
  const auto& ids = m_mesh->topology->uvSets[static_cast<size_t>(set)].faceVertexUV;
  const int id = ids.empty() ? -1 : ids[static_cast<size_t>(CornerBegin() + vertex)];
  if (id < 0)
    return MS::kFailure;
  uvIndex = id;
  return MS::kSuccess;
}

MStatus MItMeshPolygon::getUVIndex(int vertex, int& uvIndex, float& u, float& v, const MString* uvSet) const
{
  const MStatus status = getUVIndex(vertex, uvIndex, uvSet);
  if (!status)
    return status;
  const auto& set = m_mesh->topology->uvSets[static_cast<size_t>(UVSetIndex(uvSet))];
  u = set.u[static_cast<size_t>(uvIndex)];
  v = set.v[static_cast<size_t>(uvIndex)];
  return MS::kSuccess;
}

MStatus MItMeshPolygon::getUV(int vertex, float2& uv, const MString* uvSet) const
{
  int id = 0;
  return getUVIndex(vertex, id, uv[0], uv[1], uvSet);
}

MStatus MItMeshPolygon::getNormal(MVector& normal, MSpace::Space space) const
{
  if (!OnFace())
    return MS::kFailure;
  const float* n = &m_mesh->FaceNormals()[static_cast<size_t>(m_face) * 3];
  normal = MVector(n[0], n[1], n[2]);
  if (space == MSpace::kWorld)
    normal = normal.transformAsNormal(m_normalMatrix).normal();
  return MS::kSuccess;
}

MStatus MItMeshPolygon::getNormal(unsigned int vertex, MVector& normal, MSpace::Space space) const
{
  if (!OnFace() || vertex >= polygonVertexCount())
    return MS::kInvalidParameter;
  const float* n = &m_mesh->FaceVertexNormals()[(static_cast<size_t>(CornerBegin()) + vertex) * 3];
  normal = MVector(n[0], n[1], n[2]);
  if (space == MSpace::kWorld)
    normal = normal.transformAsNormal(m_normalMatrix).normal();
  return MS::kSuccess;
}

MStatus MItMeshPolygon::getNormals(MVectorArray& normals, MSpace::Space space) const
{
  const unsigned int n = polygonVertexCount();
  normals.setLength(n);
  for (unsigned int k = 0; k < n; ++k)
    getNormal(k, normals[k], space);
  return m_mesh ? MS::kSuccess : MS::kFailure;
}

MStatus MItMeshPolygon::numTriangles(int& triangleCount) const
{
  if (!OnFace())
    return MS::kFailure;
  triangleCount = static_cast<int>(polygonVertexCount()) - 2;
  return MS::kSuccess;
}

MItMeshVertex::MItMeshVertex(const MObject& polyObject, MStatus* status)
{
  std::shared_ptr<standin::Mesh> mesh = MeshOfObject(polyObject);
  Init(mesh, MObject(), MMatrix());
  SetStatus(status, mesh ? MS::kSuccess : MS::kInvalidParameter);
}

MItMeshVertex::MItMeshVertex(const MDagPath& polyObject, const MObject& component, MStatus* status)
{
  std::shared_ptr<standin::Mesh> mesh = MeshOfPath(polyObject);
  Init(mesh, component, polyObject.isValid() ? polyObject.inclusiveMatrix() : MMatrix());
  SetStatus(status, m_mesh ? MS::kSuccess : MS::kInvalidParameter);
}

void MItMeshVertex::Init(std::shared_ptr<standin::Mesh> mesh, const MObject& component, const MMatrix& world)
{
  m_mesh = std::move(mesh);
  if (m_mesh && !Elements(component, m_mesh->topology->vertexCount, m_vertices, m_allVertices))
    m_mesh.reset();
  m_count = !m_mesh ? 0 : (m_allVertices ? m_mesh->topology->vertexCount : static_cast<int>(m_vertices.size()));
  m_world = world;
  reset();
}

bool MItMeshVertex::isDone(MStatus* status) const
{
  SetStatus(status, MS::kSuccess);
  return static_cast<int>(m_position) >= m_count;
}

MStatus MItMeshVertex::next()
{
  if (isDone())
    return MS::kFailure;
  ++m_position;
  if (static_cast<int>(m_position) < m_count)
    m_vertex = m_allVertices ? static_cast<int>(m_position) : m_vertices[m_position];
  return MS::kSuccess;
}

MStatus MItMeshVertex::reset()
{
  m_position = 0;
  m_vertex = m_allVertices || m_vertices.empty() ? 0 : m_vertices.front();
  return MS::kSuccess;
}

int MItMeshVertex::count(MStatus* status) const
{
  SetStatus(status, m_mesh ? MS::kSuccess : MS::kFailure);
  return m_count;
}

int MItMeshVertex::index(MStatus* status) const
{
  SetStatus(status, m_mesh ? MS::kSuccess : MS::kFailure);
  return m_vertex;
}

MStatus MItMeshVertex::setIndex(int index, int& prevIndex)
{
  if (!m_mesh || index < 0 || index >= m_mesh->topology->vertexCount)
    return MS::kInvalidParameter;
  prevIndex = m_vertex;
  m_vertex = index;
  if (m_allVertices)
    m_position = static_cast<unsigned int>(index);
  return MS::kSuccess;
}

MPoint MItMeshVertex::position(MSpace::Space space, MStatus* status) const
{
  if (!m_mesh || m_vertex >= m_mesh->topology->vertexCount) {
    SetStatus(status, MS::kFailure);
    return MPoint();
  }
  SetStatus(status, MS::kSuccess);
  const float* p = &m_mesh->points[static_cast<size_t>(m_vertex) * 3];
  const MPoint local(p[0], p[1], p[2]);
  return space == MSpace::kWorld ? local * m_world : local;
}

MItGeometry::MItGeometry(const MDagPath& dagPath, const MObject& component, MStatus* status)
    : m_vertices(dagPath, component, status)
{
}

MObject MItGeometry::component(MStatus* status) const
{
  auto data = std::make_shared<standin::ComponentData>(MFn::kMeshVertComponent);
  data->elements.push_back(index(status));
  return MObject(std::shared_ptr<standin::Data>(data));
}
