#include "formats/MaterialChunk.h"

#include "base/TextUtil.h"
#include "formats/ParameterString.h"
#include "formats/StaticMeshChunks.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VChunkedFile.h"
#include "model/VMMaterial.h"
#include "model/VMShaderAssignment.h"

#include <memory>
#include <string>

namespace {

constexpr uint32_t FlagDoubleSided = 1;
constexpr uint32_t FlagModel = 2;
constexpr uint32_t FlagLighting = 4;
constexpr uint32_t FlagFourth = 8;
constexpr uint32_t BooleanFlags = FlagDoubleSided | FlagModel | FlagLighting | FlagFourth;

// The smallest stored string: its length word.
constexpr int32_t MinStringBytes = 4;

template <class T>
bool WriteValue(VChunkedFile& file, T value)
{
    return file.Write(&value, sizeof value) == static_cast<int>(sizeof value);
}

// A channel is stored as its low byte, as the engine's own writer stores it: 300 becomes 44.
bool WriteColour(VChunkedFile& file, const uint32_t (&rgb)[3])
{
    const uint8_t bytes[4] = {
        static_cast<uint8_t>(rgb[0]),
        static_cast<uint8_t>(rgb[1]),
        static_cast<uint8_t>(rgb[2]),
        0xFF,
    };
    return file.Write(bytes, 4) == 4;
}

uint32_t FlagWordOf(const VMMaterial& material)
{
    uint32_t flags = material.FlagWord;
    if (material.DoubleSided)
        flags |= FlagDoubleSided;
    if (material.ModelFlag)
        flags |= FlagModel;
    if (material.LightingFlag)
        flags |= FlagLighting;
    if (material.FourthFlag)
        flags |= FlagFourth;
    return flags;
}

template <class T>
bool ReadValue(VChunkedFile& file, T& value)
{
    return file.Read(&value, sizeof value) == static_cast<int>(sizeof value);
}

bool ReadString(VChunkedFile& file, std::string& text)
{
    if (file.GetRemainingChunkBytes() < MinStringBytes)
        return false;
    text = file.ReadString();
    return file.GetMode() == VChunkedFile::Mode::Reading;
}

bool ReadColour(VChunkedFile& file, uint32_t (&rgb)[3])
{
    uint8_t bytes[4];
    if (file.Read(bytes, 4) != 4)
        return false;
    for (int channel = 0; channel < 3; ++channel)
        rgb[channel] = bytes[channel];
    return true;
}

// A count of records that each take at least minBytes must fit in what is left of the chunk.
bool ReadCount(VChunkedFile& file, int32_t minBytes, int32_t& count)
{
    return file.ReadInt(count) == 4 && count >= 0 && count <= file.GetRemainingChunkBytes() / minBytes;
}

bool ReadShaders(VChunkedFile& file, VMMaterial& material)
{
    int32_t count = 0;
    if (!ReadCount(file, 3 * MinStringBytes, count))
        return false;
    for (int32_t i = 0; i < count; ++i) {
        auto shader = std::make_unique<VMShaderAssignment>();
        std::string parameters;
        if (!ReadString(file, shader->EffectLibrary) || !ReadString(file, shader->EffectName) ||
            !ReadString(file, parameters))
            return false;
        shader->Parameters.push_back({"paramstring", parameters});
        material.ShaderAssignments.push_back(std::move(shader));
    }
    return true;
}

// The oldest chunks give a specular level of 0 (none) to 8 (the strongest, tightest highlight)
// instead of the two values: the multiplier rises linearly with it, the exponent doubles.
void ApplySpecularLevel(uint8_t level, VMMaterial& material)
{
    material.SpecularLevel = std::min<uint8_t>(level, 8);
    material.SpecularMultiplier = material.SpecularLevel / 8.0f;
    material.SpecularExponent = material.SpecularLevel == 0 ? 0.0f : static_cast<float>(2 << material.SpecularLevel);
}

bool ReadIntegerAndSpecular(VChunkedFile& file, uint16_t version, VMMaterial& material)
{
    if (version >= 1)
        return ReadValue(file, material.IntegerAttribute1) && ReadValue(file, material.SpecularMultiplier) &&
               ReadValue(file, material.SpecularExponent);
    uint8_t bytes[3];
    if (file.Read(bytes, 3) != 3)
        return false;
    material.IntegerAttribute1 = bytes[0];
    material.Kind = bytes[1];
    ApplySpecularLevel(bytes[2], material);
    return true;
}

bool ReadMaterialContent(VChunkedFile& file, uint16_t version, VMMaterial& material)
{
    uint32_t flags = 0;
    if (!ReadString(file, material.Name) || !ReadValue(file, flags) || !ReadIntegerAndSpecular(file, version, material))
        return false;
    material.FlagWord = flags & ~BooleanFlags;
    material.DoubleSided = (flags & FlagDoubleSided) != 0;
    material.ModelFlag = (flags & FlagModel) != 0;
    material.LightingFlag = (flags & FlagLighting) != 0;
    material.FourthFlag = (flags & FlagFourth) != 0;

    uint8_t transparency = 0;
    if (!ReadValue(file, transparency) || !ReadValue(file, material.NoStripping))
        return false;
    material.Transparency = transparency;
    if (!ReadString(file, material.DiffuseTexture) || !ReadString(file, material.SpecularMap) ||
        !ReadString(file, material.NormalMap))
        return false;
    if (version >= 2) {
        int32_t count = 0;
        if (!ReadCount(file, MinStringBytes, count))
            return false;
        material.FurtherTextures.resize(static_cast<size_t>(count));
        for (std::string& texture : material.FurtherTextures) {
            if (!ReadString(file, texture))
                return false;
        }
    }
    if (version == 0) {
        // Stored in percent.
        float percent = 0.0f;
        if (!ReadValue(file, percent))
            return false;
        material.FurtherValue = percent / 100.0f;
    }
    if (!ReadString(file, material.UserData) || !ReadValue(file, material.IntegerAttribute2) ||
        !ReadColour(file, material.AmbientColour) || !ReadValue(file, material.IntegerAttribute3) ||
        !ReadColour(file, material.SecondColour))
        return false;
    if (version >= 1 && (!ReadValue(file, material.ParallaxScale) || !ReadValue(file, material.ParallaxBias)))
        return false;
    return ReadShaders(file, material);
}

} // namespace

bool WriteMaterialChunk(VChunkedFile& file, const VMMaterial& material)
{
    bool ok = file.StartChunk(ChunkMTRL) && WriteValue(file, MaterialChunkVersion) &&
              file.WriteString(material.Name) && WriteValue(file, FlagWordOf(material)) &&
              WriteValue(file, material.IntegerAttribute1) && WriteValue(file, material.SpecularMultiplier) &&
              WriteValue(file, material.SpecularExponent) &&
              WriteValue(file, static_cast<uint8_t>(material.Transparency)) &&
              WriteValue(file, material.NoStripping) && file.WriteString(material.DiffuseTexture) &&
              file.WriteString(material.SpecularMap) && file.WriteString(material.NormalMap) &&
              file.WriteInt(static_cast<int32_t>(material.FurtherTextures.size()));
    for (size_t i = 0; ok && i < material.FurtherTextures.size(); ++i)
        ok = file.WriteString(material.FurtherTextures[i]);
    ok = ok && file.WriteString(material.UserData) && WriteValue(file, material.IntegerAttribute2) &&
         WriteColour(file, material.AmbientColour) && WriteValue(file, material.IntegerAttribute3) &&
         WriteColour(file, material.SecondColour) && WriteValue(file, material.ParallaxScale) &&
         WriteValue(file, material.ParallaxBias) &&
         file.WriteInt(static_cast<int32_t>(material.ShaderAssignments.size()));
    for (size_t i = 0; ok && i < material.ShaderAssignments.size(); ++i) {
        const VMShaderAssignment& shader = *material.ShaderAssignments[i];
        ok = file.WriteString(shader.EffectLibrary) && file.WriteString(shader.EffectName) &&
             file.WriteString(MakeParameterString(shader));
    }
    return ok && file.EndChunk();
}

bool ReadMaterialChunk(VChunkedFile& file, VMMaterial& material)
{
    uint16_t version = 0;
    if (!ReadValue(file, version)) {
        SetLastError("Material chunk is truncated", ChunkMTRL, file.GetPosition());
        return false;
    }
    if (version > MaterialChunkVersion) {
        SetLastError(Format("Material chunk version %u is not supported", version), ChunkMTRL, file.GetPosition());
        return false;
    }
    if (!ReadMaterialContent(file, version, material)) {
        if (file.GetMode() != VChunkedFile::Mode::Error)
            SetLastError(Format("Material chunk '%s' is damaged", material.Name.c_str()), ChunkMTRL, file.GetPosition());
        return false;
    }
    return true;
}
