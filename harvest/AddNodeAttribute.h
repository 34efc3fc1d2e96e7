#pragma once
// Creating the plug-in's custom node attributes, for the commands and dialogs that let artists
// set them. The attributes are hidden: they steer the export and clutter no channel box. A
// failure is shown at once ("Error! Could not make %s attribute") and leaves the node without it.

#include <maya/MDagPath.h>
#include <maya/MFnNumericData.h>
#include <maya/MObject.h>
#include <maya/MString.h>

class VMessageBox;

// Long and short name are both name.
bool AddStringAttribute(const MString& name, MObject& node, const MString& defaultText, VMessageBox& messageBox);
bool AddNumericAttribute(MObject& node, const MString& name, MFnNumericData::Type type, double defaultValue,
                         VMessageBox& messageBox);
// Sets the attribute where FindNodeAttribute finds it (the node, else its transform), adding it
// to the node first when neither has it.
bool SetNodeStringAttribute(const MString& name, const MDagPath& path, const MString& text, VMessageBox& messageBox);
