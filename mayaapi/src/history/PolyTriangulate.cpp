#include "HistoryNode.h"
#include "MeshEdit.h"

#include <maya/MVector.h>

#include <array>

// polyTriangulate splits the faces it is given (all of them without inputComponents) into triangles, each face's
// triangles taking its place in the face order. A convex face becomes a fan about its first corner; a concave one
// is cut ear by ear in the plane of its normal. No scene stores a triangulated mesh beside its history, so which
// diagonals Maya picks is not pinned.
namespace standin {
namespace {

MVector Point(const Mesh& mesh, int vertex)
{
  const float* p = &mesh.points[static_cast<size_t>(vertex) * 3];
  return MVector(p[0], p[1], p[2]);
}

// Ear clipping of one face given by its corner ids; appends triangles (three corner ids each) to `out`.
void Triangulate(const Mesh& mesh, const std::vector<int>& corners, std::vector<int>& out)
{
  const auto& vertices = mesh.topology->faceVertices;
  auto at = [&](int corner) { return Point(mesh, vertices[static_cast<size_t>(corner)]); };
  MVector normal;
  for (size_t i = 0; i < corners.size(); ++i) {
    const MVector a = at(corners[i]);
    const MVector b = at(corners[(i + 1) % corners.size()]);
    normal += MVector((a.y - b.y) * (a.z + b.z), (a.z - b.z) * (a.x + b.x), (a.x - b.x) * (a.y + b.y));
  }
  std::vector<int> left = corners;
  auto convex = [&](const MVector& a, const MVector& b, const MVector& c) {
    return ((b - a) ^ (c - b)) * normal > 0.0;
  };
  auto inside = [&](const MVector& p, const MVector& a, const MVector& b, const MVector& c) {
    return ((b - a) ^ (p - a)) * normal >= 0.0 && ((c - b) ^ (p - b)) * normal >= 0.0 &&
           ((a - c) ^ (p - c)) * normal >= 0.0;
  };
  while (left.size() > 3) {
    size_t ear = 1;
    bool found = false;
    for (size_t i = 1; i <= left.size() && !found; ++i) {
      const size_t cur = i % left.size();
      const size_t prev = (cur + left.size() - 1) % left.size();
      const size_t next = (cur + 1) % left.size();
      const MVector a = at(left[prev]);
      const MVector b = at(left[cur]);
      const MVector c = at(left[next]);
      if (!convex(a, b, c))
        continue;
      bool clear = true;
      for (size_t k = 0; k < left.size() && clear; ++k)
        if (k != prev && k != cur && k != next && inside(at(left[k]), a, b, c))
          clear = false;
      if (clear) {
        ear = cur;
        found = true;
      }
    }
    // A degenerate face (no ear found: collinear or self-intersecting) still becomes a fan, keeping every corner.
    const size_t prev = (ear + left.size() - 1) % left.size();
    const size_t next = (ear + 1) % left.size();
    out.insert(out.end(), {left[prev], left[ear], left[next]});
    left.erase(left.begin() + static_cast<long>(ear));
  }
  out.insert(out.end(), left.begin(), left.end());
}

std::shared_ptr<Mesh> ComputeTriangulate(Node& node, unsigned int, std::string& problem)
{
  const std::shared_ptr<const Mesh> in = RequiredInput(node, "inputPolymesh", problem);
  if (!in)
    return nullptr;
  const MeshTopology& topo = *in->topology;
  std::vector<char> chosen(static_cast<size_t>(topo.FaceCount()), 0);
  for (int f : Indices(Components(node, "inputComponents").get(), topo.FaceCount(), true))
    chosen[static_cast<size_t>(f)] = 1;
  std::vector<int> offsets{0};
  std::vector<int> corners;
  TopologyMap map;
  map.facesOf.resize(chosen.size());
  for (int v = 0; v < topo.vertexCount; ++v)
    map.vertexOf.push_back(v);
  std::vector<int> face;
  std::vector<int> triangles;
  for (int f = 0; f < topo.FaceCount(); ++f) {
    face.clear();
    for (int c = topo.faceOffsets[static_cast<size_t>(f)]; c < topo.faceOffsets[static_cast<size_t>(f) + 1]; ++c)
      face.push_back(c);
    triangles.clear();
    if (chosen[static_cast<size_t>(f)] && face.size() > 3)
      Triangulate(*in, face, triangles);
    else
      triangles = face;
    const size_t step = chosen[static_cast<size_t>(f)] && face.size() > 3 ? 3 : face.size();
    for (size_t t = 0; t < triangles.size(); t += step) {
      corners.insert(corners.end(), triangles.begin() + static_cast<long>(t),
                     triangles.begin() + static_cast<long>(t + step));
      map.facesOf[static_cast<size_t>(f)].push_back(static_cast<int>(offsets.size()) - 1);
      offsets.push_back(static_cast<int>(corners.size()));
    }
  }
  auto out = std::make_shared<Mesh>();
  out->topology = FromCorners(topo, offsets, corners);
  out->points = in->points;
  CarryGroups(*in, map, *out);
  return out;
}

}

const HistoryNodeType kPolyTriangulateType{"polyTriangulate", MFn::kPolyTriangulate, kPolyModifierAttributes, {},
                                           "output", "inputPolymesh", ComputeTriangulate};

}
