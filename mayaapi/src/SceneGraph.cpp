#include "SceneGraph.h"

#include <algorithm>
#include <cctype>

namespace standin {
namespace {

std::unique_ptr<Scene>& SceneSlot()
{
  static std::unique_ptr<Scene> scene = std::make_unique<Scene>();
  return scene;
}

}

bool Attribute::IsNumericCompound() const
{
  if (kind != AttrKind::Compound || children.size() < 2 || children.size() > 3)
    return false;
  for (const Attribute* child : children)
    if (!child->IsNumeric() || child->array)
      return false;
  return true;
}

unsigned int Attribute::ArrayDepth() const
{
  unsigned int depth = 0;
  for (const Attribute* a = this; a; a = a->parent)
    if (a->array)
      ++depth;
  return depth;
}

Attribute* Node::FindAttribute(std::string_view attrName) const
{
  for (const auto& attribute : attributes)
    if (attribute->name == attrName || (!attribute->shortName.empty() && attribute->shortName == attrName))
      return attribute.get();
  return nullptr;
}

Attribute* Node::AddAttribute(std::unique_ptr<Attribute> attribute, Attribute* parent)
{
  Attribute* added = attribute.get();
  added->owner = this;
  added->parent = parent;
  if (parent)
    parent->children.push_back(added);
  else
    topLevel.push_back(added);
  attributes.push_back(std::move(attribute));
  return added;
}

Scene::Scene()
{
  auto root = std::make_unique<Node>();
  root->scene = this;
  root->typeName = "world";
  root->name = "world";
  root->type = MFn::kWorld;
  root->dag = true;
  world = root.get();
  nodes.push_back(std::move(root));
}

Scene& CurrentScene() { return *SceneSlot(); }

void ResetScene() { SceneSlot() = std::make_unique<Scene>(); }

Node* FindNode(std::string_view name)
{
  for (const auto& node : CurrentScene().nodes)
    if (node->name == name && node.get() != CurrentScene().world)
      return node.get();
  return nullptr;
}

namespace {

bool NameTaken(const std::string& name, const Node* dagParent)
{
  for (const auto& node : CurrentScene().nodes) {
    if (node->name != name || node.get() == CurrentScene().world)
      continue;
    if (!dagParent || !node->dag)
      return true;
    if (std::find(node->parents.begin(), node->parents.end(), dagParent) != node->parents.end())
      return true;
  }
  return false;
}

// True when the path ends in the nodes named by the '|'-separated segments (the first segment empty for a full
// path, which must then start at the world).
bool PathEndsWith(const std::vector<Node*>& path, const std::vector<std::string_view>& segments)
{
  const bool full = !segments.empty() && segments.front().empty();
  const size_t named = full ? segments.size() - 1 : segments.size();
  if (named > path.size() || (full && named != path.size()))
    return false;
  for (size_t i = 0; i < named; ++i)
    if (path[path.size() - named + i]->name != segments[segments.size() - named + i])
      return false;
  return true;
}

}

// Maya keeps names unique by counting up a trailing number ("pCube1" taken gives "pCube2").
std::string UniqueName(const std::string& wanted, const Node* dagParent)
{
  if (!wanted.empty() && !NameTaken(wanted, dagParent))
    return wanted;
  std::string stem = wanted.empty() ? std::string("node") : wanted;
  while (!stem.empty() && std::isdigit(static_cast<unsigned char>(stem.back())))
    stem.pop_back();
  for (unsigned long n = 1;; ++n) {
    std::string candidate = stem + std::to_string(n);
    if (!NameTaken(candidate, dagParent))
      return candidate;
  }
}

std::vector<Node*> FindDagPath(std::string_view text)
{
  std::vector<std::string_view> segments;
  for (size_t at = 0;;) {
    const size_t bar = text.find('|', at);
    segments.push_back(text.substr(at, bar == std::string_view::npos ? std::string_view::npos : bar - at));
    if (bar == std::string_view::npos)
      break;
    at = bar + 1;
  }
  if (segments.back().empty())
    return {};
  for (const auto& node : CurrentScene().nodes) {
    if (!node->dag || node->name != segments.back())
      continue;
    for (auto& path : AllPaths(node.get()))
      if (PathEndsWith(path, segments))
        return path;
  }
  return {};
}

Node* FindNodeByPath(std::string_view text)
{
  if (text.find('|') == std::string_view::npos)
    return FindNode(text);
  const std::vector<Node*> path = FindDagPath(text);
  return path.empty() ? nullptr : path.back();
}

std::string TransformNameFor(const std::string& shapeName)
{
  const size_t at = shapeName.rfind("Shape");
  if (at == std::string::npos || at == 0)
    return "transform1";
  return shapeName.substr(0, at) + shapeName.substr(at + 5);
}

Node* NewNode(const std::string& typeName, const std::string& name, const Node* dagParent)
{
  Scene& scene = CurrentScene();
  auto node = std::make_unique<Node>();
  node->scene = &scene;
  node->typeName = typeName;
  if (!BuildNodeType(*node))
    return nullptr;
  node->name = UniqueName(name.empty() ? typeName + "1" : name, node->dag ? dagParent : nullptr);
  Node* created = node.get();
  scene.nodes.push_back(std::move(node));
  scene.Touch();
  return created;
}

bool AddChild(Node* parent, Node* child)
{
  if (!parent || !child || !parent->dag || !child->dag || child == CurrentScene().world)
    return false;
  for (Node* up = parent; up; up = up->parents.empty() ? nullptr : up->parents.front())
    if (up == child)
      return false;
  for (Node* existing : parent->children)
    if (existing == child)
      return false;
  parent->children.push_back(child);
  child->parents.push_back(parent);
  CurrentScene().Touch();
  return true;
}

PlugKey ParentKey(const PlugKey& key)
{
  PlugKey up;
  if (!key.attribute)
    return up;
  up.indices = key.indices;
  if (key.attribute->array && key.indices.size() == key.attribute->ArrayDepth()) {
    up.attribute = key.attribute;
    up.indices.pop_back();
    return up;
  }
  up.attribute = key.attribute->parent;
  return up;
}

bool IsArrayPlug(const PlugKey& key)
{
  return key.attribute && key.attribute->array && key.indices.size() + 1 == key.attribute->ArrayDepth();
}

void RegisterElements(Node* node, const PlugKey& key)
{
  std::vector<const Attribute*> chain;
  for (const Attribute* a = key.attribute; a; a = a->parent)
    chain.insert(chain.begin(), a);
  size_t depth = 0;
  for (const Attribute* a : chain) {
    if (!a->array)
      continue;
    if (depth >= key.indices.size())
      return;
    PlugKey arrayKey{const_cast<Attribute*>(a), std::vector<unsigned int>(key.indices.begin(), key.indices.begin() + static_cast<long>(depth))};
    node->elements[arrayKey].insert(key.indices[depth]);
    ++depth;
  }
}

const Connection* IncomingConnection(const Node* node, const PlugKey& key)
{
  const Scene& scene = *node->scene;
  for (size_t index : node->incoming) {
    const Connection& c = scene.connections[index];
    if (c.alive && c.dst == key)
      return &c;
  }
  return nullptr;
}

// A destination takes one source; connecting a new one replaces the old, as "connectAttr -f" does.
bool Connect(Node* srcNode, const PlugKey& src, Node* dstNode, const PlugKey& dst)
{
  if (!srcNode || !dstNode || !src.attribute || !dst.attribute)
    return false;
  Scene& scene = *srcNode->scene;
  for (size_t index : dstNode->incoming) {
    Connection& c = scene.connections[index];
    if (c.alive && c.dst == dst)
      c.alive = false;
  }
  scene.connections.push_back(Connection{srcNode, src, dstNode, dst, true});
  srcNode->outgoing.push_back(scene.connections.size() - 1);
  dstNode->incoming.push_back(scene.connections.size() - 1);
  RegisterElements(srcNode, src);
  RegisterElements(dstNode, dst);
  scene.Touch();
  return true;
}

size_t PathCount(const Node* node)
{
  if (node->parents.empty())
    return node->type == MFn::kWorld ? 1 : 0;
  size_t count = 0;
  for (const Node* parent : node->parents)
    count += PathCount(parent);
  return count;
}

std::vector<std::vector<Node*>> AllPaths(Node* node)
{
  std::vector<std::vector<Node*>> paths;
  if (!node)
    return paths;
  if (node->type == MFn::kWorld) {
    paths.emplace_back();
    return paths;
  }
  for (Node* parent : node->parents)
    for (auto& path : AllPaths(parent)) {
      path.push_back(node);
      paths.push_back(std::move(path));
    }
  return paths;
}

}
