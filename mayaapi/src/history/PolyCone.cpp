#include "HistoryNode.h"
#include "PrimitiveMesh.h"

// polyCone: sh rings of sa vertices from the base up, narrowing to the apex (the rings start where polySphere's
// do), the apex, then the base's inner rings from the rim inwards and its centre; faces: the side ring by ring up
// to the fan at the apex, then the base, one polygon with subdivisionsCap 0. No scene stores a cone's mesh: this
// order and the UV layout (the side above v = 0.5 with a UV per apex triangle, the base a disc below) are not
// pinned, and createUVs 1 and 3 take the same layout. Round caps are not built.
namespace standin {
namespace {

using K = AttrKind;

const AttributeSpec kAttributes[] = {
    {"radius", "r", K::Distance, 1.0},
    {"height", "h", K::Distance, 2.0},
    {"subdivisionsAxis", "sa", K::Int, 20.0},
    {"subdivisionsHeight", "sh", K::Int, 1.0},
    {"subdivisionsCap", "sc", K::Int, 0.0},
    {"roundCap", "rcp", K::Bool, 0.0},
    {"texture", "tx", K::Bool, 1.0},
    {"createUVs", "cuv", K::Enum, 2.0},
};

std::shared_ptr<Mesh> ComputeCone(Node& node, unsigned int, std::string& problem)
{
  const double r = Number(node, "radius");
  const double h = Number(node, "height");
  const int sa = Count(node, "subdivisionsAxis", 3);
  const int sh = Count(node, "subdivisionsHeight", 1);
  const int sc = Count(node, "subdivisionsCap", 0);
  const bool withUVs = Count(node, "createUVs", 0) != 0;
  if (Number(node, "roundCap") != 0.0) {
    problem = "round caps are not built";
    return nullptr;
  }
  if (!FitsInMemory(static_cast<double>(sa) * (sh + sc + 1.0), problem))
    return nullptr;

  PrimitiveMesh m(withUVs);
  auto ring = [&](double radius, double y) { return m.AddRing(radius, y, sa); };
  std::vector<int> side;
  for (int j = 0; j < sh; ++j)
    side.push_back(ring(r * (sh - j) / sh, -h / 2 + h * j / sh));
  const int apex = m.AddPoint(0.0, h / 2, 0.0);
  std::vector<int> base{side.front()};
  for (int c = 1; c < sc; ++c)
    base.push_back(ring(r * (sc - c) / sc, -h / 2));
  const int centre = sc > 0 ? m.AddPoint(0.0, -h / 2, 0.0) : -1;

  const int sideUV = m.UVCount();
  for (int j = 0; j < sh; ++j)
    for (int i = 0; i <= sa; ++i)
      m.AddUV(static_cast<double>(i) / sa, 0.5 + 0.5 * j / sh);
  const int apexUV = m.UVCount();
  for (int i = 0; i < sa; ++i)
    m.AddUV((i + 0.5) / sa, 1.0);
  const int baseUV = m.AddDiscUVs(static_cast<int>(base.size()), sa, 0.25, 0.25, 0.25, true);

  auto at = [&](int ringStart, int i) { return ringStart + i % sa; };
  auto sideAt = [&](int i, int j) { return sideUV + j * (sa + 1) + i; };
  for (int j = 0; j + 1 < sh; ++j)
    m.AddStrip(side[j], side[j + 1], sa, sideAt(0, j), sideAt(0, j + 1));
  for (int i = 0; i < sa; ++i)
    m.AddFace({at(side.back(), i), at(side.back(), i + 1), apex},
              {sideAt(i, sh - 1), sideAt(i + 1, sh - 1), apexUV + i});
  m.AddCap(base, centre, sa, baseUV, true);
  for (int i = 0; i < sa; ++i)
    m.AddHardEdge(at(side.front(), i), at(side.front(), i + 1));
  return m.Build(Vector(node, "axis"), Text(node, "uvSetName"));
}

}

const HistoryNodeType kPolyConeType{"polyCone", MFn::kPolyCone, kPolyPrimitiveAttributes, kAttributes,
                                    "output", nullptr, ComputeCone};

}
