#pragma once
// What both containers share: the materials, names kept for the writers, and which vertex
// components the vertices carry.

#include "model/VMMaterial.h"
#include "model/VMOwnedList.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class VMMeshBase {
public:
    VMMeshBase() = default;
    VMMeshBase(const VMMeshBase&) = delete;
    VMMeshBase& operator=(const VMMeshBase&) = delete;

    VMOwnedList<VMMaterial> Materials;
    std::vector<std::string> Strings;
    uint8_t HasTangents = 0;
    uint8_t HasColours = 0;
    uint8_t HasSecondUV = 0;

    // Null when memory runs out; the material is not added.
    static std::unique_ptr<VMMaterial> NewMaterial();

protected:
    ~VMMeshBase() = default;
    void ClearMeshBase();
    void EnumerateMaterials();
};
