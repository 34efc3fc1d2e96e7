#include "SceneGraph.h"

#include "NumberCast.h"
#include "history/HistoryNode.h"

#include <maya/MPoint.h>

#include <algorithm>

namespace standin {
namespace {

// Plug connections may form cycles in a malformed scene; evaluation gives defaults past this depth.
constexpr int kMaxEvaluationDepth = 64;
int g_depth = 0;
std::uint64_t g_cutoffs = 0;

struct DepthGuard {
  DepthGuard() { ++g_depth; }
  ~DepthGuard() { --g_depth; }
  DepthGuard(const DepthGuard&) = delete;
  DepthGuard& operator=(const DepthGuard&) = delete;
};

std::shared_ptr<Data> MeshValue(const std::shared_ptr<Mesh>& mesh)
{
  if (!mesh)
    return nullptr;
  auto data = std::make_shared<MeshData>();
  data->mesh = mesh;
  return data;
}

std::shared_ptr<Data> MatrixValue(const MMatrix& matrix)
{
  auto data = std::make_shared<MatrixData>();
  data->matrix = matrix;
  return data;
}

MMatrix MatrixOf(const Value& value)
{
  const auto* data = dynamic_cast<const MatrixData*>(value.data.get());
  return data ? data->matrix : MMatrix();
}

std::shared_ptr<Mesh> InputMesh(Node* deformer, unsigned int index)
{
  Attribute* input = deformer->FindAttribute("input");
  Attribute* geometry = deformer->FindAttribute("inputGeometry");
  if (!input || !geometry)
    return nullptr;
  const Value v = EvaluatePlug(deformer, PlugKey{geometry, {index}});
  const auto* data = dynamic_cast<const MeshData*>(v.data.get());
  return data ? data->mesh : nullptr;
}

// Linear-blend skinning in the shape's bind space: p' = sum over influences j of
// w_j * p * geomMatrix * bindPreMatrix_j * worldMatrix_j * geomMatrix^-1, geomMatrix being the shape's world matrix
// when it was bound, so that the bind pose leaves the points where they are.
std::shared_ptr<Mesh> SkinnedMesh(Node* skin, unsigned int index)
{
  std::shared_ptr<Mesh> input = InputMesh(skin, index);
  if (!input || skin->type != MFn::kSkinClusterFilter)
    return input;
  Attribute* matrixAttr = skin->FindAttribute("matrix");
  Attribute* bindAttr = skin->FindAttribute("bindPreMatrix");
  const MMatrix geom = MatrixOf(EvaluatePlug(skin, PlugKey{skin->FindAttribute("geomMatrix"), {}}));
  // By logical "matrix" index, as the weights name them.
  std::map<unsigned int, MMatrix> influence;
  for (unsigned int logical : skin->elements[PlugKey{matrixAttr, {}}]) {
    const MMatrix world = MatrixOf(EvaluatePlug(skin, PlugKey{matrixAttr, {logical}}));
    const MMatrix bind = MatrixOf(EvaluatePlug(skin, PlugKey{bindAttr, {logical}}));
    influence.emplace(logical, geom * bind * world * geom.inverse());
  }
  const auto weights = skin->skinWeights.find(index);
  const double envelope = EvaluateNumber(skin, "envelope");
  auto out = std::make_shared<Mesh>();
  out->topology = input->topology;
  out->points = input->points;
  if (weights == skin->skinWeights.end())
    return out;
  const SkinWeights& table = weights->second;
  const size_t vertexCount = std::min<size_t>(input->points.size() / 3, table.VertexCount());
  for (size_t v = 0; v < vertexCount; ++v) {
    const MPoint p(input->points[v * 3], input->points[v * 3 + 1], input->points[v * 3 + 2]);
    MPoint sum(0.0, 0.0, 0.0, 0.0);
    for (unsigned int e = table.Starts[v]; e < table.Starts[v + 1]; ++e) {
      const auto matrix = influence.find(table.Influences[e]);
      if (matrix == influence.end() || table.Weights[e] == 0.0)
        continue;
      const MPoint q = p * matrix->second;
      sum.x += table.Weights[e] * q.x;
      sum.y += table.Weights[e] * q.y;
      sum.z += table.Weights[e] * q.z;
    }
    out->points[v * 3] = ClampTo<float>(p.x + envelope * (sum.x - p.x));
    out->points[v * 3 + 1] = ClampTo<float>(p.y + envelope * (sum.y - p.y));
    out->points[v * 3 + 2] = ClampTo<float>(p.z + envelope * (sum.z - p.z));
  }
  return out;
}

// A curve keyed on time reads the scene's time unless its input is driven (a time warp, a clip); a driven-key
// curve (animCurveU*) reads its input plug.
double CurveInput(Node* curve)
{
  Attribute* input = curve->FindAttribute("input");
  if (!input)
    return curve->scene->currentSeconds;
  if (input->kind == AttrKind::Time && !IncomingConnection(curve, PlugKey{input, {}}))
    return curve->scene->currentSeconds;
  return EvaluatePlug(curve, PlugKey{input, {}}).number;
}

// Maya's pairBlend: each channel takes input 1, input 2, or the two blended by weight; rotations are blended as
// Euler angles, Maya's default interpolation.
double PairBlendOutput(Node* node, const Attribute& out)
{
  const bool rotate = out.parent->name == "outRotate";
  const std::string axis = out.name.substr(out.name.size() - 1);
  const std::string input = rotate ? "inRotate" : "inTranslate";
  const double first = EvaluateNumber(node, (input + axis + "1").c_str());
  const double second = EvaluateNumber(node, (input + axis + "2").c_str());
  const std::string mode = rotate ? "rotateMode" : "translate" + axis + "Mode";
  switch (static_cast<int>(EvaluateNumber(node, mode.c_str()))) {
  case 1: return first;
  case 2: return second;
  default: break;
  }
  const double weight = EvaluateNumber(node, "weight");
  return first + (second - first) * weight;
}

}

Value EvaluatePlug(Node* node, const PlugKey& key)
{
  Value result;
  if (!node || !key.attribute)
    return result;
  const Attribute* attr = key.attribute;
  result.number = attr->defaultNumber;
  result.text = attr->defaultText;
  if (attr->kind == AttrKind::Matrix)
    result.data = MatrixValue(MMatrix());
  if (g_depth > kMaxEvaluationDepth) {
    ++g_cutoffs;
    return result;
  }
  DepthGuard guard;

  if (const Connection* c = IncomingConnection(node, key)) {
    const auto stored = node->values.find(key);
    if (stored != node->values.end() && stored->second.held && stored->second.timeEpoch == node->scene->timeEpoch)
      return stored->second;
    return EvaluatePlug(c->srcNode, c->src);
  }
  // A child of a connected compound (translateX of a connected translate) follows the source's matching child.
  if (attr->parent && attr->parent->kind == AttrKind::Compound && !(attr->array && !key.indices.empty())) {
    if (const Connection* c = IncomingConnection(node, PlugKey{attr->parent, key.indices})) {
      const auto& mine = attr->parent->children;
      const auto& theirs = c->src.attribute->children;
      for (size_t i = 0; i < mine.size() && i < theirs.size(); ++i)
        if (mine[i] == attr)
          return EvaluatePlug(c->srcNode, PlugKey{theirs[i], c->src.indices});
    }
  }

  if (attr->IsNumericCompound()) {
    auto data = std::make_shared<NumericData>();
    data->count = static_cast<unsigned int>(attr->children.size());
    data->numericType = attr->children[0]->kind == AttrKind::Float ? 1 : 0;
    for (unsigned int i = 0; i < data->count; ++i)
      data->values[i] = EvaluatePlug(node, PlugKey{attr->children[i], key.indices}).number;
    result.data = data;
    return result;
  }

  const std::string& name = attr->name;
  const unsigned int index = key.indices.empty() ? 0 : key.indices.back();
  if (node->dag && attr->kind == AttrKind::Matrix && attr->array && !key.indices.empty()) {
    const auto paths = AllPaths(node);
    if (index < paths.size()) {
      std::vector<Node*> path = paths[index];
      if (name == "worldMatrix")
        return result.data = MatrixValue(PathMatrix(path)), result;
      if (name == "worldInverseMatrix")
        return result.data = MatrixValue(PathMatrix(path).inverse()), result;
      path.pop_back();
      if (name == "parentMatrix")
        return result.data = MatrixValue(PathMatrix(path)), result;
      if (name == "parentInverseMatrix")
        return result.data = MatrixValue(PathMatrix(path).inverse()), result;
    }
  }
  if ((node->type == MFn::kTransform || node->type == MFn::kJoint) && (name == "matrix" || name == "inverseMatrix"))
    return result.data = MatrixValue(name == "matrix" ? LocalMatrix(node) : LocalMatrix(node).inverse()), result;
  if (node->type == MFn::kMesh && (name == "outMesh" || name == "worldMesh"))
    return result.data = MeshValue(ShapeGeometry(node)), result;
  if (name == "output" && TypeHasFn(node->type, MFn::kAnimCurve)) {
    result.number = EvaluateCurve(node, CurveInput(node));
    return result;
  }
  if (node->type == MFn::kUnitConversion && name == "output") {
    result.number = EvaluateNumber(node, "input") * EvaluateNumber(node, "conversionFactor");
    return result;
  }
  if (node->type == MFn::kPairBlend && attr->parent && (attr->parent->name == "outTranslate" ||
                                                        attr->parent->name == "outRotate")) {
    result.number = PairBlendOutput(node, *attr);
    return result;
  }
  if (IsHistoryOutput(node, key))
    return result.data = MeshValue(HistoryOutput(node, index)), result;
  if (name == "outputGeometry" && TypeHasFn(node->type, MFn::kGeometryFilt))
    return result.data = MeshValue(CachedOutput(node, index, [&]() { return SkinnedMesh(node, index); })), result;
  if (node->type == MFn::kTime && name == "outTime") {
    result.number = node->scene->currentSeconds;
    return result;
  }

  const auto stored = node->values.find(key);
  if (stored != node->values.end())
    return stored->second;
  return result;
}

std::uint64_t EvaluationCutoffs() { return g_cutoffs; }

double EvaluateNumber(Node* node, const char* attrName)
{
  Attribute* a = node->FindAttribute(attrName);
  return a ? EvaluatePlug(node, PlugKey{a, {}}).number : 0.0;
}

std::shared_ptr<Mesh> CachedOutput(Node* node, unsigned int index,
                                   const std::function<std::shared_ptr<Mesh>()>& compute)
{
  if (node->outputGeneration != node->scene->generation) {
    node->outputCache.clear();
    node->evaluationProblem.clear();
    node->outputGeneration = node->scene->generation;
  }
  const auto cached = node->outputCache.find(index);
  if (cached != node->outputCache.end())
    return cached->second;
  std::shared_ptr<Mesh> mesh = compute();
  node->outputCache[index] = mesh;
  return mesh;
}

void SetNumber(Node* node, const PlugKey& key, double value)
{
  Value& stored = node->values[key];
  stored.number = value;
  stored.held = IncomingConnection(node, key) != nullptr;
  stored.timeEpoch = node->scene->timeEpoch;
  RegisterElements(node, key);
  node->scene->Touch();
}

// A mesh shape shows its input when inMesh is connected, else its own geometry (or, when its history gives
// nothing, the geometry the file cached on it), and its pnts tweaks move the points of either, as Maya's mesh does.
std::shared_ptr<Mesh> ShapeGeometry(Node* shape)
{
  if (!shape || shape->type != MFn::kMesh)
    return nullptr;
  Attribute* inMesh = shape->FindAttribute("inMesh");
  const bool fed = IncomingConnection(shape, PlugKey{inMesh, {}}) != nullptr;
  Attribute* pnts = shape->FindAttribute("pnts");
  const auto tweaks = shape->elements.find(PlugKey{pnts, {}});
  const bool tweaked = tweaks != shape->elements.end() && !tweaks->second.empty();
  if (!fed && !tweaked)
    return shape->mesh;
  return CachedOutput(shape, 0, [&]() {
    std::shared_ptr<Mesh> base = shape->mesh;
    if (fed) {
      EvaluateUpstream(shape);
      const Value v = EvaluatePlug(shape, PlugKey{inMesh, {}});
      const auto* data = dynamic_cast<const MeshData*>(v.data.get());
      if (data && data->mesh)
        base = data->mesh;
    }
    if (!tweaked)
      return base;
    auto moved = std::make_shared<Mesh>();
    moved->topology = base->topology;
    moved->points = base->points;
    moved->groups = base->groups;
    const size_t vertexCount = moved->points.size() / 3;
    for (unsigned int v : tweaks->second) {
      if (v >= vertexCount)
        continue;
      for (unsigned int c = 0; c < 3; ++c)
        moved->points[v * 3 + c] = ClampTo<float>(
            moved->points[v * 3 + c] + EvaluatePlug(shape, PlugKey{pnts->children[c], {v}}).number);
    }
    return moved;
  });
}

}
