#include <maya/MColor.h>
#include <maya/MEulerRotation.h>
#include <maya/MFloatPoint.h>
#include <maya/MFloatVector.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MVector.h>

#include <cmath>

const MVector MVector::zero(0.0, 0.0, 0.0);
const MVector MVector::one(1.0, 1.0, 1.0);
const MVector MVector::xAxis(1.0, 0.0, 0.0);
const MVector MVector::yAxis(0.0, 1.0, 0.0);
const MVector MVector::zAxis(0.0, 0.0, 1.0);
const MVector MVector::xNegAxis(-1.0, 0.0, 0.0);
const MVector MVector::yNegAxis(0.0, -1.0, 0.0);
const MVector MVector::zNegAxis(0.0, 0.0, -1.0);
const MPoint MPoint::origin(0.0, 0.0, 0.0);

MVector::MVector(const MFloatVector& v) : x(v.x), y(v.y), z(v.z) {}
MVector::MVector(const MPoint& p) : x(p.x), y(p.y), z(p.z) {}

double MVector::length() const { return std::sqrt(x * x + y * y + z * z); }

MVector MVector::normal() const
{
  MVector result = *this;
  result.normalize();
  return result;
}

MStatus MVector::normalize()
{
  const double len = length();
  if (len > 0.0)
    *this = *this / len;
  return MS::kSuccess;
}

double MVector::angle(const MVector& other) const
{
  const double lengths = length() * other.length();
  if (lengths == 0.0)
    return 0.0;
  double c = (*this * other) / lengths;
  c = c > 1.0 ? 1.0 : (c < -1.0 ? -1.0 : c);
  return std::acos(c);
}

// The given matrix is expected to be the inverse of the transform the normal follows, so the vector is
// multiplied by its transpose (its inverse transpose in effect).
MVector MVector::transformAsNormal(const MMatrix& m) const
{
  return {m(0, 0) * x + m(0, 1) * y + m(0, 2) * z, m(1, 0) * x + m(1, 1) * y + m(1, 2) * z,
          m(2, 0) * x + m(2, 1) * y + m(2, 2) * z};
}

MVector MVector::rotateBy(const MEulerRotation& rotation) const { return *this * rotation.asMatrix(); }

MVector MVector::rotateBy(const double rotXYZ[3], MTransformationMatrix::RotationOrder order) const
{
  const int eulerOrder = order > MTransformationMatrix::kInvalid && order < MTransformationMatrix::kLast ? order - 1 : 0;
  return rotateBy(MEulerRotation(rotXYZ[0], rotXYZ[1], rotXYZ[2], static_cast<MEulerRotation::RotationOrder>(eulerOrder)));
}

bool MVector::isEquivalent(const MVector& o, double tolerance) const
{
  return std::fabs(x - o.x) <= tolerance && std::fabs(y - o.y) <= tolerance && std::fabs(z - o.z) <= tolerance;
}

MVector operator*(const MVector& v, const MMatrix& m)
{
  return {v.x * m(0, 0) + v.y * m(1, 0) + v.z * m(2, 0), v.x * m(0, 1) + v.y * m(1, 1) + v.z * m(2, 1),
          v.x * m(0, 2) + v.y * m(1, 2) + v.z * m(2, 2)};
}

MFloatVector::MFloatVector(const MVector& v)
    : x(static_cast<float>(v.x)), y(static_cast<float>(v.y)), z(static_cast<float>(v.z))
{
}

float MFloatVector::length() const { return std::sqrt(x * x + y * y + z * z); }

MFloatVector MFloatVector::normal() const
{
  MFloatVector result = *this;
  result.normalize();
  return result;
}

MStatus MFloatVector::normalize()
{
  const float len = length();
  if (len > 0.0f) {
    x /= len;
    y /= len;
    z /= len;
  }
  return MS::kSuccess;
}

MPoint::MPoint(const MFloatPoint& p) : x(p.x), y(p.y), z(p.z), w(p.w) {}

double MPoint::distanceTo(const MPoint& other) const { return (*this - other).length(); }

MPoint& MPoint::cartesianize()
{
  if (w != 0.0 && w != 1.0) {
    x /= w;
    y /= w;
    z /= w;
    w = 1.0;
  }
  return *this;
}

bool MPoint::isEquivalent(const MPoint& o, double tolerance) const
{
  return std::fabs(x - o.x) <= tolerance && std::fabs(y - o.y) <= tolerance && std::fabs(z - o.z) <= tolerance &&
         std::fabs(w - o.w) <= tolerance;
}

MPoint operator*(const MPoint& p, const MMatrix& m)
{
  MPoint r;
  r.x = p.x * m(0, 0) + p.y * m(1, 0) + p.z * m(2, 0) + p.w * m(3, 0);
  r.y = p.x * m(0, 1) + p.y * m(1, 1) + p.z * m(2, 1) + p.w * m(3, 1);
  r.z = p.x * m(0, 2) + p.y * m(1, 2) + p.z * m(2, 2) + p.w * m(3, 2);
  r.w = p.x * m(0, 3) + p.y * m(1, 3) + p.z * m(2, 3) + p.w * m(3, 3);
  return r;
}

MFloatPoint::MFloatPoint(const MPoint& p)
    : x(static_cast<float>(p.x)), y(static_cast<float>(p.y)), z(static_cast<float>(p.z)), w(static_cast<float>(p.w))
{
}

