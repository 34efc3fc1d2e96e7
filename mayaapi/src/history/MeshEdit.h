#pragma once

#include "../SceneGraph.h"

#include <memory>
#include <vector>

// What the modifiers that change a mesh's topology share: choosing the faces they work on and carrying the
// component groups of the history over to the faces and vertices they produce.
namespace standin {

// The indices a component names among `count` elements, in its order, without duplicates or indices out of
// range; a complete component (or none at all, when `noneMeansAll`) names them all.
std::vector<int> Indices(const ComponentData* component, int count, bool noneMeansAll);

// Which face of the new mesh came from which face of the old, and where each old vertex went (-1 when removed;
// vertices a modifier adds belong to no group).
struct TopologyMap {
  std::vector<std::vector<int>> facesOf;
  std::vector<int> vertexOf;
};

// The input's face and vertex groups carried over to `out` through the map; a complete group stays complete.
void CarryGroups(const Mesh& in, const TopologyMap& map, Mesh& out);

// A topology whose faces are made of the input's face-vertices (corner ids into its faceVertices), each keeping its
// vertex, UVs, colours and given normal: `offsets` starts every face in `corners`, with the end as its last entry.
std::shared_ptr<MeshTopology> FromCorners(const MeshTopology& in, const std::vector<int>& offsets,
                                          const std::vector<int>& corners);

// A mesh over the same topology and points with its own copy of the points, for deformers to move.
std::shared_ptr<Mesh> CopyPoints(const Mesh& in);

// What a deformer's output element starts from: its input geometry, a copy of it to move, the vertices it may move
// (those of the group its input's "groupId" names, or all when the geometry carries no such group) and its envelope.
struct Deformation {
  std::shared_ptr<const Mesh> in;
  std::shared_ptr<Mesh> out;
  std::vector<char> moved;
  double envelope = 0.0;
};
// False, with the reason in `problem`, when nothing feeds input[index].
bool StartDeformation(Node& node, unsigned int index, std::string& problem, Deformation& deformation);

}
