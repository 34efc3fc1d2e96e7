#pragma once
// From a polygon's shading set to the material its polygons carry.

#include <maya/MDagPath.h>
#include <maya/MObject.h>

#include <cstdint>

struct HarvestState;
struct VMMaterial;
class VMMeshBase;

// The node of the one plug connected to the set's "surfaceShader"; null (traced) otherwise.
MObject FindSetShader(const MObject& shadingSet);

// The node's "doubleSided" above 0; false (traced) when the node has no such plug.
bool MeshDoubleSidedFlag(const MDagPath& meshPath);

// The material made for (shader, doubleSided) in this export, made on first use into
// container. Null for the missing shader and for a shader whose material could not be made.
VMMaterial* LookupMaterial(HarvestState& state, VMMeshBase& container, const MObject& shader, uint8_t doubleSided);
