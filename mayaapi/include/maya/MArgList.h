#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>

#include <vector>

class MArgList {
public:
  MArgList() = default;

  unsigned int length(MStatus* status = nullptr) const;
  MString asString(unsigned int index, MStatus* status = nullptr) const;
  int asInt(unsigned int index, MStatus* status = nullptr) const;
  double asDouble(unsigned int index, MStatus* status = nullptr) const;
  bool asBool(unsigned int index, MStatus* status = nullptr) const;
  MStatus addArg(const MString& arg);
  MStatus addArg(int arg);
  MStatus addArg(double arg);

private:
  std::vector<MString> m_args;
};
