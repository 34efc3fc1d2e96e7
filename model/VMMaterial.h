#pragma once
// One distinct surface of a container. An empty string stands for a missing one: they read
// and compare the same everywhere.

#include "model/VMShaderAssignment.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct VMMaterial {
    uint32_t Kind = 5;
    uint32_t Transparency = 0;
    uint32_t FlagWord = 0;
    uint8_t DoubleSided = 0;
    uint8_t ModelFlag = 0;
    uint8_t LightingFlag = 0;
    uint8_t FourthFlag = 1;
    uint8_t NoStripping = 0;
    float SpecularMultiplier = 0.0f;
    float SpecularExponent = 0.0f;
    float ParallaxScale = -0.03f;
    float ParallaxBias = -0.015f;
    uint32_t IntegerAttribute1 = 0;
    uint32_t IntegerAttribute3 = 0;
    float FurtherValue = 0.0f;
    uint32_t IntegerAttribute2 = 0;
    uint32_t SecondColour[3] = {0, 0, 0};
    uint32_t AmbientColour[3] = {0, 0, 0};
    uint16_t ShortAttribute = 0;
    uint32_t WordAttribute = 0;
    float UVTransform[4] = {1.0f, 1.0f, 0.0f, 0.0f};
    uint32_t WordAttributes[2] = {0, 0};
    int32_t IndexAttribute = -1;
    uint32_t DiffuseColour[3] = {255, 255, 127};
    int16_t LightmapSize[2] = {128, 128};
    int32_t LightmapID = -1;
    float LightmapGranularity = 0.0f;
    std::string Name;
    std::string DiffuseTexture;
    std::string NormalMap;
    std::string SpecularMap;
    std::string FifthString;
    std::string UserData;
    std::vector<std::unique_ptr<VMShaderAssignment>> ShaderAssignments;
    std::vector<std::string> FurtherTextures;
    uint32_t UseCount = 0;
    uint32_t AtlasFlag = 0;
    uint8_t SpecularLevel = 0;

    // Position in the container's material list; written as the material's number.
    int32_t Index = -1;
};

// The equality that "Checking materials..." merges by. Strings compare without regard to case,
// floats as floats (a NaN equals nothing), shader assignments as the very same records. The
// parallax values, UV transform, diffuse colour, lightmap values, further textures, word
// attributes, use count, atlas flag and specular level take no part.
bool IsSameMaterial(const VMMaterial& a, const VMMaterial& b);
