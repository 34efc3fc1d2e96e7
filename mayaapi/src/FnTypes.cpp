#include "SceneGraph.h"

namespace standin {
namespace {

struct TypeInfo {
  MFn::Type type;
  const char* name;
  MFn::Type parent;
};

// Each function set type with the one it derives from, as Maya's class hierarchy has it.
const TypeInfo kTypes[] = {
    {MFn::kInvalid, "kInvalid", MFn::kInvalid},
    {MFn::kBase, "kBase", MFn::kInvalid},
    {MFn::kNamedObject, "kNamedObject", MFn::kBase},
    {MFn::kDependencyNode, "kDependencyNode", MFn::kNamedObject},
    {MFn::kDagNode, "kDagNode", MFn::kDependencyNode},
    {MFn::kWorld, "kWorld", MFn::kDagNode},
    {MFn::kTransform, "kTransform", MFn::kDagNode},
    {MFn::kJoint, "kJoint", MFn::kTransform},
    {MFn::kShape, "kShape", MFn::kDagNode},
    {MFn::kGeometric, "kGeometric", MFn::kShape},
    {MFn::kSurface, "kSurface", MFn::kGeometric},
    {MFn::kMesh, "kMesh", MFn::kSurface},
    {MFn::kNurbsSurface, "kNurbsSurface", MFn::kSurface},
    {MFn::kNurbsCurve, "kNurbsCurve", MFn::kGeometric},
    {MFn::kCamera, "kCamera", MFn::kShape},
    {MFn::kLight, "kLight", MFn::kShape},
    {MFn::kAmbientLight, "kAmbientLight", MFn::kLight},
    {MFn::kNonAmbientLight, "kNonAmbientLight", MFn::kLight},
    {MFn::kNonExtendedLight, "kNonExtendedLight", MFn::kNonAmbientLight},
    {MFn::kPointLight, "kPointLight", MFn::kNonExtendedLight},
    {MFn::kDirectionalLight, "kDirectionalLight", MFn::kNonExtendedLight},
    {MFn::kSpotLight, "kSpotLight", MFn::kNonExtendedLight},
    {MFn::kAreaLight, "kAreaLight", MFn::kNonExtendedLight},
    {MFn::kLambert, "kLambert", MFn::kDependencyNode},
    {MFn::kReflect, "kReflect", MFn::kLambert},
    {MFn::kBlinn, "kBlinn", MFn::kReflect},
    {MFn::kPhong, "kPhong", MFn::kReflect},
    {MFn::kPhongExplorer, "kPhongExplorer", MFn::kReflect},
    {MFn::kAnisotropy, "kAnisotropy", MFn::kReflect},
    {MFn::kLayeredShader, "kLayeredShader", MFn::kDependencyNode},
    {MFn::kSurfaceShader, "kSurfaceShader", MFn::kDependencyNode},
    {MFn::kTexture2d, "kTexture2d", MFn::kDependencyNode},
    {MFn::kFileTexture, "kFileTexture", MFn::kTexture2d},
    {MFn::kPlace2dTexture, "kPlace2dTexture", MFn::kDependencyNode},
    {MFn::kBump, "kBump", MFn::kDependencyNode},
    {MFn::kSet, "kSet", MFn::kDependencyNode},
    {MFn::kShadingEngine, "kShadingEngine", MFn::kSet},
    {MFn::kGeometryFilt, "kGeometryFilt", MFn::kDependencyNode},
    {MFn::kWeightGeometryFilt, "kWeightGeometryFilt", MFn::kGeometryFilt},
    {MFn::kSkinClusterFilter, "kSkinClusterFilter", MFn::kGeometryFilt},
    {MFn::kJointCluster, "kJointCluster", MFn::kWeightGeometryFilt},
    {MFn::kDisplayLayer, "kDisplayLayer", MFn::kDependencyNode},
    {MFn::kAnimCurve, "kAnimCurve", MFn::kDependencyNode},
    {MFn::kAnimCurveTimeToDistance, "kAnimCurveTimeToDistance", MFn::kAnimCurve},
    {MFn::kAnimCurveTimeToAngular, "kAnimCurveTimeToAngular", MFn::kAnimCurve},
    {MFn::kAnimCurveTimeToUnitless, "kAnimCurveTimeToUnitless", MFn::kAnimCurve},
    {MFn::kAnimCurveTimeToTime, "kAnimCurveTimeToTime", MFn::kAnimCurve},
    {MFn::kAnimCurveUnitlessToAngular, "kAnimCurveUnitlessToAngular", MFn::kAnimCurve},
    {MFn::kAnimCurveUnitlessToDistance, "kAnimCurveUnitlessToDistance", MFn::kAnimCurve},
    {MFn::kAnimCurveUnitlessToTime, "kAnimCurveUnitlessToTime", MFn::kAnimCurve},
    {MFn::kAnimCurveUnitlessToUnitless, "kAnimCurveUnitlessToUnitless", MFn::kAnimCurve},
    {MFn::kUnitConversion, "kUnitConversion", MFn::kDependencyNode},
    {MFn::kPairBlend, "kPairBlend", MFn::kDependencyNode},
    {MFn::kDagPose, "kDagPose", MFn::kDependencyNode},
    {MFn::kCharacter, "kCharacter", MFn::kSet},
    {MFn::kTime, "kTime", MFn::kDependencyNode},
    {MFn::kGroupId, "kGroupId", MFn::kDependencyNode},
    {MFn::kGroupParts, "kGroupParts", MFn::kDependencyNode},
    {MFn::kUnknown, "kUnknown", MFn::kDependencyNode},
    {MFn::kUnknownDag, "kUnknownDag", MFn::kDagNode},
    {MFn::kPolyCreator, "kPolyCreator", MFn::kDependencyNode},
    {MFn::kPolyPrimitive, "kPolyPrimitive", MFn::kPolyCreator},
    {MFn::kPolyCube, "kPolyCube", MFn::kPolyPrimitive},
    {MFn::kPolySphere, "kPolySphere", MFn::kPolyPrimitive},
    {MFn::kPolyMesh, "kPolyMesh", MFn::kPolyPrimitive},
    {MFn::kPolyCylinder, "kPolyCylinder", MFn::kPolyPrimitive},
    {MFn::kPolyCone, "kPolyCone", MFn::kPolyPrimitive},
    {MFn::kPolyTorus, "kPolyTorus", MFn::kPolyPrimitive},
    {MFn::kMidModifier, "kMidModifier", MFn::kDependencyNode},
    {MFn::kPolySubdFacet, "kPolySubdFacet", MFn::kMidModifier},
    {MFn::kPolyTriangulate, "kPolyTriangulate", MFn::kMidModifier},
    {MFn::kDeleteComponent, "kDeleteComponent", MFn::kDependencyNode},
    {MFn::kTransformGeometry, "kTransformGeometry", MFn::kDependencyNode},
    {MFn::kTweak, "kTweak", MFn::kGeometryFilt},
    {MFn::kBlendShape, "kBlendShape", MFn::kGeometryFilt},
    {MFn::kData, "kData", MFn::kBase},
    {MFn::kMeshData, "kMeshData", MFn::kData},
    {MFn::kMatrixData, "kMatrixData", MFn::kData},
    {MFn::kNumericData, "kNumericData", MFn::kData},
    {MFn::kStringData, "kStringData", MFn::kData},
    {MFn::kComponentListData, "kComponentListData", MFn::kData},
    {MFn::kPointArrayData, "kPointArrayData", MFn::kData},
    {MFn::kComponent, "kComponent", MFn::kBase},
    {MFn::kSingleIndexedComponent, "kSingleIndexedComponent", MFn::kComponent},
    {MFn::kMeshPolygonComponent, "kMeshPolygonComponent", MFn::kSingleIndexedComponent},
    {MFn::kMeshVertComponent, "kMeshVertComponent", MFn::kSingleIndexedComponent},
    {MFn::kMeshEdgeComponent, "kMeshEdgeComponent", MFn::kSingleIndexedComponent},
    {MFn::kAttribute, "kAttribute", MFn::kBase},
    {MFn::kNumericAttribute, "kNumericAttribute", MFn::kAttribute},
    {MFn::kTypedAttribute, "kTypedAttribute", MFn::kAttribute},
    {MFn::kEnumAttribute, "kEnumAttribute", MFn::kAttribute},
    {MFn::kCompoundAttribute, "kCompoundAttribute", MFn::kAttribute},
    {MFn::kMatrixAttribute, "kMatrixAttribute", MFn::kAttribute},
    {MFn::kMessageAttribute, "kMessageAttribute", MFn::kAttribute},
    {MFn::kUnitAttribute, "kUnitAttribute", MFn::kAttribute},
    {MFn::kGenericAttribute, "kGenericAttribute", MFn::kAttribute},
};

const TypeInfo* Find(MFn::Type type)
{
  for (const TypeInfo& info : kTypes)
    if (info.type == type)
      return &info;
  return nullptr;
}

}

bool TypeHasFn(MFn::Type actual, MFn::Type wanted)
{
  for (const TypeInfo* info = Find(actual); info && info->type != MFn::kInvalid; info = Find(info->parent))
    if (info->type == wanted)
      return true;
  return false;
}

const char* TypeName(MFn::Type type)
{
  const TypeInfo* info = Find(type);
  return info ? info->name : "kInvalid";
}

}
