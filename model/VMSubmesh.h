#pragma once
// One draw batch of the static mesh file, built by its writer in the world's submesh list.

#include "base/VPList.h"
#include "model/VMBoundingBox.h"

#include <cstdint>

struct VMMaterial;
struct VMVertex;
class VMVisArea;

struct VMSubmesh {
    VMMaterial* Material = nullptr;
    VMVisArea* Area = nullptr;
    // Three per triangle.
    VPListT<VMVertex> RenderIndices;
    VPListT<VMVertex> ShadowIndices;
    int32_t RenderFirstIndex = 0;
    int32_t RenderIndexCount = 0;
    int32_t ShadowFirstIndex = 0;
    // -1: the same range as the render list.
    int32_t ShadowIndexCount = -1;
    int32_t RenderFirstVertex = 0;
    int32_t RenderLastVertex = 0;
    int32_t ShadowFirstVertex = 0;
    int32_t ShadowLastVertex = 0;
    int32_t Group = -1;
    VMBoundingBox Box;
    int32_t Number = 0;
};
