#pragma once
// The texture files of an export: each source texture is copied into the texture directory or
// located there, and its file name is written relative to the project or to the target's folder.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

class TextureNameTable;
class VReport;

// The generated colour texture of materials without one; it is never copied or located.
inline constexpr std::string_view kColorAtlasTexture = "\\VColors.dds";
inline constexpr std::string_view kTextureProcessingError = "<texture processing error during export>";

// The export's folders (system paths with their closing backslash) and its texture options.
struct TextureResolveContext {
    std::string TextureDirectory;
    // Empty when the target lies in no project.
    std::string ProjectDirectory;
    std::string BaseDirectory;
    // 0 copy the texture into the texture directory, 1 locate it there.
    int32_t TextureBehaviour = 0;
    bool ProjRelativeFilenames = false;
};

// A backslash followed by path relative to the project when ProjRelativeFilenames is on and
// there is a project, else path relative to the base directory.
std::string TextureOutputName(std::string_view path, const TextureResolveContext& context);

// The name the output files use for the source texture; nothing for an empty source. An animated
// texture ("<source>.texanim" beside it) takes the source's place. A source met before in this
// export answers its earlier name without touching any file. Copy failures (issue 5) and textures
// not found (issue 20) are raised on report; the name is answered all the same. Names that cannot
// be made are kTextureProcessingError.
std::optional<std::string> ResolveTexture(std::string_view source, const TextureResolveContext& context,
                                          TextureNameTable& names, VReport& report);
