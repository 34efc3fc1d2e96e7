#include "HistoryNode.h"
#include "PrimitiveMesh.h"

#include <algorithm>

// polyPlane: rows of sw + 1 vertices from -x to +x, the rows from +z to -z, one UV per vertex. A scene storing a
// plane's mesh pins this for 3 x 3 subdivisions with UVs stretched over 0..1 (createUVs 1). The aspect-preserving
// layout (createUVs 2) is not pinned by a scene: the longer side spans 0..1 here, the other its share of it.
namespace standin {
namespace {

using K = AttrKind;

const AttributeSpec kAttributes[] = {
    {"width", "w", K::Distance, 1.0},
    {"height", "h", K::Distance, 1.0},
    {"subdivisionsWidth", "sw", K::Int, 10.0},
    {"subdivisionsHeight", "sh", K::Int, 10.0},
    {"texture", "tx", K::Enum, 1.0},
    {"createUVs", "cuv", K::Enum, 1.0},
};

enum CreateUVs { kNoUVs, kStretch, kPreserveAspect };

std::shared_ptr<Mesh> ComputePlane(Node& node, unsigned int, std::string& problem)
{
  const double w = Number(node, "width");
  const double h = Number(node, "height");
  const int sw = Count(node, "subdivisionsWidth", 1);
  const int sh = Count(node, "subdivisionsHeight", 1);
  const int mode = Count(node, "createUVs", 0);
  if (!FitsInMemory(static_cast<double>(sw) * sh, problem))
    return nullptr;
  double spanU = 1.0;
  double spanV = 1.0;
  if (mode == kPreserveAspect && std::max(w, h) > 0.0) {
    spanU = w / std::max(w, h);
    spanV = h / std::max(w, h);
  }
  PrimitiveMesh m(mode != kNoUVs);
  for (int j = 0; j <= sh; ++j)
    for (int i = 0; i <= sw; ++i) {
      m.AddPoint(-w / 2 + w * i / sw, 0.0, h / 2 - h * j / sh);
      m.AddUV(spanU * i / sw, spanV * j / sh);
    }
  auto at = [&](int i, int j) { return j * (sw + 1) + i; };
  for (int j = 0; j < sh; ++j)
    for (int i = 0; i < sw; ++i) {
      const std::array<int, 4> corners{at(i, j), at(i + 1, j), at(i + 1, j + 1), at(i, j + 1)};
      m.AddFace(corners, corners);
    }
  return m.Build(Vector(node, "axis"), Text(node, "uvSetName"));
}

}

const HistoryNodeType kPolyPlaneType{"polyPlane", MFn::kPolyMesh, kPolyPrimitiveAttributes, kAttributes,
                                     "output", nullptr, ComputePlane};

}
