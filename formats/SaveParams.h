#pragma once
// What the export session hands the writers of the static mesh, collision mesh and side files,
// filled once from the export options.

#include <cstdint>
#include <functional>
#include <string>

class VChunkStreamProvider;
class VMWorld;

// Bits of the save flags word.
enum VSaveFlag : uint32_t {
    SaveFlagTextures = 0x001,
    SaveFlagShader = 0x002,
    SaveFlagTransparency = 0x004,
    SaveFlagDoubleSided = 0x008,
    SaveFlagSpecular = 0x010,
    SaveFlagParallax = 0x020,
    SaveFlagLightmap = 0x040,
    SaveFlagVisibility = 0x100,
    SaveFlagResources = 0x200,
    SaveFlagPosedModel = 0x400,

    SaveFlagMaterialGroups = 0x07F,
    SaveFlagSideFiles = 0x27F,
};

struct VSaveParams {
    uint32_t Flags = 0;
    // Where chunk files go; null writes files on disk.
    VChunkStreamProvider* Streams = nullptr;
    // Receives the console lines of the submesh split; null prints them to standard output.
    std::function<void(const std::string&)> Console;
    // Writes visibility.xml into the settings folder when Flags has SaveFlagVisibility; null
    // leaves it out. Answers false on failure, having set the last-error text.
    std::function<bool(const VMWorld& world, const std::string& settingsFolder)> SaveVisibility;
};
