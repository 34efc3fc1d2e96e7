#pragma once
// A light of a static export.

#include <cstdint>
#include <string>

struct VMLight {
    static constexpr uint32_t PointLight = 2;
    static constexpr uint32_t DirectionalLight = 3;
    static constexpr uint32_t SpotLight = 5;

    static constexpr uint32_t AnimatedBit = 0x01;
    static constexpr uint32_t SwitchableBit = 0x02;
    static constexpr uint32_t CastDynamicShadowsBit = 0x10;
    static constexpr uint32_t CoronaBit = 0x20;
    static constexpr uint32_t LensflareBit = 0x40;
    static constexpr uint32_t SpecularityBit = 0x80;
    static constexpr uint32_t CastWorldShadowsBit = 0x100;

    std::string Name;
    uint32_t Type = PointLight;
    float Position[3] = {0.0f, 0.0f, 0.0f};
    float Colour[3] = {1.0f, 1.0f, 1.0f};
    // 0xFFRRGGBB.
    uint32_t PackedColour = 0xFFFFFFFFu;
    float Intensity = 1.0f;
    float Radius = 0.0f;
    float Direction[3] = {0.0f, 0.0f, -1.0f};
    float SecondAxis[3] = {0.0f, -1.0f, 0.0f};
    float ConeAngle = 0.0f;
    bool Dynamic = false;
    uint32_t Flags = 0;
    int32_t AffectEntities = 1;
    int32_t AffectWorld = 1;
    std::string Texture;
    std::string Key;
    std::string AnimBitmap;
    std::string CoronaTexture;
    int32_t Speed = 0;
    int32_t Pattern = 0;
    int32_t IntensityRange = 0;
    float VolumetricDensity = 0.0f;
    float AnimTime = 0.0f;
    float AnimPhase = 0.0f;
    int Index = 0;
};
