#pragma once

#include <maya/MDagPath.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <maya/MVector.h>
#include <maya/MPlug.h>
#include <maya/MTime.h>
#include <standin/SkinWeights.h>

#include <string>
#include <utility>
#include <vector>

// Builds scenes for tests and importers in the words of a Maya script: node and plug names as MEL writes them
// ("pCube1.translateX", "skin1.matrix[2]"), angles in radians and lengths in centimetres (Maya's internal units).
namespace standin {

// Maya's tangent types; Spline is Maya's "smooth".
enum class TangentType { Linear, Step, Flat, Clamped, Spline, Fixed, Slow, Fast, Plateau, StepNext, Auto };

struct KeySpec {
  MTime time;
  double value = 0.0;
  TangentType in = TangentType::Clamped;
  TangentType out = TangentType::Clamped;
  // Tangent handles as Maya stores them (keyTanInX/Y, keyTanOutX/Y); zero when not given.
  double inX = 0.0;
  double inY = 0.0;
  double outX = 0.0;
  double outY = 0.0;
};

struct MeshDescription {
  std::vector<MPoint> points;
  std::vector<int> counts;
  std::vector<int> connects;
};

struct UVSpec {
  std::string name = "map1";
  std::vector<float> u;
  std::vector<float> v;
  // One UV id per face-vertex in face order; -1 leaves a corner without UV.
  std::vector<int> ids;
};

enum class AttrType { Bool, Int, Short, Float, Double, String, Enum, Distance, Angle, Time, Matrix, Message, Compound,
                      ComponentList, Mesh, PointArray };

// addAttr with what Maya ASCII files give: a compound's children name it as their parent after it was added.
struct AttrSpec {
  std::string longName;
  std::string shortName;
  AttrType type = AttrType::Double;
  double defaultValue = 0.0;
  // Enum fields with their values ("low=2"), in the order given.
  std::vector<std::pair<std::string, short>> enumFields;
  std::string parent;
  bool array = false;
  bool hidden = false;
};

struct ColorSpec {
  std::string name = "colorSet1";
  // The channels the set holds, as MFnMesh::MColorRepresentation: 1 alpha, 3 RGB, 4 RGBA.
  int representation = 4;
  std::vector<float> rgba; // four values per colour
  // One colour id per face-vertex in face order; -1 leaves a corner without colour.
  std::vector<int> ids;
};

void NewScene();
// createNode; a shape without a parent gets a new transform named after it, as Maya does. Empty on failure.
MObject CreateNode(const std::string& type, const std::string& name, const MObject& parent = MObject::kNullObj);
// createNode of a type the stand-in does not implement (a plug-in's node, a deformer it does not evaluate), kept
// as Maya keeps a node whose plug-in is missing: it has the type's name, takes any attribute as it is set or
// connected, and computes nothing, so a mesh whose history reaches it reads as empty (see HistoryProblems).
MObject CreateUnknownNode(const std::string& type, const std::string& name, const MObject& parent = MObject::kNullObj);
MObject NodeByName(const std::string& name);
MDagPath PathTo(const std::string& fullOrShortName);
// parent -add -shape: the shape or transform appears under one more parent (a new instance).
bool AddInstance(const MObject& node, const MObject& parent);
// parent: the node leaves all its parents for this one (the world for a null parent).
bool Reparent(const MObject& node, const MObject& parent);
MPlug Plug(const std::string& nodeDotAttribute);

bool SetAttr(const std::string& plug, double value);
bool SetAttr(const std::string& plug, double x, double y, double z);
bool SetAttr(const std::string& plug, const std::string& text);
bool SetAttr(const std::string& plug, const MMatrix& matrix);
// setAttr -type componentList, the components as Maya names them ("f[0:3]", "vtx[*]", "e[12]"), all of one kind.
bool SetComponents(const std::string& plug, const std::vector<std::string>& components);
bool SetComponents(MPlug plug, const std::vector<std::string>& components);
// setAttr -type pointArray.
bool SetPoints(const std::string& plug, const std::vector<MPoint>& points);
bool SetPoints(MPlug plug, const std::vector<MPoint>& points);
// On a node kept by CreateUnknownNode, the plug "attr[i].child" names, its attributes made as Maya's unknown nodes
// take any attribute; the last one of the kind of `like`, the plug it is to be connected with. Null on other nodes.
MPlug UnknownNodePlug(const MObject& node, const std::string& attributes, const MPlug& like);
bool ConnectAttr(const std::string& source, const std::string& destination);
bool ConnectAttr(const MPlug& source, const MPlug& destination);
// addAttr; enum fields are given by name in index order.
bool AddAttr(const MObject& node, const std::string& longName, AttrType type, double defaultValue = 0.0,
             const std::vector<std::string>& enumFields = {});
bool AddAttr(const MObject& node, const AttrSpec& definition);

MObject CreateMesh(const std::string& shapeName, const MObject& transform, const MeshDescription& mesh);
// Gives an existing mesh shape its points and faces (replacing what it had); false when the arrays do not fit.
bool SetMeshGeometry(const MObject& shape, const MeshDescription& mesh);
bool SetUVs(const MObject& shape, const UVSpec& uvs);
bool SetCurrentUVSet(const MObject& shape, const std::string& setName);
bool SetColors(const MObject& shape, const ColorSpec& colors);
bool SetCurrentColorSet(const MObject& shape, const std::string& setName);
// One normal per face-vertex in face order. A normal with a component of 1e20 or more is not set (as Maya files
// write it): that corner keeps its computed normal.
bool SetFaceVertexNormals(const MObject& shape, const std::vector<MVector>& normals);
bool SetHardEdges(const MObject& shape, const std::vector<std::pair<int, int>>& edges);

// A shader with its shading engine ("<name>SG"); returns the shading engine.
MObject CreateShader(const std::string& type, const std::string& name);
// sets -forceElement: the instance's listed faces, or the whole instance when faces is empty.
bool Assign(const MObject& shadingEngine, const MObject& shape, unsigned int instance = 0,
            const std::vector<int>& faces = {});
MObject CreateFileTexture(const std::string& name, const std::string& fileName, const std::string& destinationPlug);

MObject CreateDisplayLayer(const std::string& name, const std::vector<MObject>& members);

MObject Animate(const std::string& plug, const std::vector<KeySpec>& keys);
// Replaces the keys of an existing animation curve node; keys are kept in time order.
bool SetKeys(const MObject& curve, const std::vector<KeySpec>& keys);

// skinCluster: moves the shape's geometry to a new intermediate "<shape>Orig" and feeds it through a skin cluster
// with the joints' current world matrices as bind matrices. weights: one row per vertex, one column per joint.
MObject SkinMesh(const MObject& shape, const std::vector<MObject>& joints, const std::vector<std::vector<double>>& weights);
// The same with sparse weights, whose influences number the joints in the order given.
MObject SkinMesh(const MObject& shape, const std::vector<MObject>& joints, const SkinWeights& weights);
// The weights of one geometry of an existing skin cluster, as its weightList holds them.
bool SetSkinWeights(const MObject& skinCluster, unsigned int geometryIndex, const SkinWeights& weights);
// blendShape: moves the shape's geometry to a new intermediate "<shape>Orig" and feeds it through a blend shape
// whose target t moves each vertex by targets[t][vertex] (in object space) at weight[t] 1. The weights start at 0.
// Empty when the shape is already deformed or a target does not have one offset per vertex.
MObject BlendMesh(const MObject& shape, const std::vector<std::vector<MVector>>& targets);
// A rigid-skinning joint cluster that binds the listed vertices of one instance of the shape to the joint with the
// given weights.
MObject BindRigid(const MObject& joint, const MObject& shape, const std::vector<int>& vertices,
                  const std::vector<double>& weights, unsigned int instance = 0);
// dagPose -bp -save: remembers the members' current transform values as their bind pose.
MObject SaveBindPose(const std::vector<MObject>& members);
// The values a dagPose holds for one member ("translateX", "jointOrientZ" ... in internal units), which
// "dagPose -r -g -bp" puts back.
bool SetPoseMember(const MObject& pose, const MObject& member, const std::vector<std::pair<std::string, double>>& values);

// A mesh shape (by its shortest unique path) whose construction history could not be evaluated at the current
// time: the node where evaluation stopped, its type and why. `empty` when the shape reads as empty for it; otherwise it shows the geometry the file
// stored on it.
struct HistoryProblem {
  std::string mesh;
  std::string node;
  std::string nodeType;
  std::string reason;
  bool empty = true;
};
std::vector<HistoryProblem> HistoryProblems();

void Select(const std::vector<MDagPath>& paths);
void SetInteractive(bool interactive);
// The file the scene came from, as "file -q -sceneName" answers it (forward slashes, as Maya's).
void SetSceneFileName(const std::string& mayaPath);
void SetPlaybackRange(const MTime& minTime, const MTime& maxTime);
const std::vector<std::string>& CommandsRun();
const std::vector<std::string>& DisplayedMessages();

}
