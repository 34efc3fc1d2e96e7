#include <maya/MEulerRotation.h>
#include <maya/MQuaternion.h>

#include <algorithm>
#include <cmath>

const MQuaternion MQuaternion::identity;
const MEulerRotation MEulerRotation::identity;

namespace {

// The axes of each order, the first applied first.
constexpr int kSequence[6][3] = {{0, 1, 2}, {1, 2, 0}, {2, 0, 1}, {0, 2, 1}, {1, 0, 2}, {2, 1, 0}};

const int* AxesOf(MEulerRotation::RotationOrder order)
{
  return kSequence[order >= MEulerRotation::kXYZ && order <= MEulerRotation::kZYX ? order : MEulerRotation::kXYZ];
}

// Row vectors, as Maya's matrices: a positive angle turns the next axis towards the one after it.
MMatrix AxisMatrix(int axis, double angle)
{
  MMatrix m;
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  const int a = (axis + 1) % 3;
  const int b = (axis + 2) % 3;
  m(a, a) = c;
  m(a, b) = s;
  m(b, a) = -s;
  m(b, b) = c;
  return m;
}

MQuaternion AxisQuaternion(int axis, double angle)
{
  MQuaternion q(0.0, 0.0, 0.0, std::cos(angle / 2.0));
  q[static_cast<unsigned int>(axis)] = std::sin(angle / 2.0);
  return q;
}

}

MQuaternion::MQuaternion(const MVector& a, const MVector& b) : MQuaternion(a, b, 1.0) {}

MQuaternion::MQuaternion(const MVector& a, const MVector& b, double angleFactor)
{
  const double lengths = a.length() * b.length();
  if (lengths == 0.0)
    return;
  const double angle = std::acos(std::clamp((a * b) / lengths, -1.0, 1.0));
  MVector axis = a ^ b;
  if (axis.length() <= 1.0e-12 * lengths) {
    if (angle < 1.0)
      return;
    // Opposite directions: any axis across them will do.
    axis = a ^ (std::fabs(a.x) < std::fabs(a.y) ? MVector::xAxis : MVector::yAxis);
  }
  setAxisAngle(axis, angle * angleFactor);
}

MQuaternion::MQuaternion(double angle, const MVector& axis) { setAxisAngle(axis, angle); }

// The trace method: w from the trace when it is positive, else the component of the largest diagonal entry first,
// which keeps the square root away from zero.
MQuaternion& MQuaternion::operator=(const MMatrix& m)
{
  const double trace = m(0, 0) + m(1, 1) + m(2, 2);
  if (trace > 0.0) {
    const double s = 0.5 / std::sqrt(trace + 1.0);
    w = 0.25 / s;
    x = (m(1, 2) - m(2, 1)) * s;
    y = (m(2, 0) - m(0, 2)) * s;
    z = (m(0, 1) - m(1, 0)) * s;
  } else if (m(0, 0) >= m(1, 1) && m(0, 0) >= m(2, 2)) {
    const double s = 2.0 * std::sqrt(std::max(1.0 + m(0, 0) - m(1, 1) - m(2, 2), 0.0));
    x = 0.25 * s;
    y = s > 0.0 ? (m(0, 1) + m(1, 0)) / s : 0.0;
    z = s > 0.0 ? (m(0, 2) + m(2, 0)) / s : 0.0;
    w = s > 0.0 ? (m(1, 2) - m(2, 1)) / s : 1.0;
  } else if (m(1, 1) >= m(2, 2)) {
    const double s = 2.0 * std::sqrt(std::max(1.0 + m(1, 1) - m(0, 0) - m(2, 2), 0.0));
    x = s > 0.0 ? (m(0, 1) + m(1, 0)) / s : 0.0;
    y = 0.25 * s;
    z = s > 0.0 ? (m(1, 2) + m(2, 1)) / s : 0.0;
    w = s > 0.0 ? (m(2, 0) - m(0, 2)) / s : 1.0;
  } else {
    const double s = 2.0 * std::sqrt(std::max(1.0 + m(2, 2) - m(0, 0) - m(1, 1), 0.0));
    x = s > 0.0 ? (m(0, 2) + m(2, 0)) / s : 0.0;
    y = s > 0.0 ? (m(1, 2) + m(2, 1)) / s : 0.0;
    z = 0.25 * s;
    w = s > 0.0 ? (m(0, 1) - m(1, 0)) / s : 1.0;
  }
  return normalizeIt();
}

MQuaternion& MQuaternion::operator=(const MEulerRotation& rotation) { return *this = rotation.asQuaternion(); }

MMatrix MQuaternion::asMatrix() const
{
  MMatrix m;
  m(0, 0) = 1.0 - 2.0 * (y * y + z * z);
  m(0, 1) = 2.0 * (x * y + z * w);
  m(0, 2) = 2.0 * (x * z - y * w);
  m(1, 0) = 2.0 * (x * y - z * w);
  m(1, 1) = 1.0 - 2.0 * (x * x + z * z);
  m(1, 2) = 2.0 * (y * z + x * w);
  m(2, 0) = 2.0 * (x * z + y * w);
  m(2, 1) = 2.0 * (y * z - x * w);
  m(2, 2) = 1.0 - 2.0 * (x * x + y * y);
  return m;
}

MEulerRotation MQuaternion::asEulerRotation() const { return MEulerRotation::decompose(asMatrix(), MEulerRotation::kXYZ); }

MQuaternion& MQuaternion::setAxisAngle(const MVector& axis, double theta)
{
  const MVector unit = axis.normal();
  const double s = std::sin(theta / 2.0);
  x = unit.x * s;
  y = unit.y * s;
  z = unit.z * s;
  w = std::cos(theta / 2.0);
  return *this;
}

bool MQuaternion::getAxisAngle(MVector& axis, double& theta) const
{
  const MQuaternion unit = normal();
  if (unit.x == 0.0 && unit.y == 0.0 && unit.z == 0.0 && unit.w == 0.0)
    return false;
  theta = 2.0 * std::acos(std::clamp(unit.w, -1.0, 1.0));
  const MVector v(unit.x, unit.y, unit.z);
  axis = v.length() > 0.0 ? v.normal() : MVector::zAxis;
  return true;
}

MQuaternion MQuaternion::normal() const
{
  const double length = std::sqrt(x * x + y * y + z * z + w * w);
  return length > 0.0 ? MQuaternion(x / length, y / length, z / length, w / length) : *this;
}

MQuaternion& MQuaternion::normalizeIt() { return *this = normal(); }

MQuaternion MQuaternion::inverse() const
{
  const double squared = x * x + y * y + z * z + w * w;
  return squared > 0.0 ? (1.0 / squared) * conjugate() : *this;
}

MStatus MQuaternion::get(double dest[4]) const
{
  dest[0] = x;
  dest[1] = y;
  dest[2] = z;
  dest[3] = w;
  return MS::kSuccess;
}

// This rotation first, then other's: the Hamilton product other x this.
MQuaternion MQuaternion::operator*(const MQuaternion& o) const
{
  return {o.w * x + w * o.x + (o.y * z - o.z * y), o.w * y + w * o.y + (o.z * x - o.x * z),
          o.w * z + w * o.z + (o.x * y - o.y * x), o.w * w - (o.x * x + o.y * y + o.z * z)};
}

bool MQuaternion::isEquivalent(const MQuaternion& o, double tolerance) const
{
  return std::fabs(x - o.x) <= tolerance && std::fabs(y - o.y) <= tolerance && std::fabs(z - o.z) <= tolerance &&
         std::fabs(w - o.w) <= tolerance;
}

MEulerRotation& MEulerRotation::operator=(const MQuaternion& q) { return *this = decompose(q.asMatrix(), order); }

MEulerRotation& MEulerRotation::operator=(const MMatrix& m) { return *this = decompose(m, order); }

MEulerRotation& MEulerRotation::setValue(double xx, double yy, double zz, RotationOrder ord)
{
  x = xx;
  y = yy;
  z = zz;
  order = ord;
  return *this;
}

MMatrix MEulerRotation::asMatrix() const
{
  const double angles[3] = {x, y, z};
  const int* axes = AxesOf(order);
  return AxisMatrix(axes[0], angles[axes[0]]) * AxisMatrix(axes[1], angles[axes[1]]) *
         AxisMatrix(axes[2], angles[axes[2]]);
}

MQuaternion MEulerRotation::asQuaternion() const
{
  const double angles[3] = {x, y, z};
  const int* axes = AxesOf(order);
  return AxisQuaternion(axes[0], angles[axes[0]]) * AxisQuaternion(axes[1], angles[axes[1]]) *
         AxisQuaternion(axes[2], angles[axes[2]]);
}

MEulerRotation MEulerRotation::inverse() const
{
  static constexpr RotationOrder kReversed[6] = {kZYX, kXZY, kYXZ, kYZX, kZXY, kXYZ};
  return {-x, -y, -z, kReversed[order >= kXYZ && order <= kZYX ? order : kXYZ]};
}

// The matrix is R(first) R(middle) R(last) in row vectors; its transpose c is the same turns in column vectors,
// R(last) R(middle) R(first), whose angles come out of the usual Tait-Bryan formulas, with the signs of an odd order
// flipped.
MEulerRotation MEulerRotation::decompose(const MMatrix& m, RotationOrder ord)
{
  const int* axes = AxesOf(ord);
  const int i = axes[0];
  const int j = axes[1];
  const int k = axes[2];
  const double e = (j - i + 3) % 3 == 1 ? 1.0 : -1.0;
  auto c = [&m](int row, int column) { return m(static_cast<unsigned int>(column), static_cast<unsigned int>(row)); };
  double angles[3];
  const double sine = std::clamp(-e * c(k, i), -1.0, 1.0);
  angles[j] = std::asin(sine);
  if (std::fabs(sine) < 1.0 - 1.0e-12) {
    angles[i] = std::atan2(e * c(k, j), c(k, k));
    angles[k] = std::atan2(e * c(j, i), c(i, i));
  } else {
    angles[i] = std::atan2(-e * c(j, k), c(j, j));
    angles[k] = 0.0;
  }
  return {angles[0], angles[1], angles[2], ord};
}

bool MEulerRotation::isEquivalent(const MEulerRotation& o, double tolerance) const
{
  return order == o.order && std::fabs(x - o.x) <= tolerance && std::fabs(y - o.y) <= tolerance &&
         std::fabs(z - o.z) <= tolerance;
}

bool MEulerRotation::isZero(double tolerance) const
{
  return std::fabs(x) <= tolerance && std::fabs(y) <= tolerance && std::fabs(z) <= tolerance;
}
