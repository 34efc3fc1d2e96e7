#pragma once

#include <maya/MString.h>
#include <maya/MTypes.h>

class MStatus {
public:
  MStatus() = default;
  MStatus(MS::MStatusCode code) : m_code(code) {}
  MStatus(MS::MStatusCode code, const MString& description) : m_code(code), m_description(description) {}

  bool error() const { return m_code != MS::kSuccess; }
  MS::MStatusCode statusCode() const { return m_code; }
  void clear() { m_code = MS::kSuccess; m_description.clear(); }
  MString errorString() const;
  void perror(const MString& prefix) const;
  explicit operator bool() const { return m_code == MS::kSuccess; }
  bool operator==(MS::MStatusCode code) const { return m_code == code; }
  bool operator!=(MS::MStatusCode code) const { return m_code != code; }
  bool operator==(const MStatus& other) const { return m_code == other.m_code; }
  bool operator!=(const MStatus& other) const { return m_code != other.m_code; }

private:
  MS::MStatusCode m_code = MS::kSuccess;
  MString m_description;
};
