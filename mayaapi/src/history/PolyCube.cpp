#include "HistoryNode.h"
#include "PrimitiveMesh.h"

#include <array>
#include <functional>

// polyCube: Maya builds a band of quads that wraps the cube around the X axis (front upwards, top backwards, back
// downwards, bottom forwards), each band position a row of sw + 1 vertices from -x to +x, then the +x side and
// the -x side. Scenes that store both a polyCube and its mesh pin this for sw x sh x sd = 1x1x1 and 1x5x1 with
// createUVs 4: vertices, faces, UVs and hard edges (the cube's own edges hard, subdivision edges soft). Nothing
// pins where Maya puts the sides' inner vertices and UVs (sh > 1 and sd > 1): they follow the sides' rows here,
// bottom to top, front to back. Nor is any layout but createUVs 4 pinned; the others follow Maya's descriptions
// (1 the unfolded cross in scene units, 2 each side on its own 0..1 square, 3 the cross stretched to 0..1 in u
// and v separately).
namespace standin {
namespace {

using K = AttrKind;

const AttributeSpec kAttributes[] = {
    {"width", "w", K::Distance, 1.0},
    {"height", "h", K::Distance, 1.0},
    {"depth", "d", K::Distance, 1.0},
    {"subdivisionsWidth", "sw", K::Int, 1.0},
    {"subdivisionsHeight", "sh", K::Int, 1.0},
    {"subdivisionsDepth", "sd", K::Int, 1.0},
    {"texture", "tx", K::Enum, 1.0},
    {"createUVs", "cuv", K::Enum, 3.0},
};

enum CreateUVs { kNoUVs, kUnnormalized, kEachSide, kCollectively, kPreserveAspect };

struct Cube {
  double w, h, d;
  int sw, sh, sd;

  int Band() const { return 2 * sh + 2 * sd; }
  // The (y, z) of band position k and its distance along the band from the front's bottom edge.
  void BandPoint(int k, double& y, double& z) const
  {
    if (k <= sh) {
      y = -h / 2 + h * k / sh;
      z = d / 2;
    } else if (k <= sh + sd) {
      y = h / 2;
      z = d / 2 - d * (k - sh) / sd;
    } else if (k <= 2 * sh + sd) {
      y = h / 2 - h * (k - sh - sd) / sh;
      z = -d / 2;
    } else {
      y = -h / 2;
      z = -d / 2 + d * (k - 2 * sh - sd) / sd;
    }
  }
  double BandLength(int k) const
  {
    if (k <= sh)
      return h * k / sh;
    if (k <= sh + sd)
      return h + d * (k - sh) / sd;
    if (k <= 2 * sh + sd)
      return h + d + h * (k - sh - sd) / sh;
    return 2 * h + d + d * (k - 2 * sh - sd) / sd;
  }
};

// Where a point of the unfolded cross lands in UV space: the cross is the band (u from d to d + w, v along the
// band) with the +x side unfolded to its right and the -x side to its left.
struct CrossLayout {
  double scaleU = 1.0;
  double scaleV = 1.0;
  double offsetU = 0.0;

  static CrossLayout For(int mode, const Cube& layout)
  {
    const double width = 2 * layout.d + layout.w;
    const double length = 2 * layout.h + 2 * layout.d;
    if (mode == kCollectively)
      return CrossLayout{1.0 / width, 1.0 / length, 0.0};
    if (mode == kPreserveAspect)
      return CrossLayout{0.25, 0.25, 0.125};
    return CrossLayout{};
  }
};

std::shared_ptr<Mesh> ComputeCube(Node& node, unsigned int, std::string& problem)
{
  const Cube c{Number(node, "width"),
               Number(node, "height"),
               Number(node, "depth"),
               Count(node, "subdivisionsWidth", 1),
               Count(node, "subdivisionsHeight", 1),
               Count(node, "subdivisionsDepth", 1)};
  const int mode = Count(node, "createUVs", 0);
  const double sw = c.sw;
  const double sh = c.sh;
  const double sd = c.sd;
  if (!FitsInMemory(2.0 * (sw * sh + sw * sd + sh * sd), problem))
    return nullptr;

  PrimitiveMesh m(mode != kNoUVs);
  const int band = c.Band();
  const int row = c.sw + 1;
  auto x = [&](int i) { return -c.w / 2 + c.w * i / c.sw; };
  for (int k = 0; k < band; ++k) {
    double y = 0.0;
    double z = 0.0;
    c.BandPoint(k, y, z);
    for (int i = 0; i <= c.sw; ++i)
      m.AddPoint(x(i), y, z);
  }
  const int rightBase = m.PointCount();
  for (int v = 1; v < c.sh; ++v)
    for (int u = 1; u < c.sd; ++u)
      m.AddPoint(c.w / 2, -c.h / 2 + c.h * v / c.sh, c.d / 2 - c.d * u / c.sd);
  const int leftBase = m.PointCount();
  for (int v = 1; v < c.sh; ++v)
    for (int u = 1; u < c.sd; ++u)
      m.AddPoint(-c.w / 2, -c.h / 2 + c.h * v / c.sh, -c.d / 2 + c.d * u / c.sd);

  auto onBand = [&](int i, int k) { return (k % band) * row + i; };
  // A side's grid runs u along z (+x side front to back, -x side back to front) and v along y, bottom to top.
  auto right = [&](int u, int v) {
    if (v == 0)
      return onBand(c.sw, band - u);
    if (v == c.sh)
      return onBand(c.sw, c.sh + u);
    if (u == 0)
      return onBand(c.sw, v);
    if (u == c.sd)
      return onBand(c.sw, 2 * c.sh + c.sd - v);
    return rightBase + (v - 1) * (c.sd - 1) + (u - 1);
  };
  auto left = [&](int u, int v) {
    if (v == 0)
      return onBand(0, 2 * c.sh + c.sd + u);
    if (v == c.sh)
      return onBand(0, c.sh + c.sd - u);
    if (u == 0)
      return onBand(0, 2 * c.sh + c.sd - v);
    if (u == c.sd)
      return onBand(0, v);
    return leftBase + (v - 1) * (c.sd - 1) + (u - 1);
  };
  auto quad = [](auto corner, int a, int b) {
    return std::array{corner(a, b), corner(a + 1, b), corner(a + 1, b + 1), corner(a, b + 1)};
  };

  // One array of UV ids per face, in face order; empty without UVs.
  std::vector<std::array<int, 4>> uvs;
  if (mode == kEachSide) {
    auto grid = [&](int columns, int rows) {
      const int base = m.UVCount();
      for (int j = 0; j <= rows; ++j)
        for (int i = 0; i <= columns; ++i)
          m.AddUV(static_cast<double>(i) / columns, static_cast<double>(j) / rows);
      return [base, columns](int i, int j) { return base + j * (columns + 1) + i; };
    };
    const std::array<int, 5> starts{0, c.sh, c.sh + c.sd, 2 * c.sh + c.sd, band};
    for (size_t side = 0; side + 1 < starts.size(); ++side) {
      const int rows = starts[side + 1] - starts[side];
      const auto id = grid(c.sw, rows);
      for (int j = 0; j < rows; ++j)
        for (int i = 0; i < c.sw; ++i)
          uvs.push_back(quad(id, i, j));
    }
    for (int side = 0; side < 2; ++side) {
      const auto id = grid(c.sd, c.sh);
      for (int v = 0; v < c.sh; ++v)
        for (int u = 0; u < c.sd; ++u)
          uvs.push_back(quad(id, u, v));
    }
  } else if (mode != kNoUVs) {
    const Cube unit{1.0, 1.0, 1.0, c.sw, c.sh, c.sd};
    // Maya's preserve-aspect layout is the unit cube's cross whatever the cube's size.
    const Cube& shape = mode == kPreserveAspect ? unit : c;
    const CrossLayout layout = CrossLayout::For(mode, shape);
    auto add = [&](double u, double v) { return m.AddUV(layout.offsetU + u * layout.scaleU, v * layout.scaleV); };
    const int bandBase = m.UVCount();
    for (int k = 0; k <= band; ++k)
      for (int i = 0; i <= c.sw; ++i)
        add(shape.d + shape.w * i / c.sw, shape.BandLength(k));
    auto bandId = [&](int i, int k) { return bandBase + k * row + i; };
    // The +x side shares the front's right column; its other columns follow, row by row.
    const int rightUV = m.UVCount();
    for (int v = 0; v <= c.sh; ++v)
      for (int u = 1; u <= c.sd; ++u)
        add(shape.d + shape.w + shape.d * u / c.sd, shape.h * v / c.sh);
    auto rightId = [&](int u, int v) { return u == 0 ? bandId(c.sw, v) : rightUV + v * c.sd + u - 1; };
    const int leftUV = m.UVCount();
    for (int v = 0; v <= c.sh; ++v)
      for (int u = 0; u < c.sd; ++u)
        add(shape.d * u / c.sd, shape.h * v / c.sh);
    auto leftId = [&](int u, int v) { return u == c.sd ? bandId(0, v) : leftUV + v * c.sd + u; };
    for (int k = 0; k < band; ++k)
      for (int i = 0; i < c.sw; ++i)
        uvs.push_back(quad(bandId, i, k));
    for (int v = 0; v < c.sh; ++v)
      for (int u = 0; u < c.sd; ++u)
        uvs.push_back(quad(rightId, u, v));
    for (int v = 0; v < c.sh; ++v)
      for (int u = 0; u < c.sd; ++u)
        uvs.push_back(quad(leftId, u, v));
  }

  std::vector<std::array<int, 4>> faces;
  for (int k = 0; k < band; ++k)
    for (int i = 0; i < c.sw; ++i)
      faces.push_back(quad(onBand, i, k));
  for (auto corner : {std::function<int(int, int)>(right), std::function<int(int, int)>(left)})
    for (int v = 0; v < c.sh; ++v)
      for (int u = 0; u < c.sd; ++u)
        faces.push_back(quad(corner, u, v));
  for (size_t f = 0; f < faces.size(); ++f)
    m.AddFace(faces[f], uvs.empty() ? std::span<const int>() : uvs[f]);

  for (int k : {0, c.sh, c.sh + c.sd, 2 * c.sh + c.sd})
    for (int i = 0; i < c.sw; ++i)
      m.AddHardEdge(onBand(i, k), onBand(i + 1, k));
  for (int i : {0, c.sw})
    for (int k = 0; k < band; ++k)
      m.AddHardEdge(onBand(i, k), onBand(i, k + 1));

  return m.Build(Vector(node, "axis"), Text(node, "uvSetName"));
}

}

const HistoryNodeType kPolyCubeType{"polyCube", MFn::kPolyCube, kPolyPrimitiveAttributes, kAttributes,
                                    "output", nullptr, ComputeCube};

}
