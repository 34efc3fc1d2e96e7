#include <standin/SceneBuilder.h>

#include "NumberCast.h"
#include "SceneGraph.h"
#include "Sets.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace standin {
namespace {

bool IsUnknown(const Node* node) { return node->type == MFn::kUnknown || node->type == MFn::kUnknownDag; }

// An attribute an unknown node takes when it is first named: a compound when more of the name follows, else of the
// kind the value being set has.
Attribute* AddUnknownAttribute(Node* node, const std::string& name, Attribute* parent, bool array, AttrKind kind)
{
  if (parent && parent->kind != AttrKind::Compound) {
    if (!parent->children.empty() || node->values.count(PlugKey{parent, {}}))
      return nullptr;
    parent->kind = AttrKind::Compound;
  }
  auto a = std::make_unique<Attribute>();
  a->name = name;
  a->kind = kind;
  a->array = array;
  a->dynamic = true;
  return node->AddAttribute(std::move(a), parent);
}

// "attr[i].child" on the node: the plug; on an unknown node, with `create`, missing attributes are made.
bool ParseAttributes(Node* node, const std::string& text, PlugKey& key, const AttrKind* create)
{
  key = PlugKey();
  size_t at = 0;
  while (at <= text.size()) {
    size_t end = text.find('.', at);
    if (end == std::string::npos)
      end = text.size();
    std::string segment = text.substr(at, end - at);
    const size_t bracket = segment.find('[');
    if (bracket != std::string::npos) {
      if (segment.back() != ']')
        return false;
      char* stop = nullptr;
      const std::string digits = segment.substr(bracket + 1, segment.size() - bracket - 2);
      const unsigned long index = std::strtoul(digits.c_str(), &stop, 10);
      if (digits.empty() || *stop != '\0')
        return false;
      key.indices.push_back(static_cast<unsigned int>(index));
      segment.resize(bracket);
    }
    Attribute* found = node->FindAttribute(segment);
    if (!found && create && IsUnknown(node) && !segment.empty())
      found = AddUnknownAttribute(node, segment, key.attribute, bracket != std::string::npos,
                                  end == text.size() ? *create : AttrKind::Compound);
    if (!found)
      return false;
    key.attribute = found;
    at = end + 1;
  }
  const unsigned int depth = key.attribute->ArrayDepth();
  return key.indices.size() == depth || key.indices.size() + 1 == depth;
}

// "node.attr[i].child": the node and plug.
bool ParsePlug(const std::string& text, Node*& node, PlugKey& key, const AttrKind* create = nullptr)
{
  const size_t dot = text.find('.');
  if (dot == std::string::npos)
    return false;
  node = FindNodeByPath(text.substr(0, dot));
  return node && ParseAttributes(node, text.substr(dot + 1), key, create);
}

MPlug WritablePlug(const std::string& nodeDotAttribute, AttrKind kind)
{
  standin::Node* node = nullptr;
  PlugKey key;
  if (!ParsePlug(nodeDotAttribute, node, key, &kind))
    return MPlug();
  return MPlug(node, key);
}

// One component as Maya names it: "f[3]", "vtx[0:7]", "e[*]".
bool AddComponent(const std::string& text, std::shared_ptr<ComponentData>& list)
{
  const size_t open = text.find('[');
  if (open == std::string::npos || text.back() != ']')
    return false;
  const std::string kind = text.substr(0, open);
  const MFn::Type type = kind == "f" ? MFn::kMeshPolygonComponent
                         : kind == "vtx" ? MFn::kMeshVertComponent
                         : kind == "e" ? MFn::kMeshEdgeComponent
                                       : MFn::kInvalid;
  if (type == MFn::kInvalid || (list && list->type != type))
    return false;
  if (!list)
    list = std::make_shared<ComponentData>(type);
  const std::string range = text.substr(open + 1, text.size() - open - 2);
  if (range == "*") {
    list->complete = true;
    return true;
  }
  const size_t colon = range.find(':');
  char* stop = nullptr;
  const long first = std::strtol(range.c_str(), &stop, 10);
  if (stop == range.c_str() || (colon == std::string::npos ? *stop != '\0' : *stop != ':'))
    return false;
  long last = first;
  if (colon != std::string::npos) {
    const char* from = range.c_str() + colon + 1;
    last = std::strtol(from, &stop, 10);
    if (stop == from || *stop != '\0')
      return false;
  }
  // A range is a count of elements the list will hold, so one that no mesh could have is refused.
  constexpr long kMostElements = 1L << 28;
  if (first < 0 || last < first || last - first >= kMostElements ||
      list->elements.size() + static_cast<size_t>(last - first) >= static_cast<size_t>(kMostElements))
    return false;
  for (long i = first; i <= last; ++i)
    list->elements.push_back(static_cast<int>(i));
  return true;
}

Node* NodeOf(const MObject& object) { return object.standinNode(); }

// Every polygon has three corners or more, and the corners name existing points.
bool FitsTogether(const MeshDescription& description)
{
  size_t faceVertices = 0;
  for (int count : description.counts) {
    if (count < 3)
      return false;
    faceVertices += static_cast<size_t>(count);
  }
  if (faceVertices != description.connects.size())
    return false;
  return std::all_of(description.connects.begin(), description.connects.end(),
                     [&](int v) { return v >= 0 && static_cast<size_t>(v) < description.points.size(); });
}

// The two enums list Maya's tangent types in the same order.
Tangent ToTangent(TangentType type) { return static_cast<Tangent>(static_cast<int>(type)); }

std::shared_ptr<Mesh> MeshOf(const MObject& shape)
{
  Node* node = NodeOf(shape);
  return node && node->type == MFn::kMesh ? node->mesh : nullptr;
}

// As Maya deforms a shape: its geometry moves to an intermediate "<shape>Orig" beside it, which feeds the new
// deformer, which feeds the shape.
Node* InsertDeformer(Node* mesh, const std::string& type, const std::string& name)
{
  Node* orig = NewNode("mesh", mesh->name + "Orig");
  AddChild(mesh->parents.front(), orig);
  orig->mesh = mesh->mesh;
  orig->values[PlugKey{orig->FindAttribute("intermediateObject"), {}}].number = 1.0;
  Node* deformer = NewNode(type, name);
  Connect(orig, PlugKey{orig->FindAttribute("worldMesh"), {0}}, deformer,
          PlugKey{deformer->FindAttribute("inputGeometry"), {0}});
  Connect(deformer, PlugKey{deformer->FindAttribute("outputGeometry"), {0}}, mesh,
          PlugKey{mesh->FindAttribute("inMesh"), {}});
  return deformer;
}

}

void NewScene() { ResetScene(); }

MObject CreateNode(const std::string& type, const std::string& name, const MObject& parent)
{
  Node* parentNode = parent.isNull() ? nullptr : NodeOf(parent);
  if (!parent.isNull() && (!parentNode || !parentNode->dag))
    return MObject();
  Node* node = standin::NewNode(type, name, parentNode ? parentNode : CurrentScene().world);
  if (!node)
    return MObject();
  if (node->dag) {
    if (!parentNode && TypeHasFn(node->type, MFn::kShape)) {
      parentNode = standin::NewNode("transform", TransformNameFor(node->name), CurrentScene().world);
      AddChild(CurrentScene().world, parentNode);
    }
    AddChild(parentNode ? parentNode : CurrentScene().world, node);
  }
  return MObject(node);
}

MObject CreateUnknownNode(const std::string& type, const std::string& name, const MObject& parent)
{
  if (type.empty())
    return MObject();
  MObject made = CreateNode(parent.isNull() ? "unknown" : "unknownDag", name.empty() ? type + "1" : name, parent);
  if (standin::Node* node = NodeOf(made))
    node->typeName = type;
  return made;
}

MPlug UnknownNodePlug(const MObject& node, const std::string& attributes, const MPlug& like)
{
  standin::Node* n = NodeOf(node);
  const AttrKind kind = like.isNull() ? AttrKind::Message : like.standinKey().attribute->kind;
  PlugKey key;
  if (!n || !IsUnknown(n) || !ParseAttributes(n, attributes, key, &kind))
    return MPlug();
  return MPlug(n, key);
}

MObject NodeByName(const std::string& name)
{
  standin::Node* node = FindNodeByPath(name);
  return node ? MObject(node) : MObject();
}

MDagPath PathTo(const std::string& fullOrShortName)
{
  MSelectionList list;
  MDagPath path;
  if (list.add(MString(fullOrShortName.c_str())))
    list.getDagPath(0, path);
  return path;
}

bool AddInstance(const MObject& node, const MObject& parent) { return AddChild(NodeOf(parent), NodeOf(node)); }

bool Reparent(const MObject& node, const MObject& parent)
{
  standin::Node* child = NodeOf(node);
  standin::Node* target = parent.isNull() ? CurrentScene().world : NodeOf(parent);
  if (!child || !child->dag || !target || !target->dag)
    return false;
  for (standin::Node* up = target; up; up = up->parents.empty() ? nullptr : up->parents.front())
    if (up == child)
      return false;
  for (standin::Node* old : child->parents)
    std::erase(old->children, child);
  child->parents.clear();
  return AddChild(target, child);
}

MPlug Plug(const std::string& nodeDotAttribute)
{
  standin::Node* node = nullptr;
  PlugKey key;
  if (!ParsePlug(nodeDotAttribute, node, key))
    return MPlug();
  return MPlug(node, key);
}

bool SetAttr(const std::string& plug, double value)
{
  MPlug p = WritablePlug(plug, AttrKind::Double);
  return !p.isNull() && p.setValue(value);
}

bool SetAttr(const std::string& plug, double x, double y, double z)
{
  MPlug p = Plug(plug);
  if (p.isNull() || p.numChildren() != 3)
    return false;
  return p.child(0).setValue(x) && p.child(1).setValue(y) && p.child(2).setValue(z);
}

bool SetAttr(const std::string& plug, const std::string& text)
{
  MPlug p = WritablePlug(plug, AttrKind::String);
  return !p.isNull() && p.setValue(MString(text.c_str()));
}

bool SetAttr(const std::string& plug, const MMatrix& matrix)
{
  MPlug p = WritablePlug(plug, AttrKind::Matrix);
  if (p.isNull() || p.standinKey().attribute->kind != AttrKind::Matrix || IsArrayPlug(p.standinKey()))
    return false;
  auto data = std::make_shared<MatrixData>();
  data->matrix = matrix;
  return static_cast<bool>(p.setValue(MObject(std::shared_ptr<Data>(data))));
}

bool SetComponents(const std::string& plug, const std::vector<std::string>& components)
{
  return SetComponents(WritablePlug(plug, AttrKind::ComponentList), components);
}

bool SetComponents(MPlug p, const std::vector<std::string>& components)
{
  if (p.isNull() || p.standinKey().attribute->kind != AttrKind::ComponentList || IsArrayPlug(p.standinKey()))
    return false;
  std::shared_ptr<ComponentData> list;
  for (const std::string& component : components)
    if (!AddComponent(component, list))
      return false;
  // An empty list still says which kind of element it holds none of; Maya writes it for emptied targets.
  if (!list)
    list = std::make_shared<ComponentData>(MFn::kMeshVertComponent);
  return static_cast<bool>(p.setValue(MObject(std::shared_ptr<Data>(list))));
}

bool SetPoints(const std::string& plug, const std::vector<MPoint>& points)
{
  return SetPoints(WritablePlug(plug, AttrKind::PointArray), points);
}

bool SetPoints(MPlug p, const std::vector<MPoint>& points)
{
  if (p.isNull() || p.standinKey().attribute->kind != AttrKind::PointArray || IsArrayPlug(p.standinKey()))
    return false;
  auto data = std::make_shared<PointArrayData>();
  data->points = points;
  return static_cast<bool>(p.setValue(MObject(std::shared_ptr<Data>(data))));
}

bool ConnectAttr(const std::string& source, const std::string& destination)
{
  return ConnectAttr(WritablePlug(source, AttrKind::Message), WritablePlug(destination, AttrKind::Message));
}

bool ConnectAttr(const MPlug& src, const MPlug& dst)
{
  if (src.isNull() || dst.isNull() || IsArrayPlug(src.standinKey()) || IsArrayPlug(dst.standinKey()))
    return false;
  return Connect(src.standinNode(), src.standinKey(), dst.standinNode(), dst.standinKey());
}

bool AddAttr(const MObject& node, const std::string& longName, AttrType type, double defaultValue,
             const std::vector<std::string>& enumFields)
{
  AttrSpec definition{longName, std::string(), type, defaultValue, {}, std::string(), false, false};
  short index = 0;
  for (const std::string& field : enumFields)
    definition.enumFields.emplace_back(field, index++);
  return AddAttr(node, definition);
}

bool AddAttr(const MObject& node, const AttrSpec& definition)
{
  standin::Node* n = NodeOf(node);
  if (!n || definition.longName.empty() || n->FindAttribute(definition.longName) ||
      (!definition.shortName.empty() && n->FindAttribute(definition.shortName)))
    return false;
  Attribute* parent = definition.parent.empty() ? nullptr : n->FindAttribute(definition.parent);
  if (!definition.parent.empty() && (!parent || parent->kind != AttrKind::Compound))
    return false;
  static const AttrKind kKinds[] = {AttrKind::Bool, AttrKind::Int, AttrKind::Short, AttrKind::Float, AttrKind::Double,
                                    AttrKind::String, AttrKind::Enum, AttrKind::Distance, AttrKind::Angle,
                                    AttrKind::Time, AttrKind::Matrix, AttrKind::Message, AttrKind::Compound,
                                    AttrKind::ComponentList, AttrKind::Mesh, AttrKind::PointArray};
  auto a = std::make_unique<Attribute>();
  a->name = definition.longName;
  a->shortName = definition.shortName == definition.longName ? std::string() : definition.shortName;
  a->dynamic = true;
  a->kind = kKinds[static_cast<int>(definition.type)];
  a->defaultNumber = definition.defaultValue;
  a->array = definition.array;
  a->hidden = definition.hidden;
  a->enumFields = definition.enumFields;
  n->AddAttribute(std::move(a), parent);
  n->scene->Touch();
  return true;
}

MObject CreateMesh(const std::string& shapeName, const MObject& transform, const MeshDescription& description)
{
  if (!FitsTogether(description))
    return MObject();
  MObject shape = CreateNode("mesh", shapeName, transform);
  return !shape.isNull() && SetMeshGeometry(shape, description) ? shape : MObject();
}

bool SetMeshGeometry(const MObject& shape, const MeshDescription& description)
{
  std::shared_ptr<Mesh> mesh = MeshOf(shape);
  if (!mesh || !FitsTogether(description))
    return false;
  auto topo = std::make_shared<MeshTopology>();
  topo->vertexCount = static_cast<int>(description.points.size());
  topo->faceVertices = description.connects;
  topo->faceOffsets.reserve(description.counts.size() + 1);
  for (int count : description.counts)
    topo->faceOffsets.push_back(topo->faceOffsets.back() + count);
  mesh->topology = topo;
  mesh->points.clear();
  mesh->points.reserve(description.points.size() * 3);
  for (const MPoint& p : description.points) {
    mesh->points.push_back(ClampTo<float>(p.x));
    mesh->points.push_back(ClampTo<float>(p.y));
    mesh->points.push_back(ClampTo<float>(p.z));
  }
  mesh->Invalidate();
  CurrentScene().Touch();
  return true;
}

bool SetUVs(const MObject& shape, const UVSpec& uvs)
{
  std::shared_ptr<Mesh> mesh = MeshOf(shape);
  if (!mesh || uvs.u.size() != uvs.v.size() || uvs.ids.size() != mesh->topology->faceVertices.size())
    return false;
  for (int id : uvs.ids)
    if (id < -1 || id >= static_cast<int>(uvs.u.size()))
      return false;
  MeshTopology& topo = *mesh->topology;
  int index = topo.FindUVSet(uvs.name);
  if (index < 0) {
    topo.uvSets.emplace_back();
    index = static_cast<int>(topo.uvSets.size()) - 1;
  }
  topo.uvSets[static_cast<size_t>(index)] = UVSet{uvs.name, uvs.u, uvs.v, uvs.ids};
  mesh->Invalidate();
  CurrentScene().Touch();
  return true;
}

bool SetCurrentUVSet(const MObject& shape, const std::string& setName)
{
  std::shared_ptr<Mesh> mesh = MeshOf(shape);
  const int index = mesh ? mesh->topology->FindUVSet(setName) : -1;
  if (index < 0)
    return false;
  mesh->topology->currentUVSet = index;
  return true;
}

bool SetColors(const MObject& shape, const ColorSpec& colors)
{
  std::shared_ptr<Mesh> mesh = MeshOf(shape);
  if (!mesh || colors.rgba.size() % 4 != 0 || colors.ids.size() != mesh->topology->faceVertices.size() ||
      colors.name.empty())
    return false;
  const int count = static_cast<int>(colors.rgba.size() / 4);
  for (int id : colors.ids)
    if (id < -1 || id >= count)
      return false;
  MeshTopology& topo = *mesh->topology;
  auto existing = std::find_if(topo.colorSets.begin(), topo.colorSets.end(),
                               [&](const ColorSet& set) { return set.name == colors.name; });
  ColorSet set{colors.name, colors.representation, colors.rgba, colors.ids};
  if (existing == topo.colorSets.end())
    topo.colorSets.push_back(std::move(set));
  else
    *existing = std::move(set);
  CurrentScene().Touch();
  return true;
}

bool SetCurrentColorSet(const MObject& shape, const std::string& setName)
{
  std::shared_ptr<Mesh> mesh = MeshOf(shape);
  if (!mesh)
    return false;
  const auto& sets = mesh->topology->colorSets;
  const auto found = std::find_if(sets.begin(), sets.end(), [&](const ColorSet& set) { return set.name == setName; });
  if (found == sets.end())
    return false;
  mesh->topology->currentColorSet = static_cast<int>(found - sets.begin());
  return true;
}

bool SetFaceVertexNormals(const MObject& shape, const std::vector<MVector>& normals)
{
  std::shared_ptr<Mesh> mesh = MeshOf(shape);
  if (!mesh || normals.size() != mesh->topology->faceVertices.size())
    return false;
  MeshTopology& topo = *mesh->topology;
  topo.givenNormals.clear();
  topo.givenNormalsPartial = false;
  for (const MVector& n : normals) {
    const bool unset = std::fabs(n.x) >= 1e20 || std::fabs(n.y) >= 1e20 || std::fabs(n.z) >= 1e20;
    const MVector unit = unset ? MVector(std::nan(""), std::nan(""), std::nan("")) : n.normal();
    topo.givenNormalsPartial = topo.givenNormalsPartial || unset;
    topo.givenNormals.push_back(static_cast<float>(unit.x));
    topo.givenNormals.push_back(static_cast<float>(unit.y));
    topo.givenNormals.push_back(static_cast<float>(unit.z));
  }
  mesh->Invalidate();
  return true;
}

bool SetHardEdges(const MObject& shape, const std::vector<std::pair<int, int>>& edges)
{
  std::shared_ptr<Mesh> mesh = MeshOf(shape);
  if (!mesh)
    return false;
  auto& hard = mesh->topology->hardEdges;
  for (auto [a, b] : edges)
    hard.push_back(a < b ? std::make_pair(a, b) : std::make_pair(b, a));
  std::sort(hard.begin(), hard.end());
  hard.erase(std::unique(hard.begin(), hard.end()), hard.end());
  mesh->Invalidate();
  return true;
}

MObject CreateShader(const std::string& type, const std::string& name)
{
  standin::Node* shader = standin::NewNode(type, name);
  if (!shader)
    return MObject();
  standin::Node* engine = standin::NewNode("shadingEngine", shader->name + "SG");
  Attribute* out = shader->FindAttribute("outColor");
  if (out)
    Connect(shader, PlugKey{out, {}}, engine, PlugKey{engine->FindAttribute("surfaceShader"), {}});
  return MObject(engine);
}

bool Assign(const MObject& shadingEngine, const MObject& shape, unsigned int instance, const std::vector<int>& faces)
{
  standin::Node* engine = NodeOf(shadingEngine);
  standin::Node* mesh = NodeOf(shape);
  if (!engine || !mesh || !TypeHasFn(engine->type, MFn::kSet) || !mesh->dag || instance >= PathCount(mesh))
    return false;
  std::shared_ptr<ComponentData> component;
  if (!faces.empty()) {
    component = std::make_shared<ComponentData>(MFn::kMeshPolygonComponent);
    component->elements = faces;
  }
  AddSetMember(engine, mesh, instance, component);
  return true;
}

MObject CreateFileTexture(const std::string& name, const std::string& fileName, const std::string& destinationPlug)
{
  MObject file = CreateNode("file", name);
  standin::Node* node = NodeOf(file);
  if (!node)
    return MObject();
  const std::string fileNode = node->name;
  MObject place = CreateNode("place2dTexture", "place2dTexture1");
  const std::string placeNode = NodeOf(place)->name;
  SetAttr(fileNode + ".fileTextureName", fileName);
  // As Maya's texture creation does, the placement drives the file node's own placement plugs.
  ConnectAttr(placeNode + ".outUV", fileNode + ".uvCoord");
  ConnectAttr(placeNode + ".repeatUV", fileNode + ".repeatUV");
  ConnectAttr(placeNode + ".offset", fileNode + ".offset");
  if (!destinationPlug.empty())
    ConnectAttr(fileNode + ".outColor", destinationPlug);
  return file;
}

MObject CreateDisplayLayer(const std::string& name, const std::vector<MObject>& members)
{
  MObject layer = CreateNode("displayLayer", name);
  standin::Node* node = NodeOf(layer);
  if (!node)
    return MObject();
  for (const MObject& member : members) {
    standin::Node* m = NodeOf(member);
    if (m && m->dag)
      Connect(node, PlugKey{node->FindAttribute("drawInfo"), {}}, m, PlugKey{m->FindAttribute("drawOverride"), {}});
  }
  return layer;
}

MObject Animate(const std::string& plug, const std::vector<KeySpec>& keys)
{
  MPlug target = Plug(plug);
  if (target.isNull() || IsArrayPlug(target.standinKey()))
    return MObject();
  const AttrKind kind = target.standinKey().attribute->kind;
  const char* type = kind == AttrKind::Distance ? "animCurveTL" : (kind == AttrKind::Angle ? "animCurveTA" : "animCurveTU");
  standin::Node* owner = target.standinNode();
  standin::Node* curve = standin::NewNode(type, owner->name + "_" + target.standinKey().attribute->name);
  SetKeys(MObject(curve), keys);
  Connect(curve, PlugKey{curve->FindAttribute("output"), {}}, owner, target.standinKey());
  return MObject(curve);
}

bool SetKeys(const MObject& curveObject, const std::vector<KeySpec>& keys)
{
  standin::Node* curve = NodeOf(curveObject);
  if (!curve || !TypeHasFn(curve->type, MFn::kAnimCurve))
    return false;
  curve->keys.clear();
  for (const KeySpec& k : keys)
    curve->keys.push_back(AnimKey{k.time.as(MTime::kSeconds), k.value, ToTangent(k.in), ToTangent(k.out), k.inX, k.inY,
                                  k.outX, k.outY});
  std::stable_sort(curve->keys.begin(), curve->keys.end(),
                   [](const AnimKey& a, const AnimKey& b) { return a.seconds < b.seconds; });
  curve->scene->Touch();
  return true;
}

MObject SkinMesh(const MObject& shape, const std::vector<MObject>& joints, const std::vector<std::vector<double>>& weights)
{
  for (const auto& row : weights)
    if (row.size() != joints.size())
      return MObject();
  return SkinMesh(shape, joints, SkinWeights::FromRows(weights));
}

MObject SkinMesh(const MObject& shape, const std::vector<MObject>& joints, const SkinWeights& weights)
{
  standin::Node* mesh = NodeOf(shape);
  if (!mesh || mesh->type != MFn::kMesh || mesh->parents.empty() || joints.empty() || !mesh->mesh)
    return MObject();
  const size_t vertexCount = mesh->mesh->points.size() / 3;
  if (weights.VertexCount() != vertexCount || !weights.IsWellFormed())
    return MObject();
  for (unsigned int influence : weights.Influences)
    if (influence >= joints.size())
      return MObject();
  for (const MObject& joint : joints)
    if (!NodeOf(joint) || NodeOf(joint)->type != MFn::kJoint)
      return MObject();
  standin::Node* skin = InsertDeformer(mesh, "skinCluster", "skinCluster1");
  auto geom = std::make_shared<MatrixData>();
  geom->matrix = PathMatrix(AllPaths(mesh).front());
  skin->values[PlugKey{skin->FindAttribute("geomMatrix"), {}}].data = geom;
  for (unsigned int j = 0; j < joints.size(); ++j) {
    standin::Node* joint = NodeOf(joints[j]);
    Connect(joint, PlugKey{joint->FindAttribute("worldMatrix"), {0}}, skin, PlugKey{skin->FindAttribute("matrix"), {j}});
    auto bind = std::make_shared<MatrixData>();
    bind->matrix = PathMatrix(AllPaths(joint).front()).inverse();
    const PlugKey bindKey{skin->FindAttribute("bindPreMatrix"), {j}};
    skin->values[bindKey].data = bind;
    RegisterElements(skin, bindKey);
  }
  skin->skinWeights[0] = weights;
  CurrentScene().Touch();
  return MObject(skin);
}

bool SetSkinWeights(const MObject& skinCluster, unsigned int geometryIndex, const SkinWeights& weights)
{
  standin::Node* skin = NodeOf(skinCluster);
  if (!skin || skin->type != MFn::kSkinClusterFilter || !weights.IsWellFormed())
    return false;
  skin->skinWeights[geometryIndex] = weights;
  skin->scene->Touch();
  return true;
}

MObject BlendMesh(const MObject& shape, const std::vector<std::vector<MVector>>& targets)
{
  standin::Node* mesh = NodeOf(shape);
  if (!mesh || mesh->type != MFn::kMesh || mesh->parents.empty() || !mesh->mesh || targets.empty() ||
      IncomingConnection(mesh, PlugKey{mesh->FindAttribute("inMesh"), {}}))
    return MObject();
  const size_t vertexCount = mesh->mesh->points.size() / 3;
  for (const auto& target : targets)
    if (target.size() != vertexCount)
      return MObject();
  standin::Node* blend = InsertDeformer(mesh, "blendShape", "blendShape1");
  for (size_t t = 0; t < targets.size(); ++t) {
    const std::string item = blend->name + ".inputTarget[0].inputTargetGroup[" + std::to_string(t) + "].inputTargetItem[6000]";
    std::vector<MPoint> offsets;
    std::vector<std::string> moved;
    for (size_t v = 0; v < vertexCount; ++v) {
      const MVector& offset = targets[t][v];
      if (offset.x == 0.0 && offset.y == 0.0 && offset.z == 0.0)
        continue;
      offsets.emplace_back(offset.x, offset.y, offset.z);
      moved.push_back("vtx[" + std::to_string(v) + "]");
    }
    SetPoints(item + ".inputPointsTarget", offsets);
    SetComponents(item + ".inputComponentsTarget", moved);
    SetAttr(blend->name + ".weight[" + std::to_string(t) + "]", 0.0);
  }
  CurrentScene().Touch();
  return MObject(blend);
}

MObject BindRigid(const MObject& joint, const MObject& shape, const std::vector<int>& vertices,
                  const std::vector<double>& weights, unsigned int instance)
{
  standin::Node* j = NodeOf(joint);
  standin::Node* mesh = NodeOf(shape);
  if (!j || j->type != MFn::kJoint || !mesh || mesh->type != MFn::kMesh || vertices.size() != weights.size() ||
      instance >= PathCount(mesh) || !mesh->mesh)
    return MObject();
  const int vertexCount = static_cast<int>(mesh->mesh->points.size() / 3);
  for (int v : vertices)
    if (v < 0 || v >= vertexCount)
      return MObject();
  standin::Node* cluster = standin::NewNode("jointCluster", "jointCluster1");
  standin::Node* set = standin::NewNode("objectSet", cluster->name + "Set");
  Connect(j, PlugKey{j->FindAttribute("worldMatrix"), {0}}, cluster, PlugKey{cluster->FindAttribute("matrix"), {}});
  auto component = std::make_shared<ComponentData>(MFn::kMeshVertComponent);
  component->elements = vertices;
  AddSetMember(set, mesh, instance, component);
  cluster->deformerSet = set;
  cluster->clusterWeights[0] = weights;
  return MObject(cluster);
}

MObject SaveBindPose(const std::vector<MObject>& members)
{
  standin::Node* pose = standin::NewNode("dagPose", "bindPose1");
  pose->values[PlugKey{pose->FindAttribute("bindPose"), {}}].number = 1.0;
  static const char* const kSaved[] = {"translateX", "translateY", "translateZ", "rotateX", "rotateY", "rotateZ",
                                       "scaleX", "scaleY", "scaleZ", "jointOrientX", "jointOrientY", "jointOrientZ"};
  unsigned int index = 0;
  for (const MObject& member : members) {
    standin::Node* m = NodeOf(member);
    if (!m || !m->dag)
      continue;
    PoseEntry entry{m, {}};
    for (const char* attrName : kSaved)
      if (Attribute* a = m->FindAttribute(attrName))
        entry.values.emplace_back(attrName, EvaluatePlug(m, PlugKey{a, {}}).number);
    pose->pose.push_back(entry);
    Connect(m, PlugKey{m->FindAttribute("message"), {}}, pose, PlugKey{pose->FindAttribute("members"), {index++}});
  }
  return MObject(pose);
}

bool SetPoseMember(const MObject& poseObject, const MObject& memberObject,
                   const std::vector<std::pair<std::string, double>>& values)
{
  standin::Node* pose = NodeOf(poseObject);
  standin::Node* member = NodeOf(memberObject);
  if (!pose || pose->type != MFn::kDagPose || !member || !member->dag)
    return false;
  for (const auto& [attrName, value] : values)
    if (!member->FindAttribute(attrName))
      return false;
  pose->pose.push_back(PoseEntry{member, values});
  return true;
}

void Select(const std::vector<MDagPath>& paths)
{
  MSelectionList& active = CurrentScene().activeSelection;
  active.clear();
  for (const MDagPath& path : paths)
    active.add(path);
}

void SetInteractive(bool interactive) { CurrentScene().interactive = interactive; }

void SetSceneFileName(const std::string& mayaPath) { CurrentScene().fileName = mayaPath; }

void SetPlaybackRange(const MTime& minTime, const MTime& maxTime)
{
  CurrentScene().minSeconds = minTime.as(MTime::kSeconds);
  CurrentScene().maxSeconds = maxTime.as(MTime::kSeconds);
}

const std::vector<std::string>& CommandsRun() { return CurrentScene().commandsRun; }

const std::vector<std::string>& DisplayedMessages() { return CurrentScene().messages; }

}
