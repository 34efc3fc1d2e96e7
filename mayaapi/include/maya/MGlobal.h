#pragma once

#include <maya/MSelectionList.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTime.h>

class MGlobal {
public:
  enum MMayaState { kBaseUIMode, kInteractive, kBatch, kLibraryApp };
  enum ListAdjustment { kReplaceList, kXORWithList, kAddToList, kRemoveFromList, kAddToHeadOfList };

  static MStatus getActiveSelectionList(MSelectionList& dest, bool orderedSelectionIfAvailable = false);
  static MStatus setActiveSelectionList(const MSelectionList& src, ListAdjustment mode = kReplaceList);
  static MStatus selectByName(const MString& name, ListAdjustment mode = kAddToList);
  static MStatus clearSelectionList();

  static MStatus viewFrame(const MTime& time);
  static MStatus viewFrame(double frame);

  // Runs one of the MEL commands the exporter issues; any other command fails with kNotImplemented.
  static MStatus executeCommand(const MString& command, bool displayEnabled = false, bool undoEnabled = false);
  static MStatus executeCommand(const MString& command, int& result, bool displayEnabled = false,
                                bool undoEnabled = false);
  static MStatus executeCommand(const MString& command, MString& result, bool displayEnabled = false,
                                bool undoEnabled = false);

  static MString mayaVersion();
  static int apiVersion();
  static MMayaState mayaState(MStatus* status = nullptr);

  static void displayInfo(const MString& text);
  static void displayWarning(const MString& text);
  static void displayError(const MString& text);
};
