#include "PrimitiveMesh.h"

#include "../NumberCast.h"

#include <maya/MMatrix.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace standin {
namespace {

// The rotation taking +Y onto the unit vector `to` by the shortest turn (Rodrigues); -Y turns about X.
MMatrix TurnFromY(const MVector& axis)
{
  MMatrix m;
  const double length = axis.length();
  if (length == 0.0)
    return m;
  const MVector to = axis / length;
  const MVector up(0.0, 1.0, 0.0);
  const double c = up * to;
  if (c > 1.0 - 1e-12)
    return m;
  MVector k = up ^ to;
  if (k.length() < 1e-12)
    k = MVector(1.0, 0.0, 0.0);
  k.normalize();
  const double angle = std::acos(std::clamp(c, -1.0, 1.0));
  const double s = std::sin(angle);
  const double t = 1.0 - std::cos(angle);
  const double r[3][3] = {
      {t * k.x * k.x + std::cos(angle), t * k.x * k.y - s * k.z, t * k.x * k.z + s * k.y},
      {t * k.x * k.y + s * k.z, t * k.y * k.y + std::cos(angle), t * k.y * k.z - s * k.x},
      {t * k.x * k.z - s * k.y, t * k.y * k.z + s * k.x, t * k.z * k.z + std::cos(angle)},
  };
  // Row vectors, as Maya's matrices: p' = p * M, so M holds the column-vector rotation transposed.
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j)
      m(i, j) = r[j][i];
  return m;
}

}

void RingPoint(double radius, int i, int count, double& x, double& z)
{
  const double angle = 2.0 * std::numbers::pi * (i + 1) / count;
  x = radius * std::cos(angle);
  z = -radius * std::sin(angle);
}

int PrimitiveMesh::AddPoint(double x, double y, double z)
{
  m_points.insert(m_points.end(), {x, y, z});
  return PointCount() - 1;
}

int PrimitiveMesh::AddUV(double u, double v)
{
  if (!m_withUVs)
    return -1;
  m_u.push_back(static_cast<float>(u));
  m_v.push_back(static_cast<float>(v));
  return static_cast<int>(m_u.size()) - 1;
}

void PrimitiveMesh::AddFace(std::span<const int> vertices, std::span<const int> uvs)
{
  m_vertices.insert(m_vertices.end(), vertices.begin(), vertices.end());
  if (!m_withUVs || uvs.empty())
    m_uvIds.insert(m_uvIds.end(), vertices.size(), -1);
  else
    m_uvIds.insert(m_uvIds.end(), uvs.begin(), uvs.end());
  m_offsets.push_back(static_cast<int>(m_vertices.size()));
}

void PrimitiveMesh::AddFace(std::initializer_list<int> vertices, std::initializer_list<int> uvs)
{
  AddFace(std::span<const int>(vertices.begin(), vertices.size()), std::span<const int>(uvs.begin(), uvs.size()));
}

int PrimitiveMesh::AddRing(double radius, double y, int count)
{
  const int first = PointCount();
  for (int i = 0; i < count; ++i) {
    double x = 0.0;
    double z = 0.0;
    RingPoint(radius, i, count, x, z);
    AddPoint(x, y, z);
  }
  return first;
}

void PrimitiveMesh::AddStrip(int lower, int upper, int count, int lowerUV, int upperUV)
{
  for (int i = 0; i < count; ++i) {
    const int next = (i + 1) % count;
    AddFace({lower + i, lower + next, upper + next, upper + i},
            {lowerUV + i, lowerUV + i + 1, upperUV + i + 1, upperUV + i});
  }
}

void PrimitiveMesh::AddCap(const std::vector<int>& rings, int centre, int count, int firstUV, bool down)
{
  auto at = [&](size_t c, int i) { return rings[c] + i % count; };
  auto uv = [&](size_t c, int i) { return firstUV + static_cast<int>(c) * count + i % count; };
  if (centre < 0) {
    std::vector<int> vertices;
    std::vector<int> uvs;
    for (int k = 0; k < count; ++k) {
      const int i = down ? count - 1 - k : k;
      vertices.push_back(at(0, i));
      uvs.push_back(uv(0, i));
    }
    AddFace(vertices, uvs);
    return;
  }
  for (size_t c = 0; c + 1 < rings.size(); ++c)
    for (int i = 0; i < count; ++i) {
      if (down)
        AddFace({at(c, i + 1), at(c, i), at(c + 1, i), at(c + 1, i + 1)},
                {uv(c, i + 1), uv(c, i), uv(c + 1, i), uv(c + 1, i + 1)});
      else
        AddFace({at(c, i), at(c, i + 1), at(c + 1, i + 1), at(c + 1, i)},
                {uv(c, i), uv(c, i + 1), uv(c + 1, i + 1), uv(c + 1, i)});
    }
  const size_t last = rings.size() - 1;
  const int centreUV = firstUV + static_cast<int>(rings.size()) * count;
  for (int i = 0; i < count; ++i) {
    if (down)
      AddFace({at(last, i + 1), at(last, i), centre}, {uv(last, i + 1), uv(last, i), centreUV});
    else
      AddFace({at(last, i), at(last, i + 1), centre}, {uv(last, i), uv(last, i + 1), centreUV});
  }
}

int PrimitiveMesh::AddDiscUVs(int rings, int count, double centreU, double centreV, double radius, bool flip)
{
  const int first = UVCount();
  for (int c = 0; c < rings; ++c)
    for (int i = 0; i < count; ++i) {
      double x = 0.0;
      double z = 0.0;
      RingPoint(radius * (rings - c) / rings, i, count, x, z);
      AddUV(centreU + x, centreV + (flip ? z : -z));
    }
  AddUV(centreU, centreV);
  return first;
}

void PrimitiveMesh::AddHardEdge(int a, int b) { m_hard.emplace_back(std::min(a, b), std::max(a, b)); }

std::shared_ptr<Mesh> PrimitiveMesh::Build(const MVector& axis, const std::string& uvSetName) const
{
  auto mesh = std::make_shared<Mesh>();
  MeshTopology& topo = *mesh->topology;
  topo.vertexCount = PointCount();
  topo.faceOffsets = m_offsets;
  topo.faceVertices = m_vertices;
  topo.uvSets.push_back(UVSet{uvSetName.empty() ? std::string("map1") : uvSetName, m_u, m_v, m_uvIds});
  topo.hardEdges = m_hard;
  std::sort(topo.hardEdges.begin(), topo.hardEdges.end());
  topo.hardEdges.erase(std::unique(topo.hardEdges.begin(), topo.hardEdges.end()), topo.hardEdges.end());
  const MMatrix turn = TurnFromY(axis);
  mesh->points.reserve(m_points.size());
  for (size_t i = 0; i < m_points.size(); i += 3) {
    const MVector p = MVector(m_points[i], m_points[i + 1], m_points[i + 2]) * turn;
    mesh->points.insert(mesh->points.end(), {ClampTo<float>(p.x), ClampTo<float>(p.y), ClampTo<float>(p.z)});
  }
  return mesh;
}

}
