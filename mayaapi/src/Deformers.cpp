#include <maya/MFnGeometryFilter.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MFnWeightGeometryFilter.h>

#include "NumberCast.h"
#include "SceneGraph.h"
#include "Sets.h"

#include <algorithm>
#include <map>

namespace {

void SetStatus(MStatus* status, MS::MStatusCode code)
{
  if (status)
    *status = code;
}

struct Output {
  unsigned int index = 0;
  standin::Node* shape = nullptr;
  unsigned int instance = 0;
  std::shared_ptr<standin::ComponentData> component;
};

// The geometries a deformer writes: a skin cluster's connected "outputGeometry" elements, or a cluster's set members.
std::vector<Output> Outputs(standin::Node* deformer)
{
  std::vector<Output> outputs;
  if (!deformer)
    return outputs;
  if (deformer->deformerSet) {
    unsigned int index = 0;
    for (const standin::SetMember& member : standin::MembersOf(deformer->deformerSet))
      outputs.push_back(Output{index++, member.node, member.instance, member.component});
    return outputs;
  }
  standin::Attribute* out = deformer->FindAttribute("outputGeometry");
  for (size_t i : deformer->outgoing) {
    const standin::Connection& c = deformer->scene->connections[i];
    if (c.alive && c.src.attribute == out && !c.src.indices.empty() && c.dstNode->type == MFn::kMesh)
      outputs.push_back(Output{c.src.indices.back(), c.dstNode, 0, nullptr});
  }
  std::sort(outputs.begin(), outputs.end(), [](const Output& a, const Output& b) { return a.index < b.index; });
  return outputs;
}

const Output* OutputFor(const std::vector<Output>& outputs, const MDagPath& path)
{
  MDagPath shape = path;
  shape.extendToShape();
  for (const Output& output : outputs)
    if (output.shape == shape.standinLast())
      return &output;
  return nullptr;
}

struct Influence {
  unsigned int logical = 0;
  MDagPath path;
};

std::vector<Influence> Influences(standin::Node* skin)
{
  std::vector<Influence> influences;
  standin::Attribute* matrix = skin ? skin->FindAttribute("matrix") : nullptr;
  if (!matrix || !matrix->array)
    return influences;
  for (unsigned int logical : skin->elements[standin::PlugKey{matrix, {}}]) {
    const standin::Connection* c = standin::IncomingConnection(skin, standin::PlugKey{matrix, {logical}});
    if (!c || !c->srcNode->dag)
      continue;
    const auto paths = standin::AllPaths(c->srcNode);
    const unsigned int instance = c->src.indices.empty() ? 0 : c->src.indices.back();
    if (instance < paths.size())
      influences.push_back(Influence{logical, MDagPath::standinFromNodes(paths[instance])});
  }
  return influences;
}

// The vertices a component names, or all of them for a null or complete component.
bool ComponentVertices(const MObject& components, size_t vertexCount, std::vector<int>& vertices)
{
  vertices.clear();
  const auto* data = dynamic_cast<const standin::ComponentData*>(components.standinData());
  if (!data || data->complete) {
    if (!components.isNull() && !data)
      return false;
    for (size_t v = 0; v < vertexCount; ++v)
      vertices.push_back(static_cast<int>(v));
    return true;
  }
  for (int v : data->elements)
    if (v < 0 || static_cast<size_t>(v) >= vertexCount)
      return false;
  vertices = data->elements;
  return true;
}

}

namespace standin {

bool SkinWeights::IsWellFormed() const
{
  if (Starts.empty() || Starts.front() != 0 || Starts.back() != Influences.size() || Weights.size() != Influences.size())
    return false;
  return std::is_sorted(Starts.begin(), Starts.end());
}

SkinWeights SkinWeights::FromRows(const std::vector<std::vector<double>>& rows)
{
  SkinWeights table;
  for (const std::vector<double>& row : rows) {
    for (size_t j = 0; j < row.size(); ++j)
      if (row[j] != 0.0)
        table.Add(static_cast<unsigned int>(j), row[j]);
    table.EndVertex();
  }
  return table;
}

}

MFnGeometryFilter::MFnGeometryFilter(const MObject& object, MStatus* status)
{
  SetStatus(status, setObject(object).statusCode());
}

MObject MFnGeometryFilter::deformerSet(MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  const bool found = node && node->deformerSet;
  SetStatus(status, found ? MS::kSuccess : MS::kFailure);
  return found ? MObject(node->deformerSet) : MObject();
}

unsigned int MFnGeometryFilter::numOutputConnections(MStatus* status) const
{
  SetStatus(status, m_object.isNull() ? MS::kFailure : MS::kSuccess);
  return static_cast<unsigned int>(Outputs(m_object.standinNode()).size());
}

unsigned int MFnGeometryFilter::indexForOutputConnection(unsigned int connectionIndex, MStatus* status) const
{
  const auto outputs = Outputs(m_object.standinNode());
  if (connectionIndex >= outputs.size()) {
    SetStatus(status, MS::kInvalidParameter);
    return 0;
  }
  SetStatus(status, MS::kSuccess);
  return outputs[connectionIndex].index;
}

MStatus MFnGeometryFilter::getPathAtIndex(unsigned int index, MDagPath& path) const
{
  for (const Output& output : Outputs(m_object.standinNode()))
    if (output.index == index) {
      const auto paths = standin::AllPaths(output.shape);
      if (output.instance >= paths.size())
        return MS::kFailure;
      path = MDagPath::standinFromNodes(paths[output.instance]);
      return MS::kSuccess;
    }
  return MS::kInvalidParameter;
}

MObject MFnGeometryFilter::outputShapeAtIndex(unsigned int index, MStatus* status) const
{
  for (const Output& output : Outputs(m_object.standinNode()))
    if (output.index == index) {
      SetStatus(status, MS::kSuccess);
      return MObject(output.shape);
    }
  SetStatus(status, MS::kInvalidParameter);
  return MObject();
}

MStatus MFnGeometryFilter::getInputGeometry(MObjectArray& objects) const
{
  objects.clear();
  standin::Node* node = m_object.standinNode();
  if (!node)
    return MS::kFailure;
  for (const Output& output : Outputs(node)) {
    MObject data;
    MPlug(node, standin::PlugKey{node->FindAttribute("inputGeometry"), {output.index}}).getValue(data);
    objects.append(data);
  }
  return MS::kSuccess;
}

MStatus MFnGeometryFilter::getOutputGeometry(MObjectArray& objects) const
{
  objects.clear();
  for (const Output& output : Outputs(m_object.standinNode()))
    objects.append(MObject(output.shape));
  return m_object.isNull() ? MS::kFailure : MS::kSuccess;
}

unsigned int MFnGeometryFilter::indexForOutputShape(const MObject& shape, MStatus* status) const
{
  for (const Output& output : Outputs(m_object.standinNode()))
    if (output.shape == shape.standinNode()) {
      SetStatus(status, MS::kSuccess);
      return output.index;
    }
  SetStatus(status, MS::kInvalidParameter);
  return 0;
}

float MFnGeometryFilter::envelope(MStatus* status) const { return findPlug("envelope").asFloat(status); }

MFnSkinCluster::MFnSkinCluster(const MObject& object, MStatus* status)
{
  SetStatus(status, setObject(object).statusCode());
}

unsigned int MFnSkinCluster::influenceObjects(MDagPathArray& paths, MStatus* status) const
{
  paths.clear();
  SetStatus(status, m_object.isNull() ? MS::kFailure : MS::kSuccess);
  for (const Influence& influence : Influences(m_object.standinNode()))
    paths.append(influence.path);
  return paths.length();
}

unsigned int MFnSkinCluster::indexForInfluenceObject(const MDagPath& path, MStatus* status) const
{
  for (const Influence& influence : Influences(m_object.standinNode()))
    if (influence.path == path) {
      SetStatus(status, MS::kSuccess);
      return influence.logical;
    }
  SetStatus(status, MS::kInvalidParameter);
  return 0;
}

MStatus MFnSkinCluster::getWeights(const MDagPath& shape, const MObject& components, MDoubleArray& weights,
                                   unsigned int& influenceCount) const
{
  weights.clear();
  standin::Node* node = m_object.standinNode();
  const auto outputs = Outputs(node);
  const Output* output = OutputFor(outputs, shape);
  if (!output)
    return MStatus(MS::kInvalidParameter, "Geometry is not deformed by this skin cluster");
  const std::vector<Influence> influences = Influences(node);
  influenceCount = static_cast<unsigned int>(influences.size());
  const auto found = node->skinWeights.find(output->index);
  static const standin::SkinWeights kNone;
  const standin::SkinWeights& table = found == node->skinWeights.end() ? kNone : found->second;
  std::vector<int> vertices;
  if (!ComponentVertices(components, table.VertexCount(), vertices))
    return MS::kInvalidParameter;
  // The weights name influences by logical index; the answer lists them in influenceObjects order.
  std::map<unsigned int, unsigned int> column;
  for (unsigned int k = 0; k < influenceCount; ++k)
    column.emplace(influences[k].logical, k);
  weights.setLength(static_cast<unsigned int>(vertices.size()) * influenceCount);
  for (size_t n = 0; n < vertices.size(); ++n) {
    const size_t v = static_cast<size_t>(vertices[n]);
    for (unsigned int e = table.Starts[v]; e < table.Starts[v + 1]; ++e) {
      const auto k = column.find(table.Influences[e]);
      if (k != column.end())
        weights[static_cast<unsigned int>(n) * influenceCount + k->second] = table.Weights[e];
    }
  }
  return MS::kSuccess;
}

MStatus MFnSkinCluster::getWeights(const MDagPath& shape, const MObject& components, unsigned int influenceIndex,
                                   MDoubleArray& weights) const
{
  MDoubleArray all;
  unsigned int count = 0;
  const MStatus status = getWeights(shape, components, all, count);
  weights.clear();
  if (!status)
    return status;
  if (influenceIndex >= count)
    return MS::kInvalidParameter;
  for (unsigned int i = influenceIndex; i < all.length(); i += count)
    weights.append(all[i]);
  return MS::kSuccess;
}

MFnWeightGeometryFilter::MFnWeightGeometryFilter(const MObject& object, MStatus* status)
{
  SetStatus(status, setObject(object).statusCode());
}

MStatus MFnWeightGeometryFilter::getWeights(unsigned int index, const MObject& components, MFloatArray& weights) const
{
  weights.clear();
  standin::Node* node = m_object.standinNode();
  const auto outputs = Outputs(node);
  if (index >= outputs.size())
    return MS::kInvalidParameter;
  const Output& output = outputs[index];
  const auto stored = node->clusterWeights.find(0);
  const std::vector<int> members = output.component ? output.component->elements : std::vector<int>();
  const size_t vertexCount = output.shape->mesh ? output.shape->mesh->points.size() / 3 : 0;
  std::vector<int> vertices;
  if (!ComponentVertices(components, vertexCount, vertices))
    return MS::kInvalidParameter;
  for (int v : vertices) {
    float weight = 0.0f;
    for (size_t k = 0; k < members.size(); ++k)
      if (members[k] == v && stored != node->clusterWeights.end() && k < stored->second.size())
        weight = standin::ClampTo<float>(stored->second[k]);
    weights.append(weight);
  }
  return MS::kSuccess;
}

MStatus MFnWeightGeometryFilter::getWeights(const MDagPath& path, const MObject& components, MFloatArray& weights) const
{
  const auto outputs = Outputs(m_object.standinNode());
  const Output* output = OutputFor(outputs, path);
  if (!output)
    return MStatus(MS::kInvalidParameter, "Geometry is not deformed by this cluster");
  return getWeights(static_cast<unsigned int>(output - outputs.data()), components, weights);
}
