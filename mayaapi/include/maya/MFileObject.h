#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>

// A file named the way Maya names it: forward slashes, full name = path + name.
class MFileObject {
public:
  MFileObject() = default;

  MStatus setRawFullName(const MString& fullName);
  MStatus setFullName(const MString& fullName) { return setRawFullName(fullName); }
  MString rawFullName() const { return m_fullName; }
  MString fullName() const { return m_fullName; }
  MString resolvedFullName() const { return m_fullName; }
  MString name() const;
  MString path() const;
  MString rawPath() const { return path(); }
  MString resolvedName() const { return name(); }
  MString resolvedPath() const { return path(); }
  bool exists() const;

private:
  MString m_fullName;
};
