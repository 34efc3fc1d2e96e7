#pragma once
// A material from a Maya surface shader: colours, specular values, texture files and the
// plug-in's custom shader attributes.

#include <maya/MObject.h>
#include <maya/MString.h>

#include <string>

struct HarvestState;
struct MaterialCacheRecord;
struct VMMaterial;
class VMMeshBase;

// The material for the record's shader and double-sided flag, added to container; null when the
// shader has no "color" plug or the material cannot be made.
VMMaterial* ExportTexture(HarvestState& state, VMMeshBase& container, const MaterialCacheRecord& record);

// The "fileTextureName" of the first file texture upstream of the shader's attribute, with
// backslashes. False when the plug, the walk or a file texture is missing.
bool GetTextureFileName(const MObject& shader, const MString& attribute, std::string& fileName);

struct SpecularValues {
    float Multiplier = 0.0f;
    float Exponent = 0.0f;
    std::string FileName;
};

SpecularValues ReadSpecular(const MObject& shader);
