#pragma once

#include "MeshGeometry.h"

#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MFn.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MSelectionList.h>
#include <maya/MTime.h>
#include <standin/PlugKey.h>
#include <standin/SkinWeights.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace standin {

struct Node;
struct Scene;

enum class AttrKind { Message, Bool, Int, Short, Enum, Float, Double, Distance, Angle, Time, String, Matrix, Mesh,
                      ComponentList, PointArray, Compound };

struct Attribute {
  std::string name;
  std::string shortName;
  AttrKind kind = AttrKind::Double;
  bool array = false;
  bool dynamic = false;
  bool hidden = false;
  Attribute* parent = nullptr;
  std::vector<Attribute*> children;
  std::vector<std::pair<std::string, short>> enumFields;
  double defaultNumber = 0.0;
  std::string defaultText;
  Node* owner = nullptr;

  bool IsNumeric() const { return kind != AttrKind::Message && kind != AttrKind::String && kind != AttrKind::Matrix &&
                                  kind != AttrKind::Mesh && kind != AttrKind::ComponentList &&
                                  kind != AttrKind::PointArray && kind != AttrKind::Compound; }
  // A compound of two or three numbers (translate, color, uvCoord), read as one numeric data object.
  bool IsNumericCompound() const;
  // How many array attributes lie on the way from the top-level attribute down to this one, this one included.
  unsigned int ArrayDepth() const;
};

struct Data {
  explicit Data(MFn::Type t) : type(t) {}
  virtual ~Data() = default;
  MFn::Type type;
};

struct MeshData : Data {
  MeshData() : Data(MFn::kMeshData) {}
  std::shared_ptr<Mesh> mesh;
};

struct MatrixData : Data {
  MatrixData() : Data(MFn::kMatrixData) {}
  MMatrix matrix;
};

struct NumericData : Data {
  NumericData() : Data(MFn::kNumericData) {}
  int numericType = 0;
  unsigned int count = 0;
  double values[4] = {0.0, 0.0, 0.0, 0.0};
};

struct StringData : Data {
  StringData() : Data(MFn::kStringData) {}
  std::string text;
};

// A list of mesh elements (faces, edges or vertices); complete means every element of the mesh.
struct ComponentData : Data {
  explicit ComponentData(MFn::Type t) : Data(t) {}
  std::vector<int> elements;
  bool complete = false;
};

// Points with their w, as Maya's pointArray data holds them (a blend shape target's offsets).
struct PointArrayData : Data {
  PointArrayData() : Data(MFn::kPointArrayData) {}
  std::vector<MPoint> points;
};

struct Value {
  double number = 0.0;
  std::string text;
  std::shared_ptr<Data> data;
  // A value set on a driven plug wins over its driver until the time is next set, as in Maya's DG.
  bool held = false;
  std::uint64_t timeEpoch = 0;
};

// Maya's tangent types; Spline is Maya's "smooth".
enum class Tangent { Linear, Step, Flat, Clamped, Spline, Fixed, Slow, Fast, Plateau, StepNext, Auto };

struct AnimKey {
  double seconds = 0.0;
  double value = 0.0;
  Tangent in = Tangent::Clamped;
  Tangent out = Tangent::Clamped;
  // The tangent handles as Maya stores them (keyTanInX/Y, keyTanOutX/Y): a direction for fixed tangents, and with
  // weighted tangents also the weight as the length of x. Zero when not given.
  double inX = 0.0;
  double inY = 0.0;
  double outX = 0.0;
  double outY = 0.0;
};

// A set member: one instance of a DAG node, or a dependency node, with an optional component (null: all of it).
struct SetMember {
  Node* node = nullptr;
  unsigned int instance = 0;
  std::shared_ptr<ComponentData> component;
};

struct PoseEntry {
  Node* member = nullptr;
  std::vector<std::pair<std::string, double>> values;
};

struct Connection {
  Node* srcNode = nullptr;
  PlugKey src;
  Node* dstNode = nullptr;
  PlugKey dst;
  bool alive = true;
};

// A DAG node's matrices at one scene generation: its own (with whether it inherits its parents'), and its world
// matrix under each path of nodes above it.
struct MatrixCache {
  std::uint64_t generation = 0;
  bool hasLocal = false;
  MMatrix local;
  bool inheritsTransform = true;
  std::vector<std::pair<std::vector<Node*>, MMatrix>> worlds;
};

struct Node {
  Scene* scene = nullptr;
  std::string typeName;
  std::string name;
  MFn::Type type = MFn::kDependencyNode;
  bool dag = false;
  std::vector<std::unique_ptr<Attribute>> attributes;
  std::vector<Attribute*> topLevel;
  std::map<PlugKey, Value> values;
  std::map<PlugKey, std::set<unsigned int>> elements;
  std::vector<size_t> incoming;
  std::vector<size_t> outgoing;
  std::vector<Node*> parents;
  std::vector<Node*> children;

  std::shared_ptr<Mesh> mesh;
  std::vector<AnimKey> keys;
  // Skin weights per geometry index.
  std::map<unsigned int, SkinWeights> skinWeights;
  // Joint cluster weights per geometry index, in the order of the deformer set's member vertices.
  std::map<unsigned int, std::vector<double>> clusterWeights;
  Node* deformerSet = nullptr;
  std::vector<PoseEntry> pose;

  // Meshes computed for the node's output plugs by logical index, valid while the scene's generation holds.
  std::map<unsigned int, std::shared_ptr<Mesh>> outputCache;
  std::uint64_t outputGeneration = 0;
  // Why the node's last evaluation gave no mesh; empty when it gave one.
  std::string evaluationProblem;
  MatrixCache matrices;

  Attribute* FindAttribute(std::string_view attrName) const;
  Attribute* AddAttribute(std::unique_ptr<Attribute> attribute, Attribute* parent);
};

struct Scene {
  Scene();
  std::vector<std::unique_ptr<Node>> nodes;
  Node* world = nullptr;
  std::vector<Connection> connections;
  MSelectionList activeSelection;
  double currentSeconds = 0.0;
  double minSeconds = 1.0 / 24.0;
  double maxSeconds = 48.0 / 24.0;
  MTime::Unit timeUnit = MTime::kFilm;
  MDistance::Unit distanceUnit = MDistance::kCentimeters;
  MAngle::Unit angleUnit = MAngle::kDegrees;
  std::uint64_t generation = 1;
  std::uint64_t timeEpoch = 0;
  bool interactive = false;
  // What "file -q -sceneName" answers; empty for an untitled scene.
  std::string fileName;
  std::vector<std::string> commandsRun;
  std::vector<std::string> messages;
  // Attributes made by the attribute function sets and not yet added to a node.
  std::vector<std::unique_ptr<Attribute>> pendingAttributes;

  void Touch() { ++generation; }
  void SetTime(double seconds)
  {
    currentSeconds = seconds;
    ++timeEpoch;
    Touch();
  }
};

Scene& CurrentScene();
void ResetScene();

// dagParent: where a new DAG node will go. Maya keeps names unique, except that DAG nodes under different parents
// may share one; without a parent the name is kept unique among all nodes.
Node* NewNode(const std::string& typeName, const std::string& name, const Node* dagParent = nullptr);
Node* FindNode(std::string_view name);
// A node by name or by DAG path: "|group1|pCube1" (full), "group1|pCube1" (the tail of one), or "pCube1" (the first
// node of that name).
Node* FindNodeByPath(std::string_view path);
// The first DAG path (world excluded) that a name with '|' names; empty when none does.
std::vector<Node*> FindDagPath(std::string_view path);
std::string UniqueName(const std::string& wanted, const Node* dagParent = nullptr);
// The name Maya gives the transform made for a new shape: "polySurfaceShape1" gets "polySurface1".
std::string TransformNameFor(const std::string& shapeName);
bool AddChild(Node* parent, Node* child);

PlugKey ParentKey(const PlugKey& key);
bool IsArrayPlug(const PlugKey& key);
void RegisterElements(Node* node, const PlugKey& key);
const Connection* IncomingConnection(const Node* node, const PlugKey& key);
bool Connect(Node* srcNode, const PlugKey& src, Node* dstNode, const PlugKey& dst);

// Every path from the world to the node, in instance-number order.
std::vector<std::vector<Node*>> AllPaths(Node* node);
size_t PathCount(const Node* node);

bool TypeHasFn(MFn::Type actual, MFn::Type wanted);
const char* TypeName(MFn::Type type);
bool BuildNodeType(Node& node);

Value EvaluatePlug(Node* node, const PlugKey& key);
double EvaluateNumber(Node* node, const char* attrName);
// How many times evaluation has given a plug its default for going too deep; a value computed while this count
// moved must not be kept.
std::uint64_t EvaluationCutoffs();
// The mesh a node computes for one output plug, computed at most once per scene generation.
std::shared_ptr<Mesh> CachedOutput(Node* node, unsigned int index,
                                   const std::function<std::shared_ptr<Mesh>()>& compute);
// Stores a number on a plug; on a driven plug the number holds until the time is next set.
void SetNumber(Node* node, const PlugKey& key, double value);
// The node's matrix, and the world matrix of a DAG path (world first), each computed once per scene generation.
MMatrix LocalMatrix(Node* node);
MMatrix PathMatrix(const std::vector<Node*>& path);
std::shared_ptr<Mesh> ShapeGeometry(Node* shape);
double EvaluateCurve(const Node* curve, double seconds);
// The curve's preInfinity (before its keys) or postInfinity type, numbered as MFnAnimCurve::InfinityType.
int CurveInfinity(const Node* curve, bool before);
// Whether the curve's tangents carry weights (its weightedTangents).
bool CurveWeighted(const Node* curve);

}
