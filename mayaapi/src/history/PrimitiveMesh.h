#pragma once

#include "../MeshGeometry.h"

#include <maya/MVector.h>

#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace standin {

// Collects a polygon primitive's vertices, UVs and faces in the order Maya creates them, built around +Y, then
// turns it to the node's axis. Faces name their vertices and one UV per corner, which a primitive made without
// UVs ignores.
// Vertex i of a ring of `count` around +Y: Maya starts one step past +X and turns from +X towards -Z (a scene's
// polySphere pins this).
void RingPoint(double radius, int i, int count, double& x, double& z);

class PrimitiveMesh {
public:
  explicit PrimitiveMesh(bool withUVs) : m_withUVs(withUVs) {}

  int AddPoint(double x, double y, double z);
  int AddUV(double u, double v);
  void AddFace(std::span<const int> vertices, std::span<const int> uvs = {});
  void AddFace(std::initializer_list<int> vertices, std::initializer_list<int> uvs = {});
  void AddHardEdge(int a, int b);
  // A ring of `count` vertices around +Y at height y (see RingPoint); returns its first vertex.
  int AddRing(double radius, double y, int count);
  // Quads between two rings of `count` vertices, `lower` to `upper`, each ring's UVs a row of count + 1 (the seam
  // repeated) from lowerUV and upperUV.
  void AddStrip(int lower, int upper, int count, int lowerUV, int upperUV);
  int PointCount() const { return static_cast<int>(m_points.size() / 3); }
  int UVCount() const { return static_cast<int>(m_u.size()); }

  // The mesh with +Y turned onto `axis` (the shortest turn; a zero axis keeps +Y), its UVs in the set named
  // `uvSetName` ("map1" when empty); a primitive made without UVs still has that set, empty, as in Maya.
  std::shared_ptr<Mesh> Build(const MVector& axis, const std::string& uvSetName) const;

  // A flat cap of `count`-vertex rings, rings[0] its rim and the others inwards, and its centre vertex (-1 for one
  // polygon over the rim): quads between rings, then a fan about the centre, looking down when `down`. Its UVs
  // are a disc from AddDiscUVs.
  void AddCap(const std::vector<int>& rings, int centre, int count, int firstUV, bool down);
  // A disc of UVs for a cap of `rings` rings: a UV per ring vertex, ring by ring from the rim, then the centre;
  // `flip` mirrors v so that a cap seen from below reads unmirrored. Returns the first UV id.
  int AddDiscUVs(int rings, int count, double centreU, double centreV, double radius, bool flip);

private:
  bool m_withUVs;
  std::vector<double> m_points;
  std::vector<float> m_u;
  std::vector<float> m_v;
  std::vector<int> m_offsets{0};
  std::vector<int> m_vertices;
  std::vector<int> m_uvIds;
  std::vector<std::pair<int, int>> m_hard;
};

}
