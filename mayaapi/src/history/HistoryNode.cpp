#include "HistoryNode.h"

#include "../NumberCast.h"

#include <cmath>
#include <set>
#include <utility>

namespace standin {
namespace {

using K = AttrKind;

const AttributeSpec kNode[] = {
    {"message", "msg", K::Message},
    {"isHistoricallyInteresting", "ihi", K::Int, 2.0},
    {"nodeState", "nds", K::Enum},
    {"frozen", "fzn", K::Bool},
    {"caching", "cch", K::Bool},
};

// nodeState as Maya numbers it: 1 passes the input on unchanged, 2 stops evaluation.
enum NodeState { kNormal, kHasNoEffect, kBlocking };

const AttributeSpec kPolyPrimitive[] = {
    {"output", "out", K::Mesh},
    {"axis", "ax", K::Compound},
    {"axisX", "axx", K::Distance, 0.0, "axis"},
    {"axisY", "axy", K::Distance, 1.0, "axis"},
    {"axisZ", "axz", K::Distance, 0.0, "axis"},
    {"paramWarn", "pw", K::Bool, 1.0},
    {"uvSetName", "uvs", K::String},
    {"componentTagCreate", "ctc", K::Bool, 1.0},
    {"componentTagPrefix", "pfx", K::String},
    {"componentTagSuffix", "sfx", K::String},
};

const AttributeSpec kPolyModifier[] = {
    {"output", "out", K::Mesh},
    {"inputPolymesh", "ip", K::Mesh},
    {"inputComponents", "ics", K::ComponentList},
    {"useOldPolyArchitecture", "uopa", K::Bool},
    {"cacheInput", "cin", K::Int},
};

const AttributeSpec kGeometryFilter[] = {
    {"input", "ip", K::Compound, 0.0, nullptr, true},
    {"inputGeometry", "ig", K::Mesh, 0.0, "input"},
    {"groupId", "gi", K::Int, 0.0, "input"},
    {"outputGeometry", "og", K::Mesh, 0.0, nullptr, true},
    {"envelope", "en", K::Float, 1.0},
};

const HistoryNodeType* const kTypes[] = {
    &kPolyCubeType, &kPolySphereType, &kPolyPlaneType, &kPolyCylinderType, &kPolyConeType, &kPolyTorusType,
    &kGroupPartsType, &kTransformGeometryType, &kPolySubdFaceType, &kPolyTriangulateType, &kDeleteComponentType,
    &kTweakType, &kBlendShapeType,
};

const HistoryNodeType* TypeOf(const Node& node)
{
  for (const HistoryNodeType* type : kTypes)
    if (node.typeName == type->typeName)
      return type;
  return nullptr;
}

void AddAttributes(Node& node, std::span<const AttributeSpec> definitions)
{
  for (const AttributeSpec& definition : definitions) {
    auto a = std::make_unique<Attribute>();
    a->name = definition.name;
    a->shortName = definition.shortName;
    a->kind = definition.kind;
    a->defaultNumber = definition.defaultNumber;
    a->array = definition.array;
    node.AddAttribute(std::move(a), definition.parent ? node.FindAttribute(definition.parent) : nullptr);
  }
}

Attribute* Find(Node& node, const char* attribute) { return node.FindAttribute(attribute); }

bool IsCurrent(const Node& node, unsigned int index)
{
  return node.outputGeneration == node.scene->generation && node.outputCache.count(index) != 0;
}

}

const std::span<const AttributeSpec> kPolyPrimitiveAttributes{kPolyPrimitive};
const std::span<const AttributeSpec> kPolyModifierAttributes{kPolyModifier};
const std::span<const AttributeSpec> kGeometryFilterAttributes{kGeometryFilter};

bool BuildHistoryNodeType(Node& node)
{
  const HistoryNodeType* type = TypeOf(node);
  if (!type)
    return false;
  node.type = type->type;
  AddAttributes(node, kNode);
  AddAttributes(node, type->inherited);
  AddAttributes(node, type->own);
  return true;
}

bool IsHistoryOutput(const Node* node, const PlugKey& key)
{
  // Every history output is a mesh; the type lookup compares names, so other plugs are turned away first.
  if (!node || !key.attribute || key.attribute->kind != AttrKind::Mesh)
    return false;
  const HistoryNodeType* type = TypeOf(*node);
  return type && key.attribute->name == type->output &&
         key.indices.size() == key.attribute->ArrayDepth();
}

std::shared_ptr<Mesh> HistoryOutput(Node* node, unsigned int index)
{
  const HistoryNodeType* type = TypeOf(*node);
  if (!type)
    return nullptr;
  return CachedOutput(node, index, [&]() {
    EvaluateUpstream(node);
    std::string problem;
    const auto state = ClampTo<int>(Number(*node, "nodeState"));
    std::shared_ptr<Mesh> mesh;
    if (state == kBlocking) {
      problem = "its nodeState blocks it";
    } else if (state == kHasNoEffect) {
      const bool deformer = TypeHasFn(node->type, MFn::kGeometryFilt);
      const std::vector<unsigned int> at = deformer ? std::vector{index} : std::vector<unsigned int>{};
      if (const auto in = type->input ? InputMesh(*node, type->input, at) : nullptr)
        mesh = std::make_shared<Mesh>(*in);
      else
        problem = "its nodeState has it pass on an input it does not have";
    } else {
      mesh = type->compute(*node, index, problem);
    }
    if (!mesh)
      node->evaluationProblem = problem;
    return mesh;
  });
}

void EvaluateUpstream(Node* start)
{
  struct Source {
    Node* node;
    PlugKey plug;
    bool expanded;
  };
  std::vector<Source> stack;
  std::set<std::pair<Node*, PlugKey>> seen;
  auto pushSources = [&](Node* node) {
    for (size_t i : node->incoming) {
      const Connection& c = node->scene->connections[i];
      if (!c.alive || c.dst.attribute->kind != AttrKind::Mesh)
        continue;
      const unsigned int index = c.src.indices.empty() ? 0 : c.src.indices.back();
      if (!IsCurrent(*c.srcNode, index) && seen.emplace(c.srcNode, c.src).second)
        stack.push_back(Source{c.srcNode, c.src, false});
    }
  };
  pushSources(start);
  while (!stack.empty()) {
    if (!stack.back().expanded) {
      stack.back().expanded = true;
      pushSources(stack.back().node);
      continue;
    }
    const Source done = stack.back();
    stack.pop_back();
    EvaluatePlug(done.node, done.plug);
  }
}

bool FitsInMemory(double faceCount, std::string& problem)
{
  constexpr double kMostFaces = 1 << 24;
  if (faceCount <= kMostFaces)
    return true;
  problem = "it would make more faces than memory holds";
  return false;
}

double Number(Node& node, const char* attribute, const std::vector<unsigned int>& indices)
{
  Attribute* a = Find(node, attribute);
  return a ? EvaluatePlug(&node, PlugKey{a, indices}).number : 0.0;
}

int Count(Node& node, const char* attribute, int minimum)
{
  const double value = std::round(Number(node, attribute));
  // Beyond this a primitive would not fit in memory; Maya's own sliders stop far below it.
  constexpr double kLargest = 1 << 20;
  return static_cast<int>(std::fmin(std::fmax(value, minimum), kLargest));
}

MVector Vector(Node& node, const char* attribute)
{
  Attribute* a = Find(node, attribute);
  if (!a || a->children.size() != 3)
    return MVector();
  return MVector(EvaluatePlug(&node, PlugKey{a->children[0], {}}).number,
                 EvaluatePlug(&node, PlugKey{a->children[1], {}}).number,
                 EvaluatePlug(&node, PlugKey{a->children[2], {}}).number);
}

std::string Text(Node& node, const char* attribute)
{
  Attribute* a = Find(node, attribute);
  return a ? EvaluatePlug(&node, PlugKey{a, {}}).text : std::string();
}

std::shared_ptr<const Mesh> InputMesh(Node& node, const char* attribute, const std::vector<unsigned int>& indices)
{
  Attribute* a = Find(node, attribute);
  if (!a)
    return nullptr;
  const Value value = EvaluatePlug(&node, PlugKey{a, indices});
  const auto* data = dynamic_cast<const MeshData*>(value.data.get());
  return data ? data->mesh : nullptr;
}

std::shared_ptr<const Mesh> RequiredInput(Node& node, const char* attribute, std::string& problem,
                                          const std::vector<unsigned int>& indices)
{
  std::shared_ptr<const Mesh> mesh = InputMesh(node, attribute, indices);
  if (!mesh)
    problem = "it has no input mesh";
  return mesh;
}

std::shared_ptr<const ComponentData> Components(Node& node, const char* attribute,
                                                const std::vector<unsigned int>& indices)
{
  Attribute* a = Find(node, attribute);
  if (!a)
    return nullptr;
  return std::dynamic_pointer_cast<const ComponentData>(EvaluatePlug(&node, PlugKey{a, indices}).data);
}

std::vector<unsigned int> Elements(Node& node, const char* attribute, const std::vector<unsigned int>& indices)
{
  Attribute* a = Find(node, attribute);
  if (!a)
    return {};
  const auto found = node.elements.find(PlugKey{a, indices});
  if (found == node.elements.end())
    return {};
  return std::vector<unsigned int>(found->second.begin(), found->second.end());
}

}
