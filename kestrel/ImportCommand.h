#pragma once
// "kestrel import ASSET -o SCENE": reads a static or collision mesh (.qmesh, .qcolmesh), a model
// (.model) or an older world text file (*.V3D) as the static translators' import does, and writes
// the one mesh it makes as a scene file any viewer opens (.glb, .fbx, .obj or .dae, by the output's
// extension).

#include <cstdio>
#include <string>

namespace CLI {
class App;
}

// Native paths, as typed. Returns the process exit code; failures name the file and the reason on err.
int RunImport(const std::string& asset, const std::string& scene, std::FILE* out, std::FILE* err);

void AddImportCommand(CLI::App& app);
