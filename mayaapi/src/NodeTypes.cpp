#include "SceneGraph.h"

#include "history/HistoryNode.h"

#include <cstring>
#include <initializer_list>
#include <numbers>
#include <string>
#include <utility>

namespace standin {
namespace {

using K = AttrKind;

struct Builder {
  Node& node;

  Attribute* Add(const char* name, const char* shortName, K kind, double def = 0.0, Attribute* parent = nullptr,
                 bool array = false)
  {
    auto a = std::make_unique<Attribute>();
    a->name = name;
    a->shortName = shortName;
    a->kind = kind;
    a->defaultNumber = def;
    a->array = array;
    return node.AddAttribute(std::move(a), parent);
  }

  Attribute* Compound(const char* name, const char* shortName, Attribute* parent = nullptr, bool array = false)
  {
    return Add(name, shortName, K::Compound, 0.0, parent, array);
  }

  // A numeric triple such as translate (translateX, tx ...) or color (colorR, cr ...).
  Attribute* Triple(const char* name, const char* shortName, K kind, double def, const char* suffixes = "XYZ",
                    Attribute* parent = nullptr)
  {
    Attribute* c = Compound(name, shortName, parent);
    for (int i = 0; i < 3; ++i) {
      const char upper[2] = {suffixes[i], 0};
      const char lower[2] = {static_cast<char>(suffixes[i] | 0x20), 0};
      const std::string childName = std::string(name) + upper;
      const std::string childShort = std::string(shortName) + lower;
      Add(childName.c_str(), childShort.c_str(), kind, def, c);
    }
    return c;
  }

  Attribute* Pair(const char* name, const char* shortName, K kind, double def,
                  std::initializer_list<std::pair<const char*, const char*>> children)
  {
    Attribute* c = Compound(name, shortName);
    for (const auto& [childName, childShort] : children)
      Add(childName, childShort, kind, def, c);
    return c;
  }

  Attribute* Enum(const char* name, const char* shortName, std::initializer_list<const char*> fields, double def = 0.0,
                  Attribute* parent = nullptr)
  {
    Attribute* a = Add(name, shortName, K::Enum, def, parent);
    short index = 0;
    for (const char* field : fields)
      a->enumFields.emplace_back(field, index++);
    return a;
  }

  void Dag()
  {
    Add("visibility", "v", K::Bool, 1.0);
    Add("intermediateObject", "io", K::Bool, 0.0);
    Attribute* d = Compound("drawOverride", "do");
    Enum("overrideDisplayType", "ovdt", {"Normal", "Template", "Reference"}, 0.0, d);
    Enum("overrideLevelOfDetail", "ovlod", {"Full", "BoundingBox"}, 0.0, d);
    Add("overrideShading", "ovs", K::Bool, 1.0, d);
    Add("overrideTexturing", "ovt", K::Bool, 1.0, d);
    Add("overridePlayback", "ovp", K::Bool, 1.0, d);
    Add("overrideEnabled", "ove", K::Bool, 0.0, d);
    Add("overrideVisibility", "ovv", K::Bool, 1.0, d);
    Add("overrideColor", "ovc", K::Short, 0.0, d);
    Add("worldMatrix", "wm", K::Matrix, 0.0, nullptr, true);
    Add("worldInverseMatrix", "wim", K::Matrix, 0.0, nullptr, true);
    Add("parentMatrix", "pm", K::Matrix, 0.0, nullptr, true);
    Add("parentInverseMatrix", "pim", K::Matrix, 0.0, nullptr, true);
    Attribute* iog = Compound("instObjGroups", "iog", nullptr, true);
    Attribute* og = Compound("objectGroups", "og", iog, true);
    Add("objectGrpCompList", "gcl", K::ComponentList, 0.0, og);
    Add("objectGroupId", "gid", K::Int, 0.0, og);
  }

  void Transform()
  {
    Dag();
    Triple("translate", "t", K::Distance, 0.0);
    Triple("rotate", "r", K::Angle, 0.0);
    Triple("scale", "s", K::Double, 1.0);
    Enum("rotateOrder", "ro", {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"});
    Triple("rotatePivot", "rp", K::Distance, 0.0);
    Triple("rotatePivotTranslate", "rpt", K::Distance, 0.0);
    Triple("scalePivot", "sp", K::Distance, 0.0);
    Triple("scalePivotTranslate", "spt", K::Distance, 0.0);
    Triple("rotateAxis", "ra", K::Angle, 0.0);
    Add("inheritsTransform", "it", K::Bool, 1.0);
    Add("matrix", "m", K::Matrix);
    Add("inverseMatrix", "im", K::Matrix);
  }

  void Joint()
  {
    Transform();
    Triple("jointOrient", "jo", K::Angle, 0.0);
    Add("segmentScaleCompensate", "ssc", K::Bool, 1.0);
    Triple("inverseScale", "is", K::Double, 1.0);
  }

  void Mesh()
  {
    Dag();
    Add("inMesh", "i", K::Mesh);
    Add("outMesh", "o", K::Mesh);
    Attribute* pnts = Compound("pnts", "pt", nullptr, true);
    Add("pntx", "px", K::Float, 0.0, pnts);
    Add("pnty", "py", K::Float, 0.0, pnts);
    Add("pntz", "pz", K::Float, 0.0, pnts);
    Add("worldMesh", "w", K::Mesh, 0.0, nullptr, true);
    Add("castsShadows", "csh", K::Bool, 1.0);
    Add("receiveShadows", "rcsh", K::Bool, 1.0);
    Add("primaryVisibility", "vis", K::Bool, 1.0);
    Add("doubleSided", "ds", K::Bool, 1.0);
    Add("opposite", "op", K::Bool, 0.0);
  }

  void Light(MFn::Type type)
  {
    Dag();
    // A light's colour children are colorR (cr) ..., not clr as the pattern of Triple would make them.
    Attribute* color = Compound("color", "cl");
    for (const char* channel : {"R", "G", "B"})
      Add((std::string("color") + channel).c_str(), (std::string("c") + static_cast<char>(channel[0] | 0x20)).c_str(),
          K::Float, 1.0, color);
    Add("intensity", "in", K::Float, 1.0);
    Add("useRayTraceShadows", "urs", K::Bool, 0.0);
    Triple("shadowColor", "sc", K::Float, 0.0, "RGB");
    if (type == MFn::kAmbientLight) {
      Add("ambientShade", "as", K::Float, 0.45);
      return;
    }
    Enum("decayRate", "de", {"No Decay", "Linear", "Quadratic", "Cubic"});
    Add("shadowRadius", "sr", K::Float, 0.0);
    Add("castSoftShadows", "cst", K::Bool, 0.0);
    Add("useDepthMapShadows", "dms", K::Bool, 0.0);
    if (type == MFn::kSpotLight) {
      Add("coneAngle", "ca", K::Angle, 40.0 * std::numbers::pi / 180.0);
      Add("penumbraAngle", "pa", K::Angle, 0.0);
      Add("dropoff", "dro", K::Double, 0.0);
    }
  }

  void Lambert()
  {
    Triple("color", "c", K::Float, 0.5, "RGB");
    Triple("transparency", "it", K::Float, 0.0, "RGB");
    Triple("ambientColor", "ambc", K::Float, 0.0, "RGB");
    Triple("incandescence", "ic", K::Float, 0.0, "RGB");
    Add("diffuse", "dc", K::Float, 0.8);
    Add("translucence", "tc", K::Float, 0.0);
    Triple("normalCamera", "n", K::Float, 0.0);
    Triple("outColor", "oc", K::Float, 0.0, "RGB");
    Triple("outTransparency", "ot", K::Float, 0.0, "RGB");
  }

  void Reflect()
  {
    Lambert();
    Triple("specularColor", "sc", K::Float, 0.5, "RGB");
    Add("reflectivity", "rfl", K::Float, 0.5);
    Triple("reflectedColor", "rc", K::Float, 0.0, "RGB");
  }

  void Set()
  {
    Add("dagSetMembers", "dsm", K::Message, 0.0, nullptr, true);
    Add("dnSetMembers", "dnsm", K::Message, 0.0, nullptr, true);
  }

  void AnimCurve(K input, K output)
  {
    Add("input", "i", input);
    Add("output", "o", output);
    Enum("preInfinity", "pre", {"constant", "linear", "constant", "cycle", "cycleRelative", "oscillate"});
    Enum("postInfinity", "pst", {"constant", "linear", "constant", "cycle", "cycleRelative", "oscillate"});
    Add("weightedTangents", "wgt", K::Bool, 0.0);
  }

  // pairBlend's inputs carry their number after the axis: inTranslateX1 (itx1).
  void NumberedTriple(const char* name, const char* shortName, const char* number, K kind)
  {
    const std::string n = number;
    Attribute* c = Compound((std::string(name) + n).c_str(), (std::string(shortName) + n).c_str());
    for (const char* axis : {"X", "Y", "Z"}) {
      const std::string lower(1, static_cast<char>(axis[0] | 0x20));
      Add((std::string(name) + axis + n).c_str(), (std::string(shortName) + lower + n).c_str(), kind, 0.0, c);
    }
  }

  void Deformer()
  {
    Attribute* input = Compound("input", "ip", nullptr, true);
    Add("inputGeometry", "ig", K::Mesh, 0.0, input);
    Add("groupId", "gi", K::Int, 0.0, input);
    Add("outputGeometry", "og", K::Mesh, 0.0, nullptr, true);
    Add("envelope", "en", K::Float, 1.0);
  }
};

struct TypeEntry {
  const char* typeName;
  MFn::Type type;
};

const TypeEntry kNodeTypes[] = {
    {"transform", MFn::kTransform}, {"joint", MFn::kJoint}, {"mesh", MFn::kMesh},
    {"nurbsSurface", MFn::kNurbsSurface}, {"nurbsCurve", MFn::kNurbsCurve}, {"camera", MFn::kCamera},
    {"ambientLight", MFn::kAmbientLight}, {"pointLight", MFn::kPointLight}, {"spotLight", MFn::kSpotLight},
    {"directionalLight", MFn::kDirectionalLight}, {"areaLight", MFn::kAreaLight}, {"lambert", MFn::kLambert}, {"blinn", MFn::kBlinn},
    {"phong", MFn::kPhong}, {"phongE", MFn::kPhongExplorer}, {"anisotropic", MFn::kAnisotropy},
    {"layeredShader", MFn::kLayeredShader}, {"surfaceShader", MFn::kSurfaceShader}, {"file", MFn::kFileTexture},
    {"place2dTexture", MFn::kPlace2dTexture}, {"bump2d", MFn::kBump}, {"shadingEngine", MFn::kShadingEngine},
    {"objectSet", MFn::kSet}, {"displayLayer", MFn::kDisplayLayer}, {"animCurveTL", MFn::kAnimCurveTimeToDistance},
    {"animCurveTA", MFn::kAnimCurveTimeToAngular}, {"animCurveTU", MFn::kAnimCurveTimeToUnitless},
    {"animCurveTT", MFn::kAnimCurveTimeToTime}, {"animCurveUA", MFn::kAnimCurveUnitlessToAngular},
    {"animCurveUL", MFn::kAnimCurveUnitlessToDistance}, {"animCurveUT", MFn::kAnimCurveUnitlessToTime},
    {"animCurveUU", MFn::kAnimCurveUnitlessToUnitless}, {"unitConversion", MFn::kUnitConversion},
    {"pairBlend", MFn::kPairBlend},
    {"skinCluster", MFn::kSkinClusterFilter}, {"jointCluster", MFn::kJointCluster}, {"dagPose", MFn::kDagPose},
    {"character", MFn::kCharacter}, {"time", MFn::kTime}, {"groupId", MFn::kGroupId},
    {"unknown", MFn::kUnknown}, {"unknownDag", MFn::kUnknownDag},
};

}

bool BuildNodeType(Node& node)
{
  const TypeEntry* entry = nullptr;
  for (const TypeEntry& candidate : kNodeTypes)
    if (node.typeName == candidate.typeName)
      entry = &candidate;
  if (!entry)
    return BuildHistoryNodeType(node);
  node.type = entry->type;
  node.dag = TypeHasFn(node.type, MFn::kDagNode);
  Builder b{node};
  b.Add("message", "msg", K::Message);
  switch (node.type) {
  case MFn::kTransform: b.Transform(); break;
  case MFn::kJoint: b.Joint(); break;
  case MFn::kMesh: b.Mesh(); node.mesh = std::make_shared<Mesh>(); break;
  case MFn::kNurbsSurface:
  case MFn::kNurbsCurve:
  case MFn::kCamera:
  case MFn::kUnknownDag: b.Dag(); break;
  case MFn::kAmbientLight:
  case MFn::kPointLight:
  case MFn::kSpotLight:
  case MFn::kDirectionalLight:
  case MFn::kAreaLight: b.Light(node.type); break;
  case MFn::kLambert: b.Lambert(); break;
  case MFn::kBlinn:
    b.Reflect();
    b.Add("eccentricity", "ec", K::Float, 0.3);
    b.Add("specularRollOff", "sro", K::Float, 0.7);
    break;
  case MFn::kPhong:
    b.Reflect();
    b.Add("cosinePower", "cp", K::Float, 20.0);
    break;
  case MFn::kPhongExplorer:
    b.Reflect();
    b.Add("roughness", "rn", K::Float, 0.5);
    b.Add("highlightSize", "hs", K::Float, 0.5);
    b.Triple("whiteness", "wn", K::Float, 0.5, "RGB");
    break;
  case MFn::kAnisotropy:
    b.Reflect();
    b.Add("angle", "a", K::Float, 0.0);
    b.Add("spreadX", "sx", K::Float, 13.0);
    b.Add("spreadY", "sy", K::Float, 3.0);
    b.Add("roughness", "rn", K::Float, 0.7);
    b.Add("fresnelRefractiveIndex", "fri", K::Float, 6.0);
    break;
  case MFn::kLayeredShader: {
    Attribute* inputs = b.Compound("inputs", "cs", nullptr, true);
    b.Triple("color", "c", K::Float, 0.0, "RGB", inputs);
    b.Triple("transparency", "t", K::Float, 0.0, "RGB", inputs);
    b.Triple("glowColor", "g", K::Float, 0.0, "RGB", inputs);
    b.Triple("outColor", "oc", K::Float, 0.0, "RGB");
    b.Triple("outTransparency", "ot", K::Float, 0.0, "RGB");
    break;
  }
  case MFn::kSurfaceShader:
    b.Triple("outColor", "oc", K::Float, 0.0, "RGB");
    b.Triple("outTransparency", "ot", K::Float, 0.0, "RGB");
    b.Triple("outGlowColor", "ogc", K::Float, 0.0, "RGB");
    break;
  case MFn::kFileTexture:
    b.Add("fileTextureName", "ftn", K::String);
    b.Pair("uvCoord", "uv", K::Float, 0.0, {{"uCoord", "u"}, {"vCoord", "v"}});
    b.Pair("repeatUV", "re", K::Double, 1.0, {{"repeatU", "reu"}, {"repeatV", "rev"}});
    b.Pair("offset", "of", K::Double, 0.0, {{"offsetU", "ofu"}, {"offsetV", "ofv"}});
    b.Triple("outColor", "oc", K::Float, 0.0, "RGB");
    b.Add("outAlpha", "oa", K::Float, 0.0);
    break;
  case MFn::kPlace2dTexture:
    b.Pair("repeatUV", "re", K::Double, 1.0, {{"repeatU", "reu"}, {"repeatV", "rev"}});
    b.Pair("offset", "of", K::Double, 0.0, {{"offsetU", "ofu"}, {"offsetV", "ofv"}});
    b.Add("rotateFrame", "rf", K::Angle, 0.0);
    b.Add("rotateUV", "ro", K::Angle, 0.0);
    b.Pair("outUV", "uv", K::Float, 0.0, {{"outU", "u"}, {"outV", "v"}});
    break;
  case MFn::kBump:
    b.Add("bumpValue", "bv", K::Float, 0.0);
    b.Add("bumpDepth", "bd", K::Float, 1.0);
    b.Enum("bumpInterp", "bi", {"Bump", "Tangent Space Normals", "Object Space Normals"});
    b.Triple("outNormal", "o", K::Float, 0.0);
    break;
  case MFn::kShadingEngine:
    b.Set();
    b.Triple("surfaceShader", "ss", K::Float, 0.0, "RGB");
    b.Add("displacementShader", "ds", K::Float, 0.0);
    b.Triple("volumeShader", "vs", K::Float, 0.0, "RGB");
    break;
  case MFn::kSet:
  case MFn::kCharacter: b.Set(); break;
  case MFn::kDisplayLayer: {
    Attribute* d = b.Compound("drawInfo", "di");
    b.Enum("displayType", "dt", {"Normal", "Template", "Reference"}, 0.0, d);
    b.Enum("levelOfDetail", "lod", {"Full", "BoundingBox"}, 0.0, d);
    b.Add("shading", "s", K::Bool, 1.0, d);
    b.Add("texturing", "t", K::Bool, 1.0, d);
    b.Add("playback", "p", K::Bool, 1.0, d);
    b.Add("enabled", "e", K::Bool, 1.0, d);
    b.Add("visibility", "v", K::Bool, 1.0, d);
    b.Add("hideOnPlayback", "hpb", K::Bool, 0.0, d);
    b.Add("color", "c", K::Short, 0.0, d);
    b.Add("displayOrder", "do", K::Short, 0.0);
    b.Add("identification", "id", K::Short, 0.0);
    break;
  }
  case MFn::kAnimCurveTimeToDistance: b.AnimCurve(K::Time, K::Distance); break;
  case MFn::kAnimCurveTimeToAngular: b.AnimCurve(K::Time, K::Angle); break;
  case MFn::kAnimCurveTimeToUnitless: b.AnimCurve(K::Time, K::Double); break;
  case MFn::kAnimCurveTimeToTime: b.AnimCurve(K::Time, K::Time); break;
  case MFn::kAnimCurveUnitlessToAngular: b.AnimCurve(K::Double, K::Angle); break;
  case MFn::kAnimCurveUnitlessToDistance: b.AnimCurve(K::Double, K::Distance); break;
  case MFn::kAnimCurveUnitlessToTime: b.AnimCurve(K::Double, K::Time); break;
  case MFn::kAnimCurveUnitlessToUnitless: b.AnimCurve(K::Double, K::Double); break;
  case MFn::kUnitConversion:
    b.Add("input", "i", K::Double);
    b.Add("output", "o", K::Double);
    b.Add("conversionFactor", "cf", K::Double, 1.0);
    break;
  case MFn::kPairBlend:
    b.NumberedTriple("inTranslate", "it", "1", K::Distance);
    b.NumberedTriple("inRotate", "ir", "1", K::Angle);
    b.NumberedTriple("inTranslate", "it", "2", K::Distance);
    b.NumberedTriple("inRotate", "ir", "2", K::Angle);
    b.Add("weight", "w", K::Double, 1.0);
    b.Triple("outTranslate", "ot", K::Distance, 0.0);
    b.Triple("outRotate", "or", K::Angle, 0.0);
    b.Enum("rotInterpolation", "ri", {"Euler Angles", "Quaternions"});
    for (const auto& [name, shortName] : {std::pair{"translateXMode", "txm"}, std::pair{"translateYMode", "tym"},
                                          std::pair{"translateZMode", "tzm"}, std::pair{"rotateMode", "rm"}})
      b.Enum(name, shortName, {"Blend Inputs", "Input 1 Only", "Input 2 Only"});
    break;
  case MFn::kSkinClusterFilter:
    b.Deformer();
    b.Add("matrix", "ma", K::Matrix, 0.0, nullptr, true);
    b.Add("bindPreMatrix", "pm", K::Matrix, 0.0, nullptr, true);
    b.Add("geomMatrix", "gm", K::Matrix);
    b.Add("maxInfluences", "mi", K::Int, 5.0);
    break;
  case MFn::kJointCluster:
    b.Deformer();
    b.Add("matrix", "ma", K::Matrix);
    break;
  case MFn::kDagPose:
    b.Add("members", "m", K::Message, 0.0, nullptr, true);
    b.Add("worldMatrix", "wm", K::Matrix, 0.0, nullptr, true);
    b.Add("xformMatrix", "xm", K::Matrix, 0.0, nullptr, true);
    b.Add("bindPose", "bp", K::Bool, 0.0);
    break;
  case MFn::kTime: b.Add("outTime", "o", K::Time); break;
  // Maya gives every groupId node an id of its own when it is made; shapes and groupParts match groups by it.
  case MFn::kGroupId: b.Add("groupId", "id", K::Int, static_cast<double>(node.scene->nodes.size())); break;
  default: break;
  }
  return true;
}

}
