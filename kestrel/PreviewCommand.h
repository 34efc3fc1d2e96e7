#pragma once
// "kestrel preview ASSET -o PICTURE [--size WxH] [--angle YAW[,PITCH]]": draws a .qmesh or a .model,
// lit, with its copied textures where they can be decoded and its material colours elsewhere, into
// a PNG file.

#include <cstdio>
#include <string>

namespace CLI {
class App;
}

struct PreviewRequest {
    // Native paths, as typed.
    std::string Asset;
    std::string Picture;
    std::string Size = "640x480";
    std::string Angle = "35,25";
};

// Returns the process exit code: 0 when the picture was written, 1 when the asset could not be read
// or the picture written, 2 for a size or angle that cannot be read.
int RunPreview(const PreviewRequest& request, std::FILE* out, std::FILE* err);

void AddPreviewCommand(CLI::App& app);
