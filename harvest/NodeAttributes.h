#pragma once
// Reading the plug-in's custom node attributes. A shape inherits what its transform carries:
// artists tag the transform they see in the outliner, the exporter meets the shape.

#include <maya/MDagPath.h>
#include <maya/MFnNumericData.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MString.h>

#include <cstdint>
#include <string>

// The plug on the path's own node, else on the node one level up the path.
bool FindNodeAttribute(const MString& name, const MDagPath& path, MPlug& plug);

// Each answers whether the plug was found and leaves value untouched when it was not.
bool GetNodeIntAttribute(const MString& name, const MDagPath& path, int32_t& value);
bool GetNodeShortAttribute(const MString& name, const MDagPath& path, uint16_t& value);
bool GetNodeStringAttribute(const MString& name, const MDagPath& path, std::string& value);
bool GetOwnIntAttribute(const MString& name, const MDagPath& path, int32_t& value);
bool GetOwnStringAttribute(const MString& name, const MDagPath& path, std::string& value);

// "(NULL)", "(NotADepenencyNode)" or "(BadName)" when the name cannot be had.
std::string GetNodeName(const MObject& node);
// "(NULL)" for a null object, "Unknown type" on any other failure.
std::string GetNodeTypeName(const MObject& node);

// Adds a hidden numeric attribute with the default to the node; false when Maya refuses it.
bool AddNumericAttribute(const MObject& node, const MString& name, MFnNumericData::Type type, double defaultValue);
