#include "HistoryNode.h"
#include "PrimitiveMesh.h"


// polyCylinder: sh + 1 rings of sa vertices from the bottom up (the rings start where polySphere's do), the caps'
// inner rings from the rim inwards, bottom then top, then the bottom and the top centre; faces: the side ring by
// ring, then the bottom cap from the rim inwards, then the top. With subdivisionsCaps 0 each cap is one polygon.
// No scene stores a cylinder's mesh: this order and the UV layout (the side as a strip in the middle of 0..1, each
// cap a disc above and below it, as Maya lays out "normalize") are not pinned, and createUVs 1 and 3 take the same
// layout. Round caps are not built.
namespace standin {
namespace {

using K = AttrKind;

const AttributeSpec kAttributes[] = {
    {"radius", "r", K::Distance, 1.0},
    {"height", "h", K::Distance, 2.0},
    {"subdivisionsAxis", "sa", K::Int, 20.0},
    {"subdivisionsHeight", "sh", K::Int, 1.0},
    {"subdivisionsCaps", "sc", K::Int, 0.0},
    {"roundCap", "rcp", K::Bool, 0.0},
    {"roundCapHeightCompensation", "rch", K::Bool, 0.0},
    {"texture", "tx", K::Enum, 2.0},
    {"createUVs", "cuv", K::Enum, 2.0},
    {"maya70", "m70", K::Bool, 0.0},
    {"maya2022UVs", "ouv", K::Bool, 0.0},
};

constexpr double kCapRadius = 0.15625;

std::shared_ptr<Mesh> ComputeCylinder(Node& node, unsigned int, std::string& problem)
{
  const double r = Number(node, "radius");
  const double h = Number(node, "height");
  const int sa = Count(node, "subdivisionsAxis", 3);
  const int sh = Count(node, "subdivisionsHeight", 1);
  const int sc = Count(node, "subdivisionsCaps", 0);
  const bool withUVs = Count(node, "createUVs", 0) != 0;
  if (Number(node, "roundCap") != 0.0) {
    problem = "round caps are not built";
    return nullptr;
  }
  if (!FitsInMemory(static_cast<double>(sa) * (sh + 2.0 * sc + 2.0), problem))
    return nullptr;

  PrimitiveMesh m(withUVs);
  auto ring = [&](double radius, double y) { return m.AddRing(radius, y, sa); };
  std::vector<int> side;
  for (int j = 0; j <= sh; ++j)
    side.push_back(ring(r, -h / 2 + h * j / sh));
  // A cap's rings from the rim (the side's end ring) inwards.
  std::vector<int> bottom{side.front()};
  std::vector<int> top{side.back()};
  for (int c = 1; c < sc; ++c)
    bottom.push_back(ring(r * (sc - c) / sc, -h / 2));
  for (int c = 1; c < sc; ++c)
    top.push_back(ring(r * (sc - c) / sc, h / 2));
  const int bottomCentre = sc > 0 ? m.AddPoint(0.0, -h / 2, 0.0) : -1;
  const int topCentre = sc > 0 ? m.AddPoint(0.0, h / 2, 0.0) : -1;

  const int sideUV = m.UVCount();
  for (int j = 0; j <= sh; ++j)
    for (int i = 0; i <= sa; ++i)
      m.AddUV(0.375 + 0.25 * i / sa, 0.3125 + 0.375 * j / sh);
  const int rings = static_cast<int>(bottom.size());
  const int bottomUV = m.AddDiscUVs(rings, sa, 0.5, kCapRadius, kCapRadius, true);
  const int topUV = m.AddDiscUVs(rings, sa, 0.5, 1.0 - kCapRadius, kCapRadius, false);

  auto at = [&](int ringStart, int i) { return ringStart + i % sa; };
  for (int j = 0; j < sh; ++j)
    m.AddStrip(side[j], side[j + 1], sa, sideUV + j * (sa + 1), sideUV + (j + 1) * (sa + 1));
  m.AddCap(bottom, bottomCentre, sa, bottomUV, true);
  m.AddCap(top, topCentre, sa, topUV, false);

  for (int i = 0; i < sa; ++i) {
    m.AddHardEdge(at(side.front(), i), at(side.front(), i + 1));
    m.AddHardEdge(at(side.back(), i), at(side.back(), i + 1));
  }
  return m.Build(Vector(node, "axis"), Text(node, "uvSetName"));
}

}

const HistoryNodeType kPolyCylinderType{"polyCylinder", MFn::kPolyCylinder, kPolyPrimitiveAttributes, kAttributes,
                                        "output", nullptr, ComputeCylinder};

}
