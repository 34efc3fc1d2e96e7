#pragma once

#include "../SceneGraph.h"

#include <maya/MVector.h>

#include <memory>
#include <span>
#include <string>
#include <vector>

// Construction history: the node types whose output plug computes a mesh from their attributes and input meshes
// (the polygon primitives, the poly modifiers, groupParts, transformGeometry, the tweak and blendShape deformers),
// as Maya's dependency graph computes them when a shape's inMesh is read.
namespace standin {

// One static attribute of a node type, as Maya's node reference lists it; parent names the compound it is a child
// of, which comes earlier in the same table.
struct AttributeSpec {
  const char* name;
  const char* shortName;
  AttrKind kind;
  double defaultNumber = 0.0;
  const char* parent = nullptr;
  bool array = false;
};

// Computes the mesh of output element `index`; on failure returns null and says why in `problem`.
using ComputeMesh = std::shared_ptr<Mesh> (*)(Node& node, unsigned int index, std::string& problem);

struct HistoryNodeType {
  const char* typeName;
  MFn::Type type;
  // The attributes of the abstract Maya class the type derives from (polyPrimitive, polyModifier, geometryFilter)
  // and its own.
  std::span<const AttributeSpec> inherited;
  std::span<const AttributeSpec> own;
  const char* output;
  // The mesh input passed on unchanged when the node's nodeState says it has no effect; null for creators.
  const char* input;
  ComputeMesh compute;
};

extern const std::span<const AttributeSpec> kPolyPrimitiveAttributes;
extern const std::span<const AttributeSpec> kPolyModifierAttributes;
extern const std::span<const AttributeSpec> kGeometryFilterAttributes;

extern const HistoryNodeType kPolyCubeType;
extern const HistoryNodeType kPolySphereType;
extern const HistoryNodeType kPolyPlaneType;
extern const HistoryNodeType kPolyCylinderType;
extern const HistoryNodeType kPolyConeType;
extern const HistoryNodeType kPolyTorusType;
extern const HistoryNodeType kGroupPartsType;
extern const HistoryNodeType kTransformGeometryType;
extern const HistoryNodeType kPolySubdFaceType;
extern const HistoryNodeType kPolyTriangulateType;
extern const HistoryNodeType kDeleteComponentType;
extern const HistoryNodeType kTweakType;
extern const HistoryNodeType kBlendShapeType;

// Builds the attributes of a history node type; false when the node's type name is not one.
bool BuildHistoryNodeType(Node& node);
// True when the plug is the mesh output of a history node.
bool IsHistoryOutput(const Node* node, const PlugKey& key);
// The mesh of a history node's output element at the current time, or null with the node's evaluationProblem set.
std::shared_ptr<Mesh> HistoryOutput(Node* node, unsigned int index);
// Evaluates what feeds the node's mesh inputs from the far end of its history inwards, each node once, so that
// reading the end of a long modelling history does not nest one evaluation per node.
void EvaluateUpstream(Node* node);

// False, with the reason in `problem`, when a node would make more faces than memory holds: subdivision counts
// come from files and may be anything.
bool FitsInMemory(double faceCount, std::string& problem);

// What the compute functions read: plugs by attribute name, evaluated at the current time.
double Number(Node& node, const char* attribute, const std::vector<unsigned int>& indices = {});
// A count attribute rounded and held at or above `minimum`, as Maya clamps subdivisions.
int Count(Node& node, const char* attribute, int minimum);
MVector Vector(Node& node, const char* attribute);
std::string Text(Node& node, const char* attribute);
std::shared_ptr<const Mesh> InputMesh(Node& node, const char* attribute, const std::vector<unsigned int>& indices = {});
// The input mesh a modifier works on; null, saying so in `problem`, when nothing gives one.
std::shared_ptr<const Mesh> RequiredInput(Node& node, const char* attribute, std::string& problem,
                                          const std::vector<unsigned int>& indices = {});
std::shared_ptr<const ComponentData> Components(Node& node, const char* attribute,
                                                const std::vector<unsigned int>& indices = {});
// The logical indices of an array attribute's existing elements (set or connected).
std::vector<unsigned int> Elements(Node& node, const char* attribute, const std::vector<unsigned int>& indices = {});

}
