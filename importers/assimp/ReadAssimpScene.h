#pragma once
// Reads FBX, glTF, COLLADA and OBJ files through Assimp into a scene record: Maya's hierarchy, polygons as the
// file has them (never triangulated), materials, skins, animation clips, lights and custom properties.

#include "importers/ImportResult.h"
#include "importers/SceneRecord.h"

#include <cstddef>
#include <string>

// path is a system path (backslashes). False with result.Error naming the file and Assimp's reason.
bool ReadAssimpFile(const std::string& path, const ImportOptions& options, SceneRecord& record, ImportResult& result);
// For data already in memory; extension ("fbx", "glb", ...) tells Assimp the format. Files the data refers to
// are not read and embedded textures are not written.
bool ReadAssimpMemory(const void* data, size_t size, const std::string& extension, SceneRecord& record,
                      ImportResult& result);
