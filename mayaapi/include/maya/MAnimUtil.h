#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MObjectArray.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MSelectionList.h>
#include <maya/MStatus.h>

// A plug is animated when an animation curve drives it.
class MAnimUtil {
public:
  static bool isAnimated(const MObject& node, bool checkParent = false, MStatus* status = nullptr);
  static bool isAnimated(const MDagPath& path, bool checkParent = false, MStatus* status = nullptr);
  static bool isAnimated(const MPlug& plug, bool checkParent = false, MStatus* status = nullptr);
  static bool findAnimatedPlugs(const MObject& node, MPlugArray& animatedPlugs, bool checkParent = false,
                                MStatus* status = nullptr);
  static bool findAnimatedPlugs(const MDagPath& path, MPlugArray& animatedPlugs, bool checkParent = false,
                                MStatus* status = nullptr);
  static bool findAnimatedPlugs(const MSelectionList& list, MPlugArray& animatedPlugs, bool checkParent = false,
                                MStatus* status = nullptr);
  static bool findAnimation(const MPlug& plug, MObjectArray& animation, MStatus* status = nullptr);
};
