#pragma once
// What a picture of an exported asset needs, read back from the file through our own readers:
// the triangles with their normals and texture coordinates, and each material with its colour and,
// where the copied texture is found and can be decoded, its picture.

#include "preview/DecodeImage.h"

#include <array>
#include <string>
#include <vector>

struct PreviewMaterial {
    std::string Name;
    // As the asset names it (a system path relative to the asset's folder or project).
    std::string TextureName;
    // Where it was found (native), empty when it was not; Texture is empty when it was not decoded.
    std::string TextureFile;
    RgbImage Texture;
    std::array<uint8_t, 3> Colour {};
};

struct PreviewCorner {
    std::array<float, 3> Position {};
    std::array<float, 3> Normal {};
    std::array<float, 2> UV {};
};

struct PreviewTriangle {
    std::array<PreviewCorner, 3> Corners;
    int Material = -1;
};

struct PreviewMesh {
    std::vector<PreviewTriangle> Triangles;
    std::vector<PreviewMaterial> Materials;
    int VertexCount = 0;
    int SubmeshCount = 0;
};

// path: a .qmesh or a .model (a system path). False with the reader's reason in error.
bool LoadPreviewMesh(const std::string& path, PreviewMesh& mesh, std::string& error);
