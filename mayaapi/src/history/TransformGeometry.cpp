#include "HistoryNode.h"
#include "MeshEdit.h"

#include "../NumberCast.h"

#include <maya/MPoint.h>

// transformGeometry moves the geometry through its transform matrix (or its inverse), as Maya writes it when a
// transform is frozen into a mesh with history. Given normals turn with the matrix unless freezeNormals holds them;
// reverseNormals turns every face the other way round, keeping its first corner.
namespace standin {
namespace {

using K = AttrKind;

const AttributeSpec kAttributes[] = {
    {"inputGeometry", "ig", K::Mesh},
    {"outputGeometry", "og", K::Mesh},
    {"transform", "txf", K::Matrix},
    {"invertTransform", "itf", K::Bool},
    {"freezeNormals", "fn", K::Enum},
    {"reverseNormals", "rn", K::Bool},
};

void ReverseFaces(MeshTopology& topo)
{
  auto reverse = [&](auto& perCorner, int width) {
    for (int f = 0; f < topo.FaceCount(); ++f) {
      const int begin = topo.faceOffsets[static_cast<size_t>(f)] + 1;
      const int end = topo.faceOffsets[static_cast<size_t>(f) + 1];
      for (int a = begin, b = end - 1; a < b; ++a, --b)
        for (int c = 0; c < width; ++c)
          std::swap(perCorner[static_cast<size_t>(a * width + c)], perCorner[static_cast<size_t>(b * width + c)]);
    }
  };
  reverse(topo.faceVertices, 1);
  for (UVSet& set : topo.uvSets)
    if (!set.faceVertexUV.empty())
      reverse(set.faceVertexUV, 1);
  for (ColorSet& set : topo.colorSets)
    if (!set.faceVertexColor.empty())
      reverse(set.faceVertexColor, 1);
  if (!topo.givenNormals.empty()) {
    reverse(topo.givenNormals, 3);
    for (float& n : topo.givenNormals)
      n = -n;
  }
}

std::shared_ptr<Mesh> ComputeTransformGeometry(Node& node, unsigned int, std::string& problem)
{
  const std::shared_ptr<const Mesh> in = RequiredInput(node, "inputGeometry", problem);
  if (!in)
    return nullptr;
  MMatrix matrix;
  if (Attribute* a = node.FindAttribute("transform"))
    if (const auto* data = dynamic_cast<const MatrixData*>(EvaluatePlug(&node, PlugKey{a, {}}).data.get()))
      matrix = data->matrix;
  if (Number(node, "invertTransform") != 0.0)
    matrix = matrix.inverse();
  std::shared_ptr<Mesh> out = CopyPoints(*in);
  for (size_t i = 0; i + 2 < out->points.size(); i += 3) {
    const MPoint p = MPoint(out->points[i], out->points[i + 1], out->points[i + 2]) * matrix;
    out->points[i] = ClampTo<float>(p.x);
    out->points[i + 1] = ClampTo<float>(p.y);
    out->points[i + 2] = ClampTo<float>(p.z);
  }
  const bool turnNormals = !in->topology->givenNormals.empty() && Number(node, "freezeNormals") == 0.0;
  const bool reverse = Number(node, "reverseNormals") != 0.0;
  if (turnNormals || reverse) {
    auto topo = std::make_shared<MeshTopology>(*in->topology);
    if (turnNormals)
      for (size_t i = 0; i + 2 < topo->givenNormals.size(); i += 3) {
        const MVector n = MVector(topo->givenNormals[i], topo->givenNormals[i + 1], topo->givenNormals[i + 2])
                              .transformAsNormal(matrix)
                              .normal();
        topo->givenNormals[i] = static_cast<float>(n.x);
        topo->givenNormals[i + 1] = static_cast<float>(n.y);
        topo->givenNormals[i + 2] = static_cast<float>(n.z);
      }
    if (reverse)
      ReverseFaces(*topo);
    out->topology = topo;
  }
  return out;
}

}

const HistoryNodeType kTransformGeometryType{"transformGeometry", MFn::kTransformGeometry, {}, kAttributes,
                                             "outputGeometry", "inputGeometry", ComputeTransformGeometry};

}
