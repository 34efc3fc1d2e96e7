#include "HistoryNode.h"
#include "MeshEdit.h"

#include <algorithm>
#include <cmath>
#include <map>

// polySubdFace splits the faces it is given (all of them without inputComponents), `divisions` times over.
// Quad mode puts a vertex at each face's centre and one in the middle of each of its edges, and makes a quad per
// corner; triangle mode only adds the centre and makes a triangle per edge. New vertices and UVs follow the old
// ones: the centres in face order, then the midpoints in the order the faces reach their edges. Each split face's
// quads take its place, quad k starting where a grid over a quad face would (a scene's mesh made this way pins the
// quads of a split quad); a face left whole that borders a split edge takes its midpoint as a corner. Hard edges
// stay hard on both halves; given normals are dropped, to be computed again. The linear method with more than one
// division along u or v is not evaluated.
namespace standin {
namespace {

using K = AttrKind;

const AttributeSpec kAttributes[] = {
    {"divisions", "dv", K::Int, 1.0},
    {"divisionsU", "duv", K::Int, 1.0},
    {"divisionsV", "dvv", K::Int, 1.0},
    {"mode", "m", K::Enum, 0.0},
    {"subdMethod", "sbm", K::Enum, 0.0},
};

using EdgeKey = std::pair<int, int>;
EdgeKey Key(int a, int b) { return a < b ? EdgeKey{a, b} : EdgeKey{b, a}; }

// Values kept per face corner by id, split as the vertices are: a UV set (u, v) or a colour set (r, g, b, a).
struct CornerValues {
  size_t width;
  std::vector<float> values;
  std::vector<int> oldIds;
  std::vector<int> centre;
  std::map<EdgeKey, int> midpoint;
  std::vector<int> newIds;

  int Of(int corner) const { return oldIds.empty() ? -1 : oldIds[static_cast<size_t>(corner)]; }
  int Average(const std::vector<int>& ids)
  {
    const size_t first = values.size();
    values.resize(first + width, 0.0f);
    for (int id : ids)
      for (size_t c = 0; c < width; ++c)
        values[first + c] += values[static_cast<size_t>(id) * width + c] / static_cast<float>(ids.size());
    return static_cast<int>(first / width);
  }
  int Middle(int a, int b)
  {
    if (a < 0 || b < 0)
      return -1;
    const auto found = midpoint.find(Key(a, b));
    if (found != midpoint.end())
      return found->second;
    return midpoint[Key(a, b)] = Average({a, b});
  }
};

// One level over the chosen faces; `chosen` comes back naming the faces they became.
Mesh SubdivideOnce(const Mesh& in, std::vector<char>& chosen, bool quads, TopologyMap& map)
{
  const MeshTopology& topo = *in.topology;
  const int faces = topo.FaceCount();
  auto corner = [&](int f, int k) {
    const int begin = topo.faceOffsets[static_cast<size_t>(f)];
    const int n = topo.faceOffsets[static_cast<size_t>(f) + 1] - begin;
    return begin + ((k % n) + n) % n;
  };
  auto sides = [&](int f) {
    return topo.faceOffsets[static_cast<size_t>(f) + 1] - topo.faceOffsets[static_cast<size_t>(f)];
  };
  auto vertexAt = [&](int c) { return topo.faceVertices[static_cast<size_t>(c)]; };

  Mesh out;
  auto outTopo = std::make_shared<MeshTopology>();
  out.points = in.points;
  auto average = [&](const std::vector<int>& vertices) {
    double sum[3] = {0.0, 0.0, 0.0};
    for (int v : vertices)
      for (size_t c = 0; c < 3; ++c)
        sum[c] += in.points[static_cast<size_t>(v) * 3 + c];
    for (double s : sum)
      out.points.push_back(static_cast<float>(s / static_cast<double>(vertices.size())));
    return static_cast<int>(out.points.size() / 3) - 1;
  };

  std::vector<int> centre(static_cast<size_t>(faces), -1);
  for (int f = 0; f < faces; ++f)
    if (chosen[static_cast<size_t>(f)]) {
      std::vector<int> vertices;
      for (int k = 0; k < sides(f); ++k)
        vertices.push_back(vertexAt(corner(f, k)));
      centre[static_cast<size_t>(f)] = average(vertices);
    }
  std::map<EdgeKey, int> midpoint;
  if (quads)
    for (int f = 0; f < faces; ++f)
      if (chosen[static_cast<size_t>(f)])
        for (int k = 0; k < sides(f); ++k) {
          const EdgeKey edge = Key(vertexAt(corner(f, k)), vertexAt(corner(f, k + 1)));
          if (!midpoint.count(edge))
            midpoint[edge] = average({edge.first, edge.second});
        }

  // The same construction in each UV and colour set; a midpoint value is shared by the faces that share both its
  // end values.
  std::vector<CornerValues> sets;
  for (const UVSet& uvs : topo.uvSets) {
    CornerValues values{2, {}, uvs.faceVertexUV, {}, {}, {}};
    for (size_t i = 0; i < uvs.u.size(); ++i)
      values.values.insert(values.values.end(), {uvs.u[i], uvs.v[i]});
    sets.push_back(std::move(values));
  }
  for (const ColorSet& colors : topo.colorSets)
    sets.push_back(CornerValues{4, colors.rgba, colors.faceVertexColor, {}, {}, {}});
  for (CornerValues& set : sets) {
    set.centre.assign(static_cast<size_t>(faces), -1);
    for (int f = 0; f < faces; ++f) {
      std::vector<int> ids;
      for (int k = 0; k < sides(f); ++k)
        ids.push_back(set.Of(corner(f, k)));
      if (chosen[static_cast<size_t>(f)] && std::find(ids.begin(), ids.end(), -1) == ids.end())
        set.centre[static_cast<size_t>(f)] = set.Average(ids);
    }
    if (quads)
      for (int f = 0; f < faces; ++f)
        if (chosen[static_cast<size_t>(f)])
          for (int k = 0; k < sides(f); ++k)
            set.Middle(set.Of(corner(f, k)), set.Of(corner(f, k + 1)));
  }

  // A corner is an old face-vertex (its vertex and values) or a new point (a centre or a midpoint).
  struct Corner {
    int vertex;
    std::vector<int> ids;
  };
  auto old = [&](int c) {
    Corner k{vertexAt(c), {}};
    for (const CornerValues& set : sets)
      k.ids.push_back(set.Of(c));
    return k;
  };
  auto middle = [&](int c0, int c1) {
    Corner k{midpoint.at(Key(vertexAt(c0), vertexAt(c1))), {}};
    for (CornerValues& set : sets)
      k.ids.push_back(set.Middle(set.Of(c0), set.Of(c1)));
    return k;
  };
  auto middleOf = [&](int f) {
    Corner k{centre[static_cast<size_t>(f)], {}};
    for (const CornerValues& set : sets)
      k.ids.push_back(set.centre[static_cast<size_t>(f)]);
    return k;
  };
  auto emit = [&](const std::vector<Corner>& face) {
    for (const Corner& k : face) {
      outTopo->faceVertices.push_back(k.vertex);
      for (size_t s = 0; s < sets.size(); ++s)
        sets[s].newIds.push_back(k.ids[s]);
    }
    outTopo->faceOffsets.push_back(static_cast<int>(outTopo->faceVertices.size()));
    return outTopo->FaceCount() - 1;
  };

  map.facesOf.assign(static_cast<size_t>(faces), {});
  map.vertexOf.resize(static_cast<size_t>(topo.vertexCount));
  for (int v = 0; v < topo.vertexCount; ++v)
    map.vertexOf[static_cast<size_t>(v)] = v;
  std::vector<char> nextChosen;
  for (int f = 0; f < faces; ++f) {
    const int n = sides(f);
    auto& made = map.facesOf[static_cast<size_t>(f)];
    if (!chosen[static_cast<size_t>(f)]) {
      std::vector<Corner> face;
      for (int k = 0; k < n; ++k) {
        face.push_back(old(corner(f, k)));
        if (midpoint.count(Key(vertexAt(corner(f, k)), vertexAt(corner(f, k + 1)))))
          face.push_back(middle(corner(f, k), corner(f, k + 1)));
      }
      made.push_back(emit(face));
      nextChosen.push_back(0);
      continue;
    }
    for (int k = 0; k < n; ++k) {
      std::vector<Corner> face;
      if (quads) {
        face = {old(corner(f, k)), middle(corner(f, k), corner(f, k + 1)), middleOf(f),
                middle(corner(f, k - 1), corner(f, k))};
        std::rotate(face.begin(), face.end() - (k % 4), face.end());
      } else {
        face = {old(corner(f, k)), old(corner(f, k + 1)), middleOf(f)};
      }
      made.push_back(emit(face));
      nextChosen.push_back(1);
    }
  }
  for (auto [a, b] : topo.hardEdges) {
    const auto mid = midpoint.find(Key(a, b));
    if (mid == midpoint.end()) {
      outTopo->hardEdges.emplace_back(a, b);
    } else {
      outTopo->hardEdges.push_back(Key(a, mid->second));
      outTopo->hardEdges.push_back(Key(b, mid->second));
    }
  }
  std::sort(outTopo->hardEdges.begin(), outTopo->hardEdges.end());
  outTopo->vertexCount = static_cast<int>(out.points.size() / 3);
  outTopo->currentUVSet = topo.currentUVSet;
  outTopo->currentColorSet = topo.currentColorSet;
  for (size_t s = 0; s < topo.uvSets.size(); ++s) {
    UVSet uvs{topo.uvSets[s].name, {}, {}, std::move(sets[s].newIds)};
    for (size_t i = 0; i + 1 < sets[s].values.size(); i += 2) {
      uvs.u.push_back(sets[s].values[i]);
      uvs.v.push_back(sets[s].values[i + 1]);
    }
    outTopo->uvSets.push_back(std::move(uvs));
  }
  for (size_t c = 0; c < topo.colorSets.size(); ++c) {
    CornerValues& set = sets[topo.uvSets.size() + c];
    const ColorSet& colors = topo.colorSets[c];
    outTopo->colorSets.push_back(
        ColorSet{colors.name, colors.representation, std::move(set.values), std::move(set.newIds)});
  }
  out.topology = outTopo;
  chosen = std::move(nextChosen);
  return out;
}

std::shared_ptr<Mesh> ComputeSubdFace(Node& node, unsigned int, std::string& problem)
{
  const std::shared_ptr<const Mesh> in = RequiredInput(node, "inputPolymesh", problem);
  if (!in)
    return nullptr;
  if (Number(node, "subdMethod") != 0.0 && (Number(node, "divisionsU") != 1.0 || Number(node, "divisionsV") != 1.0)) {
    problem = "its linear subdivision is not evaluated";
    return nullptr;
  }
  const int divisions = Count(node, "divisions", 0);
  const bool quads = Number(node, "mode") == 0.0;
  std::vector<char> chosen(static_cast<size_t>(in->topology->FaceCount()), 0);
  for (int f : Indices(Components(node, "inputComponents").get(), in->topology->FaceCount(), true))
    chosen[static_cast<size_t>(f)] = 1;
  if (!FitsInMemory(static_cast<double>(in->topology->FaceVertexCount()) * std::pow(4.0, divisions), problem))
    return nullptr;
  auto out = std::make_shared<Mesh>(*in);
  out->Invalidate();
  for (int level = 0; level < divisions; ++level) {
    TopologyMap map;
    Mesh next = SubdivideOnce(*out, chosen, quads, map);
    CarryGroups(*out, map, next);
    *out = std::move(next);
  }
  return out;
}

}

const HistoryNodeType kPolySubdFaceType{"polySubdFace", MFn::kPolySubdFacet, kPolyModifierAttributes, kAttributes,
                                        "output", "inputPolymesh", ComputeSubdFace};

}
