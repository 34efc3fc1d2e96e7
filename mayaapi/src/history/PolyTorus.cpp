#include "HistoryNode.h"
#include "PrimitiveMesh.h"

#include <cmath>
#include <numbers>

// polyTorus: sh rings of sa vertices about the axis (each ring starting where polySphere's do), ring j at angle
// 2 pi j / sh + twist around the section from its outermost point upwards; quads ring by ring, and a grid of
// (sa + 1) x (sh + 1) UVs with both seams repeated. No scene stores a torus's mesh: this order is not pinned.
namespace standin {
namespace {

using K = AttrKind;

const AttributeSpec kAttributes[] = {
    {"radius", "r", K::Distance, 1.0},
    {"sectionRadius", "sr", K::Distance, 0.5},
    {"twist", "tw", K::Angle, 0.0},
    {"subdivisionsAxis", "sa", K::Int, 20.0},
    {"subdivisionsHeight", "sh", K::Int, 20.0},
    {"texture", "tx", K::Bool, 1.0},
    {"createUVs", "cuv", K::Bool, 1.0},
    {"reverseTexture", "rtx", K::Bool, 0.0},
};

std::shared_ptr<Mesh> ComputeTorus(Node& node, unsigned int, std::string& problem)
{
  const double r = Number(node, "radius");
  const double sr = Number(node, "sectionRadius");
  const double twist = Number(node, "twist");
  const int sa = Count(node, "subdivisionsAxis", 3);
  const int sh = Count(node, "subdivisionsHeight", 3);
  if (!FitsInMemory(static_cast<double>(sa) * sh, problem))
    return nullptr;
  PrimitiveMesh m(Number(node, "createUVs") != 0.0);
  for (int j = 0; j < sh; ++j) {
    const double angle = 2.0 * std::numbers::pi * j / sh + twist;
    m.AddRing(r + sr * std::cos(angle), sr * std::sin(angle), sa);
  }
  for (int j = 0; j <= sh; ++j)
    for (int i = 0; i <= sa; ++i)
      m.AddUV(static_cast<double>(i) / sa, static_cast<double>(j) / sh);
  for (int j = 0; j < sh; ++j)
    m.AddStrip(j * sa, (j + 1) % sh * sa, sa, j * (sa + 1), (j + 1) * (sa + 1));
  return m.Build(Vector(node, "axis"), Text(node, "uvSetName"));
}

}

const HistoryNodeType kPolyTorusType{"polyTorus", MFn::kPolyTorus, kPolyPrimitiveAttributes, kAttributes,
                                     "output", nullptr, ComputeTorus};

}
