#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace standin {

struct ComponentData;

struct UVSet {
  std::string name;
  std::vector<float> u;
  std::vector<float> v;
  // One UV id per face-vertex, -1 where the corner has no UV.
  std::vector<int> faceVertexUV;
};

// A colour per face-vertex: RGBA values and one colour id per face-vertex.
struct ColorSet {
  std::string name;
  // Which channels the set holds, as Maya's MFnMesh::MColorRepresentation: 1 alpha, 3 RGB, 4 RGBA.
  int representation = 4;
  std::vector<float> rgba;
  // One colour id per face-vertex, -1 where the corner has no colour.
  std::vector<int> faceVertexColor;
};

// Everything of a polygon mesh but its point positions, so that a deformed copy shares it.
struct MeshTopology {
  int vertexCount = 0;
  std::vector<int> faceOffsets{0};
  std::vector<int> faceVertices;
  std::vector<UVSet> uvSets;
  int currentUVSet = 0;
  std::vector<ColorSet> colorSets;
  int currentColorSet = 0;
  // Explicit face-vertex normals (three floats per face-vertex); empty when computed from the edges. A NaN marks a
  // corner without one, whose normal is computed (givenNormalsPartial is then set).
  std::vector<float> givenNormals;
  bool givenNormalsPartial = false;
  // Hard edges as sorted vertex pairs; every other edge is soft.
  std::vector<std::pair<int, int>> hardEdges;

  int FaceCount() const { return static_cast<int>(faceOffsets.size()) - 1; }
  int FaceVertexCount() const { return static_cast<int>(faceVertices.size()); }
  int FindUVSet(const std::string& name) const;
  bool IsHardEdge(int a, int b) const;
};

// A mesh: points over a shared topology, with normals and tangent frames computed once on demand into flat arrays.
struct Mesh {
  std::shared_ptr<MeshTopology> topology = std::make_shared<MeshTopology>();
  std::vector<float> points;
  // Component groups tagged by groupParts nodes in the mesh's history, by group id: the faces an objectGroups
  // entry of the shape takes, the vertices a deformer works on.
  std::map<int, std::shared_ptr<const ComponentData>> groups;

  const std::vector<float>& FaceNormals() const;
  const std::vector<float>& FaceVertexNormals() const;
  const std::vector<float>& Tangents(int uvSet) const;
  const std::vector<float>& Binormals(int uvSet) const;
  void Invalidate();

private:
  void ComputeFrames(int uvSet) const;

  mutable std::vector<float> m_faceNormals;
  mutable std::vector<float> m_normals;
  mutable std::vector<std::vector<float>> m_tangents;
  mutable std::vector<std::vector<float>> m_binormals;
};

}
