#include "MeshGeometry.h"

#include <algorithm>
#include <cmath>

namespace standin {
namespace {

void Normalize(float* v)
{
  const float len = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
  if (len > 0.0f) {
    v[0] /= len;
    v[1] /= len;
    v[2] /= len;
  }
}

std::pair<int, int> EdgeKey(int a, int b) { return a < b ? std::make_pair(a, b) : std::make_pair(b, a); }

// Face-vertex ids of every vertex, as a compressed adjacency (offsets into one flat list).
void BuildVertexCorners(const MeshTopology& topo, std::vector<int>& offsets, std::vector<int>& corners)
{
  offsets.assign(static_cast<size_t>(topo.vertexCount) + 1, 0);
  for (int v : topo.faceVertices)
    if (v >= 0 && v < topo.vertexCount)
      ++offsets[static_cast<size_t>(v) + 1];
  for (size_t i = 1; i < offsets.size(); ++i)
    offsets[i] += offsets[i - 1];
  corners.assign(static_cast<size_t>(offsets.back()), 0);
  std::vector<int> fill(offsets.begin(), offsets.end() - 1);
  for (int fv = 0; fv < topo.FaceVertexCount(); ++fv) {
    const int v = topo.faceVertices[static_cast<size_t>(fv)];
    if (v >= 0 && v < topo.vertexCount)
      corners[static_cast<size_t>(fill[static_cast<size_t>(v)]++)] = fv;
  }
}

}

int MeshTopology::FindUVSet(const std::string& name) const
{
  for (size_t i = 0; i < uvSets.size(); ++i)
    if (uvSets[i].name == name)
      return static_cast<int>(i);
  return -1;
}

bool MeshTopology::IsHardEdge(int a, int b) const
{
  return std::binary_search(hardEdges.begin(), hardEdges.end(), EdgeKey(a, b));
}

void Mesh::Invalidate()
{
  m_faceNormals.clear();
  m_normals.clear();
  m_tangents.clear();
  m_binormals.clear();
}

// Newell's method, so that non-planar polygons of any corner count get a stable normal.
const std::vector<float>& Mesh::FaceNormals() const
{
  if (!m_faceNormals.empty() || topology->FaceCount() == 0)
    return m_faceNormals;
  const MeshTopology& topo = *topology;
  m_faceNormals.assign(static_cast<size_t>(topo.FaceCount()) * 3, 0.0f);
  for (int f = 0; f < topo.FaceCount(); ++f) {
    const int begin = topo.faceOffsets[static_cast<size_t>(f)];
    const int end = topo.faceOffsets[static_cast<size_t>(f) + 1];
    float* n = &m_faceNormals[static_cast<size_t>(f) * 3];
    for (int k = begin; k < end; ++k) {
      const float* a = &points[static_cast<size_t>(topo.faceVertices[static_cast<size_t>(k)]) * 3];
      const int next = k + 1 < end ? k + 1 : begin;
      const float* b = &points[static_cast<size_t>(topo.faceVertices[static_cast<size_t>(next)]) * 3];
      n[0] += (a[1] - b[1]) * (a[2] + b[2]);
      n[1] += (a[2] - b[2]) * (a[0] + b[0]);
      n[2] += (a[0] - b[0]) * (a[1] + b[1]);
    }
    Normalize(n);
  }
  return m_faceNormals;
}

// A corner's normal averages the unit normals of the faces reachable around its vertex without crossing a hard
// edge, so hard edges split the shading and soft edges smooth it.
const std::vector<float>& Mesh::FaceVertexNormals() const
{
  const MeshTopology& topo = *topology;
  if (!topo.givenNormals.empty() && !topo.givenNormalsPartial)
    return topo.givenNormals;
  if (!m_normals.empty() || topo.FaceVertexCount() == 0)
    return m_normals;
  const std::vector<float>& faceNormals = FaceNormals();
  std::vector<int> faceOfCorner(static_cast<size_t>(topo.FaceVertexCount()));
  for (int f = 0; f < topo.FaceCount(); ++f)
    for (int k = topo.faceOffsets[static_cast<size_t>(f)]; k < topo.faceOffsets[static_cast<size_t>(f) + 1]; ++k)
      faceOfCorner[static_cast<size_t>(k)] = f;
  std::vector<int> offsets;
  std::vector<int> corners;
  BuildVertexCorners(topo, offsets, corners);

  auto otherEnds = [&](int fv, int& prev, int& next) {
    const int f = faceOfCorner[static_cast<size_t>(fv)];
    const int begin = topo.faceOffsets[static_cast<size_t>(f)];
    const int end = topo.faceOffsets[static_cast<size_t>(f) + 1];
    prev = topo.faceVertices[static_cast<size_t>(fv > begin ? fv - 1 : end - 1)];
    next = topo.faceVertices[static_cast<size_t>(fv + 1 < end ? fv + 1 : begin)];
  };

  m_normals.assign(static_cast<size_t>(topo.FaceVertexCount()) * 3, 0.0f);
  std::vector<int> group;
  std::vector<int> label;
  for (int v = 0; v < topo.vertexCount; ++v) {
    const int begin = offsets[static_cast<size_t>(v)];
    const int count = offsets[static_cast<size_t>(v) + 1] - begin;
    label.assign(static_cast<size_t>(count), -1);
    int groups = 0;
    for (int i = 0; i < count; ++i) {
      if (label[static_cast<size_t>(i)] >= 0)
        continue;
      label[static_cast<size_t>(i)] = groups;
      group.assign(1, i);
      while (!group.empty()) {
        const int at = group.back();
        group.pop_back();
        int prevA = 0;
        int nextA = 0;
        otherEnds(corners[static_cast<size_t>(begin + at)], prevA, nextA);
        for (int j = 0; j < count; ++j) {
          if (label[static_cast<size_t>(j)] >= 0)
            continue;
          int prevB = 0;
          int nextB = 0;
          otherEnds(corners[static_cast<size_t>(begin + j)], prevB, nextB);
          for (int shared : {prevA, nextA})
            if ((shared == prevB || shared == nextB) && !topo.IsHardEdge(v, shared)) {
              label[static_cast<size_t>(j)] = groups;
              group.push_back(j);
              break;
            }
        }
      }
      ++groups;
    }
    for (int g = 0; g < groups; ++g) {
      float sum[3] = {0.0f, 0.0f, 0.0f};
      for (int i = 0; i < count; ++i)
        if (label[static_cast<size_t>(i)] == g) {
          const float* n = &faceNormals[static_cast<size_t>(faceOfCorner[static_cast<size_t>(corners[static_cast<size_t>(begin + i)])]) * 3];
          sum[0] += n[0];
          sum[1] += n[1];
          sum[2] += n[2];
        }
      Normalize(sum);
      for (int i = 0; i < count; ++i)
        if (label[static_cast<size_t>(i)] == g)
          std::copy(sum, sum + 3, &m_normals[static_cast<size_t>(corners[static_cast<size_t>(begin + i)]) * 3]);
    }
  }
  // Where only some corners have user normals, the others keep the computed ones.
  for (size_t i = 0; i < topo.givenNormals.size() && i < m_normals.size(); ++i)
    if (!std::isnan(topo.givenNormals[i]))
      m_normals[i] = topo.givenNormals[i];
  return m_normals;
}

const std::vector<float>& Mesh::Tangents(int uvSet) const
{
  ComputeFrames(uvSet);
  return m_tangents[static_cast<size_t>(uvSet)];
}

const std::vector<float>& Mesh::Binormals(int uvSet) const
{
  ComputeFrames(uvSet);
  return m_binormals[static_cast<size_t>(uvSet)];
}

// Per face the UV gradients of its first triangle give a tangent (u direction) and binormal (v direction); corners
// that share a vertex and a UV id average them, so UV seams keep separate frames. Each frame is then made
// orthogonal to the corner normal and normalised.
void Mesh::ComputeFrames(int uvSet) const
{
  const MeshTopology& topo = *topology;
  if (m_tangents.size() < topo.uvSets.size()) {
    m_tangents.resize(topo.uvSets.size());
    m_binormals.resize(topo.uvSets.size());
  }
  std::vector<float>& tangents = m_tangents[static_cast<size_t>(uvSet)];
  std::vector<float>& binormals = m_binormals[static_cast<size_t>(uvSet)];
  if (!tangents.empty() || topo.FaceVertexCount() == 0)
    return;
  const UVSet& set = topo.uvSets[static_cast<size_t>(uvSet)];
  const std::vector<float>& normals = FaceVertexNormals();
  const int faceCount = topo.FaceCount();
  std::vector<float> faceT(static_cast<size_t>(faceCount) * 3, 0.0f);
  std::vector<float> faceB(static_cast<size_t>(faceCount) * 3, 0.0f);
  auto uvOf = [&](int fv, float& u, float& v) {
    const int id = set.faceVertexUV.empty() ? -1 : set.faceVertexUV[static_cast<size_t>(fv)];
    if (id < 0 || id >= static_cast<int>(set.u.size()))
      return false;
    u = set.u[static_cast<size_t>(id)];
    v = set.v[static_cast<size_t>(id)];
    return true;
  };
  for (int f = 0; f < faceCount; ++f) {
    const int begin = topo.faceOffsets[static_cast<size_t>(f)];
    if (topo.faceOffsets[static_cast<size_t>(f) + 1] - begin < 3)
      continue;
    float uv[3][2];
    bool ok = true;
    for (int k = 0; k < 3; ++k)
      ok = ok && uvOf(begin + k, uv[k][0], uv[k][1]);
    if (!ok)
      continue;
    const float* p0 = &points[static_cast<size_t>(topo.faceVertices[static_cast<size_t>(begin)]) * 3];
    const float* p1 = &points[static_cast<size_t>(topo.faceVertices[static_cast<size_t>(begin) + 1]) * 3];
    const float* p2 = &points[static_cast<size_t>(topo.faceVertices[static_cast<size_t>(begin) + 2]) * 3];
    const float e1[3] = {p1[0] - p0[0], p1[1] - p0[1], p1[2] - p0[2]};
    const float e2[3] = {p2[0] - p0[0], p2[1] - p0[1], p2[2] - p0[2]};
    const float du1 = uv[1][0] - uv[0][0];
    const float dv1 = uv[1][1] - uv[0][1];
    const float du2 = uv[2][0] - uv[0][0];
    const float dv2 = uv[2][1] - uv[0][1];
    const float det = du1 * dv2 - du2 * dv1;
    if (det == 0.0f)
      continue;
    const float r = 1.0f / det;
    for (int c = 0; c < 3; ++c) {
      faceT[static_cast<size_t>(f) * 3 + c] = (e1[c] * dv2 - e2[c] * dv1) * r;
      faceB[static_cast<size_t>(f) * 3 + c] = (e2[c] * du1 - e1[c] * du2) * r;
    }
  }
  std::vector<int> faceOfCorner(static_cast<size_t>(topo.FaceVertexCount()));
  for (int f = 0; f < faceCount; ++f)
    for (int k = topo.faceOffsets[static_cast<size_t>(f)]; k < topo.faceOffsets[static_cast<size_t>(f) + 1]; ++k)
      faceOfCorner[static_cast<size_t>(k)] = f;
  std::vector<int> offsets;
  std::vector<int> corners;
  BuildVertexCorners(topo, offsets, corners);
  tangents.assign(static_cast<size_t>(topo.FaceVertexCount()) * 3, 0.0f);
  binormals.assign(tangents.size(), 0.0f);
  for (int v = 0; v < topo.vertexCount; ++v) {
    const int begin = offsets[static_cast<size_t>(v)];
    const int end = offsets[static_cast<size_t>(v) + 1];
    for (int i = begin; i < end; ++i) {
      const int fv = corners[static_cast<size_t>(i)];
      const int uvId = set.faceVertexUV.empty() ? -1 : set.faceVertexUV[static_cast<size_t>(fv)];
      float t[3] = {0.0f, 0.0f, 0.0f};
      float b[3] = {0.0f, 0.0f, 0.0f};
      for (int j = begin; j < end; ++j) {
        const int other = corners[static_cast<size_t>(j)];
        const int otherUV = set.faceVertexUV.empty() ? -1 : set.faceVertexUV[static_cast<size_t>(other)];
        if (other != fv && (otherUV != uvId || uvId < 0))
          continue;
        const size_t f = static_cast<size_t>(faceOfCorner[static_cast<size_t>(other)]) * 3;
        for (int c = 0; c < 3; ++c) {
          t[c] += faceT[f + static_cast<size_t>(c)];
          b[c] += faceB[f + static_cast<size_t>(c)];
        }
      }
      const float* n = &normals[static_cast<size_t>(fv) * 3];
      const float tn = t[0] * n[0] + t[1] * n[1] + t[2] * n[2];
      const float bn = b[0] * n[0] + b[1] * n[1] + b[2] * n[2];
      for (int c = 0; c < 3; ++c) {
        t[c] -= n[c] * tn;
        b[c] -= n[c] * bn;
      }
      Normalize(t);
      Normalize(b);
      std::copy(t, t + 3, &tangents[static_cast<size_t>(fv) * 3]);
      std::copy(b, b + 3, &binormals[static_cast<size_t>(fv) * 3]);
    }
  }
}

}
