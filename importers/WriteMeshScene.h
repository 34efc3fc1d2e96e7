#pragma once
// One polygon mesh written as a scene file that any viewer opens (glTF 2.0 binary, FBX, OBJ or
// COLLADA, chosen by the file's extension), so that an asset brought back from the engine's
// formats can be looked at outside Maya.

#include <string>
#include <vector>

// The extensions taken, for messages.
inline constexpr const char* MeshSceneExtensions = ".glb, .fbx, .obj, .dae";

// The mesh is in Maya's axes and centimetres: three floats per point, a corner count per polygon
// and the point numbers of every polygon's corners in order. path is a system path. False with the reason in error for another extension, a mesh whose
// arrays do not fit together, or a file that cannot be written. Files whose unit is the metre
// (glTF, COLLADA) get the points in metres, so that our own importers read back centimetres.
bool WriteMeshScene(const std::string& path, const std::vector<float>& points, const std::vector<int>& counts,
                    const std::vector<int>& connects, std::string& error);
