#pragma once

#include <maya/MArgList.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

class MPxCommand {
public:
  MPxCommand() = default;
  virtual ~MPxCommand() = default;

  virtual MStatus doIt(const MArgList& args);
  virtual MStatus undoIt() { return MS::kFailure; }
  virtual MStatus redoIt() { return MS::kFailure; }
  virtual bool isUndoable() const { return false; }
  virtual bool hasSyntax() const { return true; }

  static void displayInfo(const MString& text);
  static void displayWarning(const MString& text);
  static void displayError(const MString& text);
  static void clearResult();
  static void setResult(int value);
  static void setResult(double value);
  static void setResult(bool value);
  static void setResult(const MString& value);
};
