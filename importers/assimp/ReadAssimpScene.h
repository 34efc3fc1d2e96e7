#pragma once
// Reads FBX, glTF, COLLADA and OBJ files through Assimp into a scene record: Maya's hierarchy, polygons as the
// file has them (never triangulated), materials, skins, animation clips, lights and custom properties.

#include "importers/ImportResult.h"
#include "importers/SceneRecord.h"

#include <cstddef>
#include <string>

// path is a system path (backslashes). False with result.Error naming the file and Assimp's reason. The file is
// read once in a child process first, so that a file Assimp crashes on gives an error instead.
bool ReadAssimpFile(const std::string& path, const ImportOptions& options, SceneRecord& record, ImportResult& result);
// For data already in memory; extension ("fbx", "glb", ...) tells Assimp the format. Files the data refers to
// are not read and embedded textures are not written. Read in this process only: for callers that contain
// crashes themselves, as the fuzzer does by running in libFuzzer's fork mode.
bool ReadAssimpMemory(const void* data, size_t size, const std::string& extension, SceneRecord& record,
                      ImportResult& result);
