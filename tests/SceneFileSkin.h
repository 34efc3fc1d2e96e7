#pragma once
// Whether a scene file declares a skin, by its format's own marker, read apart from any importer: what the
// tests hold the import and the export of the shared scenes to.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

inline bool SceneFileDeclaresSkin(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string contents((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const std::string extension = path.extension().string();
    if (extension == ".gltf" || extension == ".glb")
        return contents.find("\"skins\"") != std::string::npos;
    if (extension == ".fbx")
        return contents.find("Cluster") != std::string::npos;
    if (extension == ".dae")
        return contents.find("<skin") != std::string::npos;
    if (extension == ".ma")
        return contents.find("createNode skinCluster") != std::string::npos;
    return false;
}
