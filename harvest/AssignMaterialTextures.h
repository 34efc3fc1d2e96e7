#pragma once
// The texture files of a harvested material, through the export's texture step: a material
// without colour map becomes a colour material of the colour atlas.

#include <string>

struct HarvestState;
struct VMMaterial;

void AssignMaterialTextures(HarvestState& state, VMMaterial& material, std::string colourMap, std::string opacityMap,
                            std::string bumpMap);
