#pragma once
// The side files of an asset, in its settings folder (the target path with "_data" appended):
// materials.xml when a material group bit (0x07F) is set, resources.xml with bit 0x200, and for
// static geometry visibility.xml with bit 0x100. Without any of those bits nothing is written
// and no folder is made.

#include "formats/SaveParams.h"

#include <cstdint>
#include <string>
#include <string_view>

class VMModel;
class VMWorld;

std::string SettingsFolderOf(std::string_view targetPath);

// Each answers false with the last-error text set when a file or the folder cannot be written.
bool SaveSideFiles(const VMWorld& world, std::string_view targetPath, const VSaveParams& params);
bool SaveSideFiles(const VMModel& model, std::string_view targetPath, uint32_t flags);
