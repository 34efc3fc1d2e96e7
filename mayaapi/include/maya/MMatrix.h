#pragma once

#include <maya/MStatus.h>

// Row-vector convention as in Maya: a point is transformed as p * M, translation in row 3, and A * B applies A first.
class MMatrix {
public:
  MMatrix();
  MMatrix(const double m[4][4]);

  MStatus get(double m[4][4]) const;
  double operator()(unsigned int row, unsigned int col) const { return matrix[row][col]; }
  double& operator()(unsigned int row, unsigned int col) { return matrix[row][col]; }
  const double* operator[](unsigned int row) const { return matrix[row]; }
  double* operator[](unsigned int row) { return matrix[row]; }
  MMatrix operator*(const MMatrix& right) const;
  MMatrix& operator*=(const MMatrix& right) { return *this = *this * right; }
  MMatrix operator+(const MMatrix& right) const;
  MMatrix operator*(double s) const;
  bool operator==(const MMatrix& other) const;
  bool operator!=(const MMatrix& other) const { return !(*this == other); }

  MMatrix transpose() const;
  MMatrix inverse() const;
  MMatrix homogenize() const;
  MMatrix& setToIdentity();
  double det3x3() const;
  double det4x4() const;
  bool isEquivalent(const MMatrix& other, double tolerance = 1.0e-10) const;
  bool isSingular() const;

  static const MMatrix identity;

  double matrix[4][4];
};
