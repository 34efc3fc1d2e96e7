#pragma once
// A picture of a mesh without a display: a small software rasteriser (depth buffer, perspective-
// correct texture coordinates, one directional light and an ambient term, both faces lit, two by
// two samples per pixel). The camera looks at the centre of the mesh's bounds from the angle given,
// far enough back for the whole mesh to fit.

#include "preview/DecodeImage.h"
#include "preview/PreviewMesh.h"

struct PreviewView {
    int Width = 640;
    int Height = 480;
    // Degrees around the up axis (+Z; 0 looks along +Y) and above the horizon.
    float Yaw = 35.0f;
    float Pitch = 25.0f;
};

RgbImage RenderPreview(const PreviewMesh& mesh, const PreviewView& view);
