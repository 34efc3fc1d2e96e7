#include "HistoryNode.h"
#include "MeshEdit.h"

#include <algorithm>

// deleteComponent with faces removes them, and with them the vertices and UVs no other face uses; what remains
// keeps its order. Deleting edges or vertices merges the faces around them, which is not evaluated.
namespace standin {
namespace {

using K = AttrKind;

const AttributeSpec kAttributes[] = {
    {"deleteComponents", "dc", K::ComponentList},
    {"inputGeometry", "ig", K::Mesh},
    {"outputGeometry", "og", K::Mesh},
};

std::shared_ptr<Mesh> ComputeDeleteComponent(Node& node, unsigned int, std::string& problem)
{
  const std::shared_ptr<const Mesh> in = RequiredInput(node, "inputGeometry", problem);
  if (!in)
    return nullptr;
  const std::shared_ptr<const ComponentData> deleted = Components(node, "deleteComponents");
  if (!deleted)
    return CopyPoints(*in);
  if (deleted->type != MFn::kMeshPolygonComponent) {
    problem = "it deletes edges or vertices, which is not evaluated";
    return nullptr;
  }
  const MeshTopology& topo = *in->topology;
  std::vector<char> gone(static_cast<size_t>(topo.FaceCount()), 0);
  for (int f : Indices(deleted.get(), topo.FaceCount(), false))
    gone[static_cast<size_t>(f)] = 1;

  TopologyMap map;
  map.facesOf.resize(gone.size());
  std::vector<int> offsets{0};
  std::vector<int> corners;
  for (int f = 0; f < topo.FaceCount(); ++f) {
    if (gone[static_cast<size_t>(f)])
      continue;
    for (int c = topo.faceOffsets[static_cast<size_t>(f)]; c < topo.faceOffsets[static_cast<size_t>(f) + 1]; ++c)
      corners.push_back(c);
    map.facesOf[static_cast<size_t>(f)].push_back(static_cast<int>(offsets.size()) - 1);
    offsets.push_back(static_cast<int>(corners.size()));
  }
  std::shared_ptr<MeshTopology> kept = FromCorners(topo, offsets, corners);

  // Vertices and UVs keep their order, closing the gaps the deleted faces leave.
  map.vertexOf.assign(static_cast<size_t>(topo.vertexCount), -1);
  for (int v : kept->faceVertices)
    map.vertexOf[static_cast<size_t>(v)] = 0;
  auto out = std::make_shared<Mesh>();
  int next = 0;
  for (size_t v = 0; v < map.vertexOf.size(); ++v)
    if (map.vertexOf[v] == 0) {
      map.vertexOf[v] = next++;
      out->points.insert(out->points.end(), in->points.begin() + static_cast<long>(v * 3),
                         in->points.begin() + static_cast<long>(v * 3 + 3));
    }
  kept->vertexCount = next;
  for (int& v : kept->faceVertices)
    v = map.vertexOf[static_cast<size_t>(v)];
  for (UVSet& set : kept->uvSets) {
    std::vector<int> uvOf(set.u.size(), -1);
    for (int id : set.faceVertexUV)
      if (id >= 0)
        uvOf[static_cast<size_t>(id)] = 0;
    UVSet compact{set.name, {}, {}, {}};
    for (size_t id = 0; id < uvOf.size(); ++id)
      if (uvOf[id] == 0) {
        uvOf[id] = static_cast<int>(compact.u.size());
        compact.u.push_back(set.u[id]);
        compact.v.push_back(set.v[id]);
      }
    for (int id : set.faceVertexUV)
      compact.faceVertexUV.push_back(id >= 0 ? uvOf[static_cast<size_t>(id)] : -1);
    set = std::move(compact);
  }
  std::vector<std::pair<int, int>> hard;
  for (auto [a, b] : kept->hardEdges) {
    const int na = map.vertexOf[static_cast<size_t>(a)];
    const int nb = map.vertexOf[static_cast<size_t>(b)];
    if (na >= 0 && nb >= 0)
      hard.emplace_back(std::min(na, nb), std::max(na, nb));
  }
  std::sort(hard.begin(), hard.end());
  kept->hardEdges = std::move(hard);
  out->topology = kept;
  CarryGroups(*in, map, *out);
  return out;
}

}

const HistoryNodeType kDeleteComponentType{"deleteComponent", MFn::kDeleteComponent, {}, kAttributes,
                                           "outputGeometry", "inputGeometry", ComputeDeleteComponent};

}
