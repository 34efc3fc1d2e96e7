#include <maya/MMatrix.h>

#include <cmath>
#include <utility>

const MMatrix MMatrix::identity;

MMatrix::MMatrix()
{
  setToIdentity();
}

MMatrix::MMatrix(const double m[4][4])
{
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      matrix[r][c] = m[r][c];
}

MStatus MMatrix::get(double m[4][4]) const
{
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      m[r][c] = matrix[r][c];
  return MS::kSuccess;
}

MMatrix& MMatrix::setToIdentity()
{
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      matrix[r][c] = r == c ? 1.0 : 0.0;
  return *this;
}

MMatrix MMatrix::operator*(const MMatrix& right) const
{
  MMatrix out;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) {
      double sum = 0.0;
      for (int k = 0; k < 4; ++k)
        sum += matrix[r][k] * right.matrix[k][c];
      out.matrix[r][c] = sum;
    }
  return out;
}

MMatrix MMatrix::operator+(const MMatrix& right) const
{
  MMatrix out;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      out.matrix[r][c] = matrix[r][c] + right.matrix[r][c];
  return out;
}

MMatrix MMatrix::operator*(double s) const
{
  MMatrix out;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      out.matrix[r][c] = matrix[r][c] * s;
  return out;
}

bool MMatrix::operator==(const MMatrix& other) const
{
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      if (matrix[r][c] != other.matrix[r][c])
        return false;
  return true;
}

MMatrix MMatrix::transpose() const
{
  MMatrix out;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      out.matrix[r][c] = matrix[c][r];
  return out;
}

// Gauss-Jordan with partial pivoting; a singular matrix gives the identity, as Maya's inverse does.
MMatrix MMatrix::inverse() const
{
  double a[4][8];
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) {
      a[r][c] = matrix[r][c];
      a[r][c + 4] = r == c ? 1.0 : 0.0;
    }
  for (int col = 0; col < 4; ++col) {
    int pivot = col;
    for (int r = col + 1; r < 4; ++r)
      if (std::fabs(a[r][col]) > std::fabs(a[pivot][col]))
        pivot = r;
    if (std::fabs(a[pivot][col]) < 1e-300)
      return MMatrix();
    if (pivot != col)
      for (int c = 0; c < 8; ++c)
        std::swap(a[pivot][c], a[col][c]);
    const double inv = 1.0 / a[col][col];
    for (int c = 0; c < 8; ++c)
      a[col][c] *= inv;
    for (int r = 0; r < 4; ++r) {
      if (r == col)
        continue;
      const double f = a[r][col];
      if (f != 0.0)
        for (int c = 0; c < 8; ++c)
          a[r][c] -= f * a[col][c];
    }
  }
  MMatrix out;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      out.matrix[r][c] = a[r][c + 4];
  return out;
}

MMatrix MMatrix::homogenize() const
{
  MMatrix out = *this;
  for (int r = 0; r < 4; ++r)
    if (out.matrix[r][3] != 0.0 && out.matrix[r][3] != 1.0) {
      const double w = out.matrix[r][3];
      for (int c = 0; c < 4; ++c)
        out.matrix[r][c] /= w;
    }
  return out;
}

double MMatrix::det3x3() const
{
  const auto& m = matrix;
  return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) - m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
         m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

double MMatrix::det4x4() const
{
  double det = 0.0;
  for (int c = 0; c < 4; ++c) {
    double minor[3][3];
    for (int r = 1; r < 4; ++r) {
      int k = 0;
      for (int cc = 0; cc < 4; ++cc)
        if (cc != c)
          minor[r - 1][k++] = matrix[r][cc];
    }
    const double m3 = minor[0][0] * (minor[1][1] * minor[2][2] - minor[1][2] * minor[2][1]) -
                      minor[0][1] * (minor[1][0] * minor[2][2] - minor[1][2] * minor[2][0]) +
                      minor[0][2] * (minor[1][0] * minor[2][1] - minor[1][1] * minor[2][0]);
    det += (c % 2 == 0 ? 1.0 : -1.0) * matrix[0][c] * m3;
  }
  return det;
}

bool MMatrix::isEquivalent(const MMatrix& other, double tolerance) const
{
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      if (std::fabs(matrix[r][c] - other.matrix[r][c]) > tolerance)
        return false;
  return true;
}

bool MMatrix::isSingular() const { return std::fabs(det4x4()) < 1e-12; }
