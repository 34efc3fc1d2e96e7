#pragma once
// Builds a scene record into the current stand-in scene through the scene-building API, the way Maya holds an
// imported file: transforms and joints, mesh shapes (instanced where the file shares them), shaders with their
// shading sets and file textures, skin clusters with a bind pose, animation curves and lights.

#include "importers/ImportResult.h"
#include "importers/SceneRecord.h"

// Fills result.Clips with the clips' frame ranges; false with result.Error when the stand-in refuses the scene.
bool BuildScene(const SceneRecord& record, ImportResult& result);
// Maya's shape name for a transform: "pCube1" gives "pCubeShape1".
std::string ShapeNameFor(const std::string& transformName);
