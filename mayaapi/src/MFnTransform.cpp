#include <maya/MFnIkJoint.h>
#include <maya/MFnTransform.h>

#include "NumberCast.h"
#include "SceneGraph.h"

namespace {

void SetStatus(MStatus* status, MS::MStatusCode code)
{
  if (status)
    *status = code;
}

MVector ReadTriple(const MFnDependencyNode& fn, const char* name)
{
  MPlug plug = fn.findPlug(name);
  if (plug.numChildren() != 3)
    return MVector();
  return MVector(plug.child(0).asDouble(), plug.child(1).asDouble(), plug.child(2).asDouble());
}

MStatus WriteTriple(const MFnDependencyNode& fn, const char* name, const MVector& v)
{
  MPlug plug = fn.findPlug(name);
  if (plug.numChildren() != 3)
    return MS::kFailure;
  plug.child(0).setValue(v.x);
  plug.child(1).setValue(v.y);
  plug.child(2).setValue(v.z);
  return MS::kSuccess;
}

MObject CreateUnder(MFnDagNode& fn, const char* typeName, const MObject& parent, MStatus* status)
{
  return fn.MFnDagNode::create(typeName, parent, status);
}

}

MFnTransform::MFnTransform(const MObject& object, MStatus* status)
{
  SetStatus(status, setObject(object).statusCode());
}

MFnTransform::MFnTransform(const MDagPath& path, MStatus* status)
{
  SetStatus(status, setObject(path).statusCode());
}

MObject MFnTransform::create(const MObject& parent, MStatus* status)
{
  return CreateUnder(*this, "transform", parent, status);
}

MVector MFnTransform::getTranslation(MSpace::Space space, MStatus* status) const
{
  SetStatus(status, m_object.isNull() ? MS::kFailure : MS::kSuccess);
  if (space == MSpace::kWorld) {
    const MMatrix m = m_path.inclusiveMatrix();
    return MVector(m(3, 0), m(3, 1), m(3, 2));
  }
  return ReadTriple(*this, "translate");
}

MStatus MFnTransform::setTranslation(const MVector& translation, MSpace::Space)
{
  return WriteTriple(*this, "translate", translation);
}

MStatus MFnTransform::getRotation(MEulerRotation& rotation) const
{
  if (m_object.isNull())
    return MS::kFailure;
  rotation = MEulerRotation(ReadTriple(*this, "rotate"),
                            static_cast<MEulerRotation::RotationOrder>(standin::RotateOrderIndex(findPlug("rotateOrder").asDouble())));
  return MS::kSuccess;
}

MStatus MFnTransform::getRotation(double rotation[3], MTransformationMatrix::RotationOrder& order) const
{
  MEulerRotation euler;
  const MStatus status = getRotation(euler);
  if (!status)
    return status;
  rotation[0] = euler.x;
  rotation[1] = euler.y;
  rotation[2] = euler.z;
  order = static_cast<MTransformationMatrix::RotationOrder>(euler.order + 1);
  return MS::kSuccess;
}

MStatus MFnTransform::setRotation(const MEulerRotation& rotation)
{
  findPlug("rotateOrder").setValue(static_cast<int>(rotation.order));
  return WriteTriple(*this, "rotate", rotation.asVector());
}

MTransformationMatrix::RotationOrder MFnTransform::rotationOrder(MStatus* status) const
{
  SetStatus(status, m_object.isNull() ? MS::kFailure : MS::kSuccess);
  return static_cast<MTransformationMatrix::RotationOrder>(standin::RotateOrderIndex(findPlug("rotateOrder").asDouble()) + 1);
}

MStatus MFnTransform::getScale(double scale[3]) const
{
  const MVector s = ReadTriple(*this, "scale");
  return s.get(scale);
}

MStatus MFnTransform::setScale(const double scale[3]) { return WriteTriple(*this, "scale", MVector(scale)); }

MFnIkJoint::MFnIkJoint(const MObject& object, MStatus* status)
{
  SetStatus(status, setObject(object).statusCode());
}

MFnIkJoint::MFnIkJoint(const MDagPath& path, MStatus* status)
{
  SetStatus(status, setObject(path).statusCode());
}

MObject MFnIkJoint::create(const MObject& parent, MStatus* status)
{
  return CreateUnder(*this, "joint", parent, status);
}

MStatus MFnIkJoint::getOrientation(MEulerRotation& orientation) const
{
  if (m_object.isNull())
    return MS::kFailure;
  orientation = MEulerRotation(ReadTriple(*this, "jointOrient"));
  return MS::kSuccess;
}

MStatus MFnIkJoint::setOrientation(const MEulerRotation& orientation)
{
  return WriteTriple(*this, "jointOrient", orientation.asVector());
}
