#pragma once
// The three symbols Maya looks up in the module.

#include <maya/MObject.h>
#include <maya/MStatus.h>

extern "C" const char* MApiVersion;

MStatus initializePlugin(MObject object);
MStatus uninitializePlugin(MObject object);
