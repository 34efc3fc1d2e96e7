#include "kestrel/ImportCommand.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "importers/WriteMeshScene.h"
#include "plugin/ImportMesh.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <memory>
#include <system_error>

namespace {

std::string AbsoluteSystemPath(const std::string& native)
{
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(native, error);
    return FromNativePath(error ? native : absolute.lexically_normal().string());
}

} // namespace

int RunImport(const std::string& asset, const std::string& scene, std::FILE* out, std::FILE* err)
{
    ImportedMesh mesh;
    std::string error;
    if (!LoadImportedMesh(AbsoluteSystemPath(asset), mesh, error)) {
        std::fprintf(err, "kestrel import: cannot import '%s': %s\n", asset.c_str(), error.c_str());
        return 1;
    }
    const std::string target = AbsoluteSystemPath(scene);
    if (!CreateDirectories(DirectoryOf(target), &error) ||
        !WriteMeshScene(target, mesh.Points, mesh.Counts, mesh.Connects, error)) {
        std::fprintf(err, "kestrel import: cannot write '%s': %s\n", scene.c_str(), error.c_str());
        return 1;
    }
    std::fprintf(out, "Imported '%s' (%zu polygons) into '%s'\n", asset.c_str(), mesh.Counts.size(), scene.c_str());
    return 0;
}

void AddImportCommand(CLI::App& app)
{
    auto asset = std::make_shared<std::string>();
    auto scene = std::make_shared<std::string>();
    CLI::App* command = app.add_subcommand("import", "Turn an engine asset (.qmesh, .qcolmesh, .model, .V3D) back into a scene "
                                                     "file (.glb, .fbx, .obj, .dae) that any viewer opens");
    command->add_option("ASSET", *asset, "The asset file")->required();
    command->add_option("-o,--output", *scene, "The scene file to write")->required();
    command->callback([asset, scene] {
        const int code = RunImport(*asset, *scene, stdout, stderr);
        if (code == 0)
            throw CLI::Success();
        throw CLI::RuntimeError(code);
    });
}
