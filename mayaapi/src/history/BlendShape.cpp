#include "HistoryNode.h"
#include "MeshEdit.h"

#include "../NumberCast.h"

#include <algorithm>
#include <map>

// blendShape: each base geometry (input[i]) moves towards its targets (inputTarget[i].inputTargetGroup[t], blended
// by weight[t]). A target's items sit at index 5000 + 1000 x weight (6000 is the full target, others in-betweens);
// an item's shape is the mesh connected to inputGeomTarget or, once the target mesh is gone, the offsets in
// inputPointsTarget for the vertices inputComponentsTarget lists. Between items the offsets blend linearly (from
// none at weight 0) and past the last they go on along the last segment. Weights scale by their target's
// directories (targetDirectory[d].directoryWeight up the parentDirectory chain), by the per-vertex targetWeights
// and baseWeights, and by the envelope. Targets blend in the base's own space: the "world" origin, which would also
// carry the difference between the base's and the target's transforms, is read as "local".
namespace standin {
namespace {

using K = AttrKind;

const AttributeSpec kAttributes[] = {
    {"weight", "w", K::Float, 0.0, nullptr, true},
    {"inputTarget", "it", K::Compound, 0.0, nullptr, true},
    {"inputTargetGroup", "itg", K::Compound, 0.0, "inputTarget", true},
    {"inputTargetItem", "iti", K::Compound, 0.0, "inputTargetGroup", true},
    {"inputGeomTarget", "igt", K::Mesh, 0.0, "inputTargetItem"},
    {"inputPointsTarget", "ipt", K::PointArray, 0.0, "inputTargetItem"},
    {"inputComponentsTarget", "ict", K::ComponentList, 0.0, "inputTargetItem"},
    {"targetWeights", "tw", K::Float, 1.0, "inputTargetGroup", true},
    {"baseWeights", "bw", K::Float, 1.0, "inputTarget", true},
    {"origin", "or", K::Enum, 1.0},
    {"topologyCheck", "tc", K::Bool, 1.0},
    {"supportNegativeWeights", "snw", K::Bool, 0.0},
    {"parentDirectory", "pndr", K::Int, 0.0, nullptr, true},
    {"targetDirectory", "tgdt", K::Compound, 0.0, nullptr, true},
    {"directoryName", "dtn", K::String, 0.0, "targetDirectory"},
    {"directoryWeight", "dwgh", K::Float, 1.0, "targetDirectory"},
    {"directoryVisibility", "dvs", K::Bool, 1.0, "targetDirectory"},
    {"directoryParentVisibility", "dpvs", K::Bool, 1.0, "targetDirectory"},
    {"parentIndex", "pnid", K::Int, 0.0, "targetDirectory"},
    {"midLayerId", "mlid", K::Int},
    {"midLayerParent", "mlpr", K::Int},
    {"deformationOrder", "dfo", K::Int},
    {"inbetweenInfoGroup", "ibig", K::Compound, 0.0, nullptr, true},
    {"inbetweenInfo", "ibi", K::Compound, 0.0, "inbetweenInfoGroup", true},
    {"inbetweenTargetName", "ibtn", K::String, 0.0, "inbetweenInfo"},
};

// Item indices map to weights as Maya numbers them.
double ItemWeight(unsigned int item) { return (static_cast<double>(item) - 5000.0) / 1000.0; }

// A target's per-vertex offsets at one item.
using Offsets = std::vector<MVector>;

bool ItemOffsets(Node& node, unsigned int base, unsigned int target, unsigned int item, const Mesh& in,
                 Offsets& offsets, std::string& problem)
{
  const int count = in.topology->vertexCount;
  offsets.assign(static_cast<size_t>(count), MVector());
  const std::vector<unsigned int> at{base, target, item};
  Attribute* geom = node.FindAttribute("inputGeomTarget");
  if (IncomingConnection(&node, PlugKey{geom, at})) {
    const std::shared_ptr<const Mesh> shape = InputMesh(node, "inputGeomTarget", at);
    if (!shape || shape->topology->vertexCount != count) {
      problem = "target " + std::to_string(target) + " at weight " + std::to_string(ItemWeight(item)) +
                (shape ? " has another vertex count than its base" : " could not be evaluated");
      return false;
    }
    for (size_t v = 0; v < offsets.size(); ++v)
      offsets[v] = MVector(shape->points[v * 3] - in.points[v * 3], shape->points[v * 3 + 1] - in.points[v * 3 + 1],
                           shape->points[v * 3 + 2] - in.points[v * 3 + 2]);
    return true;
  }
  Attribute* pointsAttr = node.FindAttribute("inputPointsTarget");
  const auto* points = dynamic_cast<const PointArrayData*>(EvaluatePlug(&node, PlugKey{pointsAttr, at}).data.get());
  const std::shared_ptr<const ComponentData> components = Components(node, "inputComponentsTarget", at);
  if (!points || !components)
    return true;
  const std::vector<int> vertices = Indices(components.get(), count, false);
  for (size_t k = 0; k < vertices.size() && k < points->points.size(); ++k) {
    const MPoint& p = points->points[k];
    offsets[static_cast<size_t>(vertices[k])] = MVector(p.x, p.y, p.z);
  }
  return true;
}

// The weight of target t after its directories: each directory up the parentDirectory chain scales it.
double DirectedWeight(Node& node, unsigned int target)
{
  double weight = Number(node, "weight", {target});
  auto directory = ClampTo<int>(Number(node, "parentDirectory", {target}));
  // Directories form a tree under directory 0; a malformed file may loop, so the walk is bounded.
  for (int step = 0; step < 64 && directory >= 0; ++step) {
    weight *= Number(node, "directoryWeight", {static_cast<unsigned int>(directory)});
    if (directory == 0)
      break;
    directory = ClampTo<int>(Number(node, "parentIndex", {static_cast<unsigned int>(directory)}));
  }
  return weight;
}

std::shared_ptr<Mesh> ComputeBlendShape(Node& node, unsigned int index, std::string& problem)
{
  Deformation d;
  if (!StartDeformation(node, index, problem, d))
    return nullptr;
  const size_t count = d.moved.size();
  std::vector<MVector> sum(count);
  for (unsigned int target : Elements(node, "inputTargetGroup", {index})) {
    const double weight = DirectedWeight(node, target);
    if (weight == 0.0)
      continue;
    // The items bracketing the weight, with the base itself as an item of weight 0 and no offsets.
    std::map<double, unsigned int> items;
    for (unsigned int item : Elements(node, "inputTargetItem", {index, target}))
      items.emplace(ItemWeight(item), item);
    items.erase(0.0);
    if (items.empty())
      continue;
    std::vector<std::pair<double, Offsets>> stops{{0.0, Offsets(count)}};
    for (const auto& [itemWeight, item] : items) {
      Offsets offsets;
      if (!ItemOffsets(node, index, target, item, *d.in, offsets, problem))
        return nullptr;
      stops.emplace_back(itemWeight, std::move(offsets));
    }
    std::sort(stops.begin(), stops.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    size_t hi = 1;
    while (hi + 1 < stops.size() && stops[hi].first < weight)
      ++hi;
    const auto& [w0, d0] = stops[hi - 1];
    const auto& [w1, d1] = stops[hi];
    const double t = (weight - w0) / (w1 - w0);
    for (size_t v = 0; v < count; ++v) {
      const double perVertex = Number(node, "targetWeights", {index, target, static_cast<unsigned int>(v)});
      sum[v] += (d0[v] + (d1[v] - d0[v]) * t) * perVertex;
    }
  }
  for (size_t v = 0; v < count; ++v) {
    if (!d.moved[v] || sum[v] == MVector())
      continue;
    const MVector offset = sum[v] * (d.envelope * Number(node, "baseWeights", {index, static_cast<unsigned int>(v)}));
    for (unsigned int c = 0; c < 3; ++c)
      d.out->points[v * 3 + c] = ClampTo<float>(d.out->points[v * 3 + c] + offset[c]);
  }
  return d.out;
}

}

const HistoryNodeType kBlendShapeType{"blendShape", MFn::kBlendShape, kGeometryFilterAttributes, kAttributes,
                                      "outputGeometry", "inputGeometry", ComputeBlendShape};

}
