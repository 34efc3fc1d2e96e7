#include "HistoryNode.h"
#include "PrimitiveMesh.h"

#include <cmath>
#include <numbers>

// polySphere: sh - 1 rings of sa vertices from the south pole up, then the south and the north pole; quads ring by
// ring, then the fan at the south pole, then the one at the north. A scene storing the default sphere's mesh
// (radius 1, 20 x 20, sawtooth UVs) pins vertices, faces and UVs: a grid of sa + 1 UVs per ring with the seam
// repeated, then one UV per pole triangle midway along its edge. The pinched layout (createUVs 1) is not pinned:
// each pole here has one UV, in the middle of its row.
namespace standin {
namespace {

using K = AttrKind;

const AttributeSpec kAttributes[] = {
    {"radius", "r", K::Distance, 1.0},
    {"subdivisionsAxis", "sa", K::Int, 20.0},
    {"subdivisionsHeight", "sh", K::Int, 20.0},
    {"texture", "tx", K::Enum, 1.0},
    {"createUVs", "cuv", K::Enum, 2.0},
};

enum CreateUVs { kNoUVs, kPinched, kSawtooth };

std::shared_ptr<Mesh> ComputeSphere(Node& node, unsigned int, std::string& problem)
{
  const double r = Number(node, "radius");
  const int sa = Count(node, "subdivisionsAxis", 3);
  const int sh = Count(node, "subdivisionsHeight", 2);
  const int mode = Count(node, "createUVs", 0);
  if (!FitsInMemory(static_cast<double>(sa) * sh, problem))
    return nullptr;
  PrimitiveMesh m(mode != kNoUVs);
  const int rings = sh - 1;
  for (int j = 0; j < rings; ++j) {
    const double latitude = -std::numbers::pi / 2 + std::numbers::pi * (j + 1) / sh;
    m.AddRing(r * std::cos(latitude), r * std::sin(latitude), sa);
  }
  const int south = m.AddPoint(0.0, -r, 0.0);
  const int north = m.AddPoint(0.0, r, 0.0);
  auto at = [&](int i, int j) { return j * sa + i % sa; };
  auto uv = [&](int i, int j) { return j * (sa + 1) + i; };
  int southUV = 0;
  int northUV = 0;
  if (mode != kNoUVs) {
    for (int j = 0; j < rings; ++j)
      for (int i = 0; i <= sa; ++i)
        m.AddUV(static_cast<double>(i) / sa, static_cast<double>(j + 1) / sh);
    if (mode == kSawtooth) {
      southUV = m.UVCount();
      for (int i = 0; i < sa; ++i)
        m.AddUV((i + 0.5) / sa, 0.0);
      northUV = m.UVCount();
      for (int i = 0; i < sa; ++i)
        m.AddUV((i + 0.5) / sa, 1.0);
    } else {
      southUV = m.AddUV(0.5, 0.0);
      northUV = m.AddUV(0.5, 1.0);
    }
  }
  const int poleStep = mode == kSawtooth ? 1 : 0;
  for (int j = 0; j + 1 < rings; ++j)
    m.AddStrip(at(0, j), at(0, j + 1), sa, uv(0, j), uv(0, j + 1));
  for (int i = 0; i < sa; ++i)
    m.AddFace({at(i + 1, 0), at(i, 0), south}, {uv(i + 1, 0), uv(i, 0), southUV + poleStep * i});
  const int top = rings - 1;
  for (int i = 0; i < sa; ++i)
    m.AddFace({at(i, top), at(i + 1, top), north}, {uv(i, top), uv(i + 1, top), northUV + poleStep * i});
  return m.Build(Vector(node, "axis"), Text(node, "uvSetName"));
}

}

const HistoryNodeType kPolySphereType{"polySphere", MFn::kPolySphere, kPolyPrimitiveAttributes, kAttributes,
                                      "output", nullptr, ComputeSphere};

}
