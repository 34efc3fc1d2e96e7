#include "MeshEdit.h"

#include "HistoryNode.h"

#include "../NumberCast.h"

#include <algorithm>

namespace standin {

std::vector<int> Indices(const ComponentData* component, int count, bool noneMeansAll)
{
  std::vector<int> indices;
  if ((!component && noneMeansAll) || (component && component->complete)) {
    indices.resize(static_cast<size_t>(std::max(count, 0)));
    for (int i = 0; i < count; ++i)
      indices[static_cast<size_t>(i)] = i;
    return indices;
  }
  if (!component)
    return indices;
  std::vector<char> seen(static_cast<size_t>(std::max(count, 0)), 0);
  for (int i : component->elements)
    if (i >= 0 && i < count && !seen[static_cast<size_t>(i)]) {
      seen[static_cast<size_t>(i)] = 1;
      indices.push_back(i);
    }
  return indices;
}

void CarryGroups(const Mesh& in, const TopologyMap& map, Mesh& out)
{
  for (const auto& [id, group] : in.groups) {
    if (group->type == MFn::kMeshEdgeComponent)
      continue;
    auto carried = std::make_shared<ComponentData>(group->type);
    carried->complete = group->complete;
    const bool faces = group->type == MFn::kMeshPolygonComponent;
    const int count = faces ? in.topology->FaceCount() : in.topology->vertexCount;
    for (int i : Indices(group.get(), count, false)) {
      if (faces) {
        if (static_cast<size_t>(i) < map.facesOf.size())
          for (int f : map.facesOf[static_cast<size_t>(i)])
            carried->elements.push_back(f);
      } else if (static_cast<size_t>(i) < map.vertexOf.size() && map.vertexOf[static_cast<size_t>(i)] >= 0) {
        carried->elements.push_back(map.vertexOf[static_cast<size_t>(i)]);
      }
    }
    std::sort(carried->elements.begin(), carried->elements.end());
    out.groups[id] = carried;
  }
}

std::shared_ptr<MeshTopology> FromCorners(const MeshTopology& in, const std::vector<int>& offsets,
                                          const std::vector<int>& corners)
{
  auto out = std::make_shared<MeshTopology>();
  out->vertexCount = in.vertexCount;
  out->faceOffsets = offsets;
  out->currentUVSet = in.currentUVSet;
  out->currentColorSet = in.currentColorSet;
  out->givenNormalsPartial = in.givenNormalsPartial;
  out->hardEdges = in.hardEdges;
  out->faceVertices.reserve(corners.size());
  for (int c : corners)
    out->faceVertices.push_back(in.faceVertices[static_cast<size_t>(c)]);
  for (const UVSet& set : in.uvSets) {
    UVSet copy{set.name, set.u, set.v, {}};
    if (!set.faceVertexUV.empty())
      for (int c : corners)
        copy.faceVertexUV.push_back(set.faceVertexUV[static_cast<size_t>(c)]);
    out->uvSets.push_back(std::move(copy));
  }
  for (const ColorSet& set : in.colorSets) {
    ColorSet copy{set.name, set.representation, set.rgba, {}};
    if (!set.faceVertexColor.empty())
      for (int c : corners)
        copy.faceVertexColor.push_back(set.faceVertexColor[static_cast<size_t>(c)]);
    out->colorSets.push_back(std::move(copy));
  }
  if (!in.givenNormals.empty())
    for (int c : corners)
      for (size_t k = 0; k < 3; ++k)
        out->givenNormals.push_back(in.givenNormals[static_cast<size_t>(c) * 3 + k]);
  return out;
}

std::shared_ptr<Mesh> CopyPoints(const Mesh& in)
{
  auto out = std::make_shared<Mesh>();
  out->topology = in.topology;
  out->points = in.points;
  out->groups = in.groups;
  return out;
}

}

namespace standin {

bool StartDeformation(Node& node, unsigned int index, std::string& problem, Deformation& deformation)
{
  deformation.in = RequiredInput(node, "inputGeometry", problem, {index});
  if (!deformation.in)
    return false;
  const Mesh& in = *deformation.in;
  deformation.out = CopyPoints(in);
  deformation.envelope = Number(node, "envelope");
  const int count = in.topology->vertexCount;
  const auto group = in.groups.find(ClampTo<int>(Number(node, "groupId", {index})));
  const bool all = group == in.groups.end() || group->second->type != MFn::kMeshVertComponent ||
                   group->second->complete;
  deformation.moved.assign(static_cast<size_t>(count), all ? 1 : 0);
  if (!all)
    for (int v : Indices(group->second.get(), count, false))
      deformation.moved[static_cast<size_t>(v)] = 1;
  return true;
}

}
