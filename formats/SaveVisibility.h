#pragma once
// "visibility.xml": the visibility zones and portals of a static mesh for the engine's editor, a
// prefab shape file of one "VisibilityZoneShape" per vis area of the world, each holding its
// portals as "PortalShape" children. Zones name their submeshes of the static mesh file by
// number, so the file is written after the mesh.

#include <cstdint>
#include <string>

class VMWorld;

// Writes settingsFolder\visibility.xml (making the folder first). A world without vis areas or
// without portals writes none and deletes an old one. Each zone's "DebugColor" comes from a
// generator seeded with colourSeed. Answers false, with the last-error text set, only when the
// folder cannot be made; a file that cannot be written still answers true.
bool SaveVisibility(const VMWorld& world, const std::string& settingsFolder, uint32_t colourSeed);
