#include <standin/SceneBuilder.h>

#include <maya/MDagPath.h>

#include "HistoryNode.h"

#include <algorithm>
#include <set>
#include <utility>

namespace standin {
namespace {

using Source = std::pair<Node*, PlugKey>;

bool GivesMesh(const Source& source)
{
  const Value value = EvaluatePlug(source.first, source.second);
  const auto* data = dynamic_cast<const MeshData*>(value.data.get());
  return data && data->mesh;
}

// The sources wired into the node's mesh inputs.
std::vector<Source> MeshInputs(Node* node)
{
  std::vector<Source> inputs;
  for (size_t i : node->incoming) {
    const Connection& c = node->scene->connections[i];
    if (c.alive && c.dst.attribute->kind == AttrKind::Mesh)
      inputs.emplace_back(c.srcNode, c.src);
  }
  return inputs;
}

// Every source upstream of the shape, those farther up first.
std::vector<Source> Upstream(Node* shape)
{
  std::vector<Source> order;
  std::set<Source> seen;
  std::vector<std::pair<Source, bool>> stack;
  for (const Source& input : MeshInputs(shape))
    if (seen.insert(input).second)
      stack.emplace_back(input, false);
  while (!stack.empty()) {
    if (!stack.back().second) {
      stack.back().second = true;
      for (const Source& input : MeshInputs(stack.back().first.first))
        if (seen.insert(input).second)
          stack.emplace_back(input, false);
      continue;
    }
    order.push_back(stack.back().first);
    stack.pop_back();
  }
  return order;
}

std::string ReasonFor(const Node& node)
{
  if (!node.evaluationProblem.empty())
    return node.evaluationProblem;
  if (node.type == MFn::kUnknown || node.type == MFn::kUnknownDag)
    return "its node type is not evaluated";
  return "it gives no mesh";
}

}

std::vector<HistoryProblem> HistoryProblems()
{
  std::vector<HistoryProblem> problems;
  for (const auto& owned : CurrentScene().nodes) {
    Node* shape = owned.get();
    if (shape->type != MFn::kMesh || !IncomingConnection(shape, PlugKey{shape->FindAttribute("inMesh"), {}}))
      continue;
    const std::shared_ptr<Mesh> shown = ShapeGeometry(shape);
    const bool empty = !shown || shown->topology->FaceCount() == 0;
    // The shape by the shortest path that names it alone, as several shapes may share a name.
    const auto paths = AllPaths(shape);
    const std::string mesh =
        paths.empty() ? shape->name : MDagPath::standinFromNodes(paths.front()).partialPathName().asChar();
    auto report = [&](const Node& node, const std::string& reason) {
      problems.push_back(HistoryProblem{mesh, node.name, node.typeName, reason, empty});
    };
    const std::vector<Source> upstream = Upstream(shape);
    const auto stop = std::find_if(upstream.begin(), upstream.end(), [](const Source& source) {
      if (GivesMesh(source))
        return false;
      const std::vector<Source> inputs = MeshInputs(source.first);
      return std::all_of(inputs.begin(), inputs.end(), GivesMesh);
    });
    if (stop != upstream.end())
      report(*stop->first, ReasonFor(*stop->first));
    else if (const std::vector<Source> inputs = MeshInputs(shape); !inputs.empty() && !GivesMesh(inputs.front()))
      report(*inputs.front().first, "its history loops back on itself");
  }
  return problems;
}

}
