#include "HistoryNode.h"
#include "MeshEdit.h"

#include <algorithm>

// deleteComponent with faces removes them, and with them the vertices, UVs and colours no other face uses; what remains
// keeps its order. Deleting edges or vertices merges the faces around them, which is not evaluated.
namespace standin {
namespace {

using K = AttrKind;

const AttributeSpec kAttributes[] = {
    {"deleteComponents", "dc", K::ComponentList},
    {"inputGeometry", "ig", K::Mesh},
    {"outputGeometry", "og", K::Mesh},
};

// Drops the values (`width` floats each) no corner uses any more, keeping the others in order and renumbering the
// corners' ids.
std::vector<float> CompactValues(const std::vector<float>& values, size_t width, std::vector<int>& ids)
{
  std::vector<int> newId(values.size() / width, -1);
  for (int id : ids)
    if (id >= 0)
      newId[static_cast<size_t>(id)] = 0;
  std::vector<float> kept;
  for (size_t id = 0; id < newId.size(); ++id)
    if (newId[id] == 0) {
      newId[id] = static_cast<int>(kept.size() / width);
      kept.insert(kept.end(), values.begin() + static_cast<long>(id * width),
                  values.begin() + static_cast<long>((id + 1) * width));
    }
  for (int& id : ids)
    id = id >= 0 ? newId[static_cast<size_t>(id)] : -1;
  return kept;
}

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
    std::vector<float> uv;
    for (size_t i = 0; i < set.u.size(); ++i)
      uv.insert(uv.end(), {set.u[i], set.v[i]});
    uv = CompactValues(uv, 2, set.faceVertexUV);
    set.u.clear();
    set.v.clear();
    for (size_t i = 0; i + 1 < uv.size(); i += 2) {
      set.u.push_back(uv[i]);
      set.v.push_back(uv[i + 1]);
    }
  }
  for (ColorSet& set : kept->colorSets)
    set.rgba = CompactValues(set.rgba, 4, set.faceVertexColor);
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
