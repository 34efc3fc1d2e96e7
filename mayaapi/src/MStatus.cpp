#include <maya/MStatus.h>

#include <cstdio>

MString MStatus::errorString() const
{
  if (!m_description.isEmpty())
    return m_description;
  switch (m_code) {
  case MS::kSuccess: return "(kSuccess): No error";
  case MS::kFailure: return "(kFailure): Unexpected Internal Failure";
  case MS::kInsufficientMemory: return "(kInsufficientMemory): Insufficient memory";
  case MS::kInvalidParameter: return "(kInvalidParameter): Object is incompatible with this method";
  case MS::kLicenseFailure: return "(kLicenseFailure): License failure";
  case MS::kUnknownParameter: return "(kUnknownParameter): Unknown parameter";
  case MS::kNotImplemented: return "(kNotImplemented): Not implemented";
  case MS::kNotFound: return "(kNotFound): Object not found";
  case MS::kEndOfFile: return "(kEndOfFile): End of file";
  }
  return "(kFailure): Unexpected Internal Failure";
}

void MStatus::perror(const MString& prefix) const
{
  std::fprintf(stderr, "%s: %s\n", prefix.asChar(), errorString().asChar());
}
