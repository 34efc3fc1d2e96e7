#include <maya/MAnimControl.h>
#include <maya/MAnimUtil.h>
#include <maya/MFnAnimCurve.h>

#include "SceneGraph.h"

#include <algorithm>

namespace {

void SetStatus(MStatus* status, MS::MStatusCode code)
{
  if (status)
    *status = code;
}

standin::Node* CurveDriving(const MPlug& plug)
{
  if (plug.isNull())
    return nullptr;
  const standin::Connection* c = standin::IncomingConnection(plug.standinNode(), plug.standinKey());
  return c && standin::TypeHasFn(c->srcNode->type, MFn::kAnimCurve) ? c->srcNode : nullptr;
}

standin::Tangent ToTangent(MFnAnimCurve::TangentType type)
{
  switch (type) {
  case MFnAnimCurve::kTangentLinear: return standin::Tangent::Linear;
  case MFnAnimCurve::kTangentFlat: return standin::Tangent::Flat;
  case MFnAnimCurve::kTangentStep: return standin::Tangent::Step;
  case MFnAnimCurve::kTangentSmooth: return standin::Tangent::Spline;
  case MFnAnimCurve::kTangentFixed: return standin::Tangent::Fixed;
  case MFnAnimCurve::kTangentSlow: return standin::Tangent::Slow;
  case MFnAnimCurve::kTangentFast: return standin::Tangent::Fast;
  case MFnAnimCurve::kTangentPlateau: return standin::Tangent::Plateau;
  case MFnAnimCurve::kTangentStepNext: return standin::Tangent::StepNext;
  case MFnAnimCurve::kTangentAuto: return standin::Tangent::Auto;
  default: return standin::Tangent::Clamped;
  }
}

MFnAnimCurve::TangentType FromTangent(standin::Tangent type)
{
  switch (type) {
  case standin::Tangent::Linear: return MFnAnimCurve::kTangentLinear;
  case standin::Tangent::Flat: return MFnAnimCurve::kTangentFlat;
  case standin::Tangent::Step: return MFnAnimCurve::kTangentStep;
  case standin::Tangent::Spline: return MFnAnimCurve::kTangentSmooth;
  case standin::Tangent::Fixed: return MFnAnimCurve::kTangentFixed;
  case standin::Tangent::Slow: return MFnAnimCurve::kTangentSlow;
  case standin::Tangent::Fast: return MFnAnimCurve::kTangentFast;
  case standin::Tangent::Plateau: return MFnAnimCurve::kTangentPlateau;
  case standin::Tangent::StepNext: return MFnAnimCurve::kTangentStepNext;
  case standin::Tangent::Auto: return MFnAnimCurve::kTangentAuto;
  case standin::Tangent::Clamped: break;
  }
  return MFnAnimCurve::kTangentClamped;
}

// Animated plugs of a node in the order of their attributes, then of their indices.
void AnimatedPlugsOf(standin::Node* node, MPlugArray& plugs)
{
  std::vector<std::pair<size_t, standin::PlugKey>> found;
  for (size_t index : node->incoming) {
    const standin::Connection& c = node->scene->connections[index];
    if (!c.alive || !standin::TypeHasFn(c.srcNode->type, MFn::kAnimCurve))
      continue;
    size_t position = 0;
    while (position < node->attributes.size() && node->attributes[position].get() != c.dst.attribute)
      ++position;
    found.emplace_back(position, c.dst);
  }
  std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) {
    return a.first != b.first ? a.first < b.first : a.second.indices < b.second.indices;
  });
  for (const auto& [position, key] : found)
    plugs.append(MPlug(node, key));
}

}

MFnAnimCurve::MFnAnimCurve(const MObject& object, MStatus* status) { SetStatus(status, setObject(object).statusCode()); }

MFnAnimCurve::MFnAnimCurve(const MPlug& plug, MStatus* status)
{
  standin::Node* curve = CurveDriving(plug);
  SetStatus(status, curve ? setObject(MObject(curve)).statusCode() : MS::kInvalidParameter);
}

MFnAnimCurve::AnimCurveType MFnAnimCurve::animCurveType(MStatus* status) const
{
  SetStatus(status, m_object.isNull() ? MS::kFailure : MS::kSuccess);
  switch (m_object.apiType()) {
  case MFn::kAnimCurveTimeToAngular: return kAnimCurveTA;
  case MFn::kAnimCurveTimeToDistance: return kAnimCurveTL;
  case MFn::kAnimCurveTimeToUnitless: return kAnimCurveTU;
  default: return kAnimCurveUnknown;
  }
}

unsigned int MFnAnimCurve::numKeys(MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  SetStatus(status, node ? MS::kSuccess : MS::kFailure);
  return node ? static_cast<unsigned int>(node->keys.size()) : 0;
}

MTime MFnAnimCurve::time(unsigned int index, MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  if (!node || index >= node->keys.size()) {
    SetStatus(status, MS::kInvalidParameter);
    return MTime();
  }
  SetStatus(status, MS::kSuccess);
  MTime t(node->keys[index].seconds, MTime::kSeconds);
  t.setUnit(MTime::uiUnit());
  return t;
}

double MFnAnimCurve::value(unsigned int index, MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  if (!node || index >= node->keys.size()) {
    SetStatus(status, MS::kInvalidParameter);
    return 0.0;
  }
  SetStatus(status, MS::kSuccess);
  return node->keys[index].value;
}

MFnAnimCurve::TangentType MFnAnimCurve::inTangentType(unsigned int index, MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  const bool ok = node && index < node->keys.size();
  SetStatus(status, ok ? MS::kSuccess : MS::kInvalidParameter);
  return ok ? FromTangent(node->keys[index].in) : kTangentGlobal;
}

MFnAnimCurve::TangentType MFnAnimCurve::outTangentType(unsigned int index, MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  const bool ok = node && index < node->keys.size();
  SetStatus(status, ok ? MS::kSuccess : MS::kInvalidParameter);
  return ok ? FromTangent(node->keys[index].out) : kTangentGlobal;
}

MStatus MFnAnimCurve::evaluate(const MTime& atTime, double& value) const
{
  standin::Node* node = m_object.standinNode();
  if (!node)
    return MS::kFailure;
  value = standin::EvaluateCurve(node, atTime.as(MTime::kSeconds));
  return MS::kSuccess;
}

double MFnAnimCurve::evaluate(const MTime& atTime, MStatus* status) const
{
  double value = 0.0;
  const MStatus result = evaluate(atTime, value);
  SetStatus(status, result.statusCode());
  return value;
}

bool MFnAnimCurve::isStatic(MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  SetStatus(status, node ? MS::kSuccess : MS::kFailure);
  if (!node)
    return false;
  return std::all_of(node->keys.begin(), node->keys.end(),
                     [&](const standin::AnimKey& k) { return k.value == node->keys.front().value; });
}

MFnAnimCurve::InfinityType MFnAnimCurve::preInfinityType(MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  SetStatus(status, node ? MS::kSuccess : MS::kFailure);
  return node ? static_cast<InfinityType>(standin::CurveInfinity(node, true)) : kConstant;
}

MFnAnimCurve::InfinityType MFnAnimCurve::postInfinityType(MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  SetStatus(status, node ? MS::kSuccess : MS::kFailure);
  return node ? static_cast<InfinityType>(standin::CurveInfinity(node, false)) : kConstant;
}

bool MFnAnimCurve::isWeighted(MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  SetStatus(status, node ? MS::kSuccess : MS::kFailure);
  return node && standin::CurveWeighted(node);
}

unsigned int MFnAnimCurve::addKey(const MTime& time, double value, TangentType tangentInType,
                                  TangentType tangentOutType, MStatus* status)
{
  standin::Node* node = m_object.standinNode();
  if (!node) {
    SetStatus(status, MS::kFailure);
    return 0;
  }
  const standin::AnimKey key{time.as(MTime::kSeconds), value, ToTangent(tangentInType), ToTangent(tangentOutType)};
  auto& keys = node->keys;
  auto at = std::lower_bound(keys.begin(), keys.end(), key.seconds,
                             [](const standin::AnimKey& k, double t) { return k.seconds < t; });
  if (at != keys.end() && at->seconds == key.seconds)
    *at = key;
  else
    at = keys.insert(at, key);
  node->scene->Touch();
  SetStatus(status, MS::kSuccess);
  return static_cast<unsigned int>(at - keys.begin());
}

bool MAnimUtil::isAnimated(const MObject& node, bool checkParent, MStatus* status)
{
  MPlugArray plugs;
  return findAnimatedPlugs(node, plugs, checkParent, status);
}

bool MAnimUtil::isAnimated(const MDagPath& path, bool checkParent, MStatus* status)
{
  MPlugArray plugs;
  return findAnimatedPlugs(path, plugs, checkParent, status);
}

bool MAnimUtil::isAnimated(const MPlug& plug, bool, MStatus* status)
{
  SetStatus(status, plug.isNull() ? MS::kInvalidParameter : MS::kSuccess);
  return CurveDriving(plug) != nullptr;
}

bool MAnimUtil::findAnimatedPlugs(const MObject& node, MPlugArray& animatedPlugs, bool, MStatus* status)
{
  animatedPlugs.clear();
  standin::Node* n = node.standinNode();
  SetStatus(status, n ? MS::kSuccess : MS::kInvalidParameter);
  if (n)
    AnimatedPlugsOf(n, animatedPlugs);
  return animatedPlugs.length() > 0;
}

bool MAnimUtil::findAnimatedPlugs(const MDagPath& path, MPlugArray& animatedPlugs, bool checkParent, MStatus* status)
{
  animatedPlugs.clear();
  if (!path.isValid()) {
    SetStatus(status, MS::kInvalidParameter);
    return false;
  }
  SetStatus(status, MS::kSuccess);
  const auto& nodes = path.standinNodes();
  for (size_t i = checkParent ? 0 : (nodes.empty() ? 0 : nodes.size() - 1); i < nodes.size(); ++i)
    AnimatedPlugsOf(nodes[i], animatedPlugs);
  return animatedPlugs.length() > 0;
}

bool MAnimUtil::findAnimatedPlugs(const MSelectionList& list, MPlugArray& animatedPlugs, bool checkParent,
                                  MStatus* status)
{
  animatedPlugs.clear();
  SetStatus(status, MS::kSuccess);
  for (unsigned int i = 0; i < list.length(); ++i) {
    MPlugArray found;
    MDagPath path;
    MObject node;
    if (list.getDagPath(i, path))
      findAnimatedPlugs(path, found, checkParent);
    else if (list.getDependNode(i, node))
      findAnimatedPlugs(node, found, checkParent);
    for (unsigned int k = 0; k < found.length(); ++k)
      animatedPlugs.append(found[k]);
  }
  return animatedPlugs.length() > 0;
}

bool MAnimUtil::findAnimation(const MPlug& plug, MObjectArray& animation, MStatus* status)
{
  animation.clear();
  SetStatus(status, plug.isNull() ? MS::kInvalidParameter : MS::kSuccess);
  if (standin::Node* curve = CurveDriving(plug))
    animation.append(MObject(curve));
  return animation.length() > 0;
}

MTime MAnimControl::minTime()
{
  MTime t(standin::CurrentScene().minSeconds, MTime::kSeconds);
  t.setUnit(MTime::uiUnit());
  return t;
}

MTime MAnimControl::maxTime()
{
  MTime t(standin::CurrentScene().maxSeconds, MTime::kSeconds);
  t.setUnit(MTime::uiUnit());
  return t;
}

MStatus MAnimControl::setMinTime(const MTime& time)
{
  standin::CurrentScene().minSeconds = time.as(MTime::kSeconds);
  return MS::kSuccess;
}

MStatus MAnimControl::setMaxTime(const MTime& time)
{
  standin::CurrentScene().maxSeconds = time.as(MTime::kSeconds);
  return MS::kSuccess;
}

MStatus MAnimControl::setMinMaxTime(const MTime& minTime, const MTime& maxTime)
{
  if (maxTime < minTime)
    return MS::kInvalidParameter;
  setMinTime(minTime);
  return setMaxTime(maxTime);
}

MTime MAnimControl::currentTime()
{
  MTime t(standin::CurrentScene().currentSeconds, MTime::kSeconds);
  t.setUnit(MTime::uiUnit());
  return t;
}

MStatus MAnimControl::setCurrentTime(const MTime& time)
{
  standin::CurrentScene().SetTime(time.as(MTime::kSeconds));
  return MS::kSuccess;
}
