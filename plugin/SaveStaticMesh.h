#pragma once
// The save steps the static mesh and the prefab format share: the stored settings, and the
// static mesh with its side files and collision mesh.

#include "formats/SaveParams.h"

#include <string>

class MeshNodeTable;
class VMWorld;
struct VExportOptions;

// Writes the settings text into the target's data folder ("Settings saved: %s.").
void StoreSettings(const std::string& targetPath, const std::string& settingsText);

// The save flags of a static export: the material groups the options ask for, the visibility
// and resource files, but nothing when no data folder is wanted; progress lines go to the log
// window.
VSaveParams StaticSaveParams(const VExportOptions& options);

// The static mesh file and, unless ColMesh is 0, its collision mesh beside it: the triangles, or
// for ColMesh 2 the convex hull of each node's part (nodes names them). True when every file
// was written.
bool SaveStaticMesh(VMWorld& world, const std::string& meshPath, const VSaveParams& params,
                    const VExportOptions& options, const MeshNodeTable& nodes);
