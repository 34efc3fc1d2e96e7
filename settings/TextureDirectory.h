#pragma once
// Where an export puts its textures: a sub-folder of the project, or of the target's folder when
// the project is not used or there is none. The sub-folder must stay inside that folder.

#include <string>
#include <string_view>

struct VExportOptions;

inline constexpr std::string_view kDefaultTextureSubfolder = "Textures\\";
inline constexpr std::string_view kInvalidTextureDirectory = "Invalid";
inline constexpr std::string_view kInvalidTextureSubdirMessage =
    "The texture subdirectory is not allowed to be an absolute path or contain '..\\'.\r\n"
    "Please specify just a relative subdirectory like 'textures'";

// False for a sub-folder that is absolute (a network path, starting with two backslashes, or one
// with a drive colon) or starts with ".."; an empty one is valid. A single leading backslash
// only repeats the separator after the base folder, and a ".." further in stays the user's
// choice.
bool IsValidTextureSubfolder(std::string_view subfolder);

// From the options TextureSubdir and TextureUseProjDir, as an export uses them: an empty or
// invalid sub-folder gives "Textures\". Ends with a backslash; directories are system paths with
// their closing backslash, the project directory empty when there is no project.
std::string TextureDirectoryFromOptions(const VExportOptions& options, std::string_view projectDirectory,
                                        std::string_view targetDirectory);

// What the options dialog shows while the sub-folder is edited: an empty sub-folder gives the
// project or target directory itself, an invalid one kInvalidTextureDirectory.
std::string TextureDirectoryForDisplay(std::string_view subfolder, bool useProjectDirectory,
                                       std::string_view projectDirectory, std::string_view targetDirectory);

// The displayed text cannot become the texture directory; the dialog then shows
// kInvalidTextureSubdirMessage.
bool IsInvalidTextureDirectory(std::string_view displayed);
