#include "GoldenBytes.h"

#include "formats/MaterialChunk.h"
#include "formats/ParameterString.h"
#include "formats/StaticMeshChunks.h"
#include "formats/TransparencyModes.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VChunkedFile.h"
#include "formats/chunk/VMemoryStreamProvider.h"
#include "model/VMMaterial.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

VMMaterial FullMaterial()
{
    VMMaterial material;
    material.Name = "brick";
    material.FlagWord = 0x100;
    material.DoubleSided = 1;
    material.LightingFlag = 1;
    material.FourthFlag = 0;
    material.NoStripping = 1;
    material.IntegerAttribute1 = 11;
    material.SpecularMultiplier = 0.5f;
    material.SpecularExponent = 16.0f;
    material.Transparency = 2;
    material.DiffuseTexture = "brick.dds";
    material.SpecularMap = "brick_s.dds";
    material.NormalMap = "brick_n.dds";
    material.FurtherTextures = {"a.dds", "b.dds"};
    material.UserData = "wet";
    material.IntegerAttribute2 = 22;
    material.AmbientColour[0] = 10;
    material.AmbientColour[1] = 20;
    material.AmbientColour[2] = 300;
    material.IntegerAttribute3 = 33;
    material.SecondColour[0] = 1;
    material.SecondColour[1] = 2;
    material.SecondColour[2] = 3;
    material.ParallaxScale = 0.25f;
    material.ParallaxBias = -0.125f;
    auto shader = std::make_unique<VMShaderAssignment>();
    shader->EffectLibrary = "Shaders\\wall.ShaderLib";
    shader->EffectName = "Bumpy";
    shader->Parameters = {{"Scale", "2|3"}};
    shader->FurtherEntries = {"tech"};
    material.ShaderAssignments.push_back(std::move(shader));
    return material;
}

std::string WriteChunk(const VMMaterial& material)
{
    VMemoryStreamProvider streams;
    VChunkedFile file;
    EXPECT_TRUE(file.Create("m.bin", &streams));
    EXPECT_TRUE(WriteMaterialChunk(file, material));
    EXPECT_TRUE(file.Close());
    const std::string bytes = *streams.FindFile("m.bin");
    // Without the file header and end marker.
    return bytes.substr(8, bytes.size() - 12);
}

TEST(MaterialChunkTest, EveryFieldIsWrittenInOrderAndWidth)
{
    const GoldenBytes expected = GoldenBytes().Chunk(0, ChunkMTRL, GoldenBytes()
        .U16(2)                                           // version
        .Str("brick")
        .U32(0x100 | 1 | 4)                               // flag word, double-sided, lighting
        .U32(11)                                          // integer 1
        .F32({0.5f, 16.0f})                               // specular multiplier, exponent
        .U8({2, 1})                                       // transparency, no-stripping byte
        .Str("brick.dds").Str("brick_s.dds").Str("brick_n.dds")
        .I32(2).Str("a.dds").Str("b.dds")                 // further textures
        .Str("wet")                                       // user data
        .U32(22)                                          // integer 2
        .U8({10, 20, 44, 0xFF})                           // colour 1: ambient, 300 as its low byte
        .U32(33)                                          // integer 3
        .U8({1, 2, 3, 0xFF})                              // colour 2
        .F32({0.25f, -0.125f})                            // parallax scale, bias
        .I32(1)
        .Str("Shaders\\wall.ShaderLib").Str("Bumpy").Str("Scale=2,3;/tech;"));
    EXPECT_EQ(WriteChunk(FullMaterial()), expected.Str());
}

// Reads the chunk whose bytes (tags included) are given, as the first chunk of a file.
bool ReadChunk(const std::string& chunk, VMMaterial& read)
{
    VMemoryStreamProvider streams;
    streams.SetFile("m.bin", GoldenBytes().FileHeader().Bytes(chunk).FileEnd().Str());
    VChunkedFile in;
    EXPECT_TRUE(in.Open("m.bin", &streams));
    EXPECT_TRUE(in.OpenChunk(ChunkMTRL));
    if (!ReadMaterialChunk(in, read))
        return false;
    EXPECT_TRUE(in.EndChunk());
    return true;
}

VMMaterial ReadOlderChunk(const GoldenBytes& content)
{
    VMMaterial read;
    EXPECT_TRUE(ReadChunk(GoldenBytes().Chunk(0, ChunkMTRL, content).Str(), read)) << LastError().Text;
    return read;
}

TEST(MaterialChunkTest, ReadingGivesBackWhatWasWritten)
{
    const VMMaterial written = FullMaterial();
    VMMaterial read;
    ASSERT_TRUE(ReadChunk(WriteChunk(written), read)) << LastError().Text;

    EXPECT_EQ(read.Name, "brick");
    EXPECT_EQ(read.FlagWord, 0x100u);
    EXPECT_EQ(read.DoubleSided, 1);
    EXPECT_EQ(read.ModelFlag, 0);
    EXPECT_EQ(read.LightingFlag, 1);
    EXPECT_EQ(read.FourthFlag, 0);
    EXPECT_EQ(read.Transparency, 2u);
    EXPECT_EQ(read.NormalMap, "brick_n.dds");
    EXPECT_EQ(read.FurtherTextures, written.FurtherTextures);
    EXPECT_EQ(read.AmbientColour[2], 44u);
    EXPECT_EQ(read.IntegerAttribute3, 33u);
    EXPECT_EQ(read.ParallaxBias, -0.125f);
    ASSERT_EQ(read.ShaderAssignments.size(), 1u);
    EXPECT_EQ(read.ShaderAssignments[0]->EffectName, "Bumpy");
    EXPECT_EQ(read.ShaderAssignments[0]->Parameters[0].Value, "Scale=2,3;/tech;");
}

TEST(MaterialChunkTest, DamagedOrUnknownChunksAreRefused)
{
    VMMaterial read;
    // A hostile further texture count is refused before anything is allocated.
    EXPECT_FALSE(ReadChunk(GoldenBytes().Chunk(0, ChunkMTRL, GoldenBytes()
        .U16(2).Str("x").U32(0).U32(0).F32({0, 0}).U8({0, 0}).Str("").Str("").Str("")
        .I32(0x7FFFFFFF)).Str(), read));
    EXPECT_EQ(LastError().Text, "Material chunk 'x' is damaged");
    EXPECT_FALSE(ReadChunk(GoldenBytes().Chunk(0, ChunkMTRL, GoldenBytes().U16(3)).Str(), read));
    EXPECT_EQ(LastError().Text, "Material chunk version 3 is not supported");
}

TEST(MaterialChunkTest, OlderVersionsAreReadInTheirOwnLayout)
{
    const VMMaterial first = ReadOlderChunk(GoldenBytes()
        .U16(0)                                           // version
        .Str("hide")
        .U32(0x100 | 1)                                   // flag word, double-sided
        .U8({7, 2, 3})                                    // integer 1, kind, specular level
        .U8({2, 1})                                       // transparency, no-stripping byte
        .Str("hide.dds").Str("").Str("hide_n.dds")
        .F32({25.0f})                                     // further value in percent
        .Str("ud").U32(22).U8({10, 20, 30, 0xFF}).U32(33).U8({1, 2, 3, 0xFF})
        .I32(0));                                         // no parallax values, no shaders
    EXPECT_EQ(first.IntegerAttribute1, 7u);
    EXPECT_EQ(first.Kind, 2u);
    EXPECT_EQ(first.SpecularLevel, 3);
    EXPECT_EQ(first.SpecularMultiplier, 3.0f / 8.0f);
    EXPECT_EQ(first.SpecularExponent, 16.0f);
    EXPECT_EQ(first.FurtherValue, 0.25f);
    EXPECT_EQ(first.UserData, "ud");
    EXPECT_EQ(first.SecondColour[2], 3u);
    EXPECT_EQ(first.ParallaxScale, -0.03f);

    const VMMaterial second = ReadOlderChunk(GoldenBytes()
        .U16(1).Str("coat").U32(0).U32(11).F32({0.5f, 16.0f}).U8({0, 0})
        .Str("coat.dds").Str("").Str("")                  // no further texture list
        .Str("").U32(0).U8({0, 0, 0, 0xFF}).U32(0).U8({0, 0, 0, 0xFF})
        .F32({0.25f, -0.125f}).I32(0));
    EXPECT_EQ(second.SpecularExponent, 16.0f);
    EXPECT_TRUE(second.FurtherTextures.empty());
    EXPECT_EQ(second.ParallaxBias, -0.125f);
}

TEST(ParameterStringTest, JoinsParametersThenFurtherEntriesAndTurnsBarsIntoCommas)
{
    VMShaderAssignment shader;
    EXPECT_EQ(MakeParameterString(shader), "");
    shader.Parameters = {{"Colour", "1|0|0"}, {"Gloss", "0.5"}};
    shader.FurtherEntries = {"a|b", "c"};
    EXPECT_EQ(MakeParameterString(shader), "Colour=1,0,0;Gloss=0.5;/a,b;/c;");
}

TEST(ParameterStringTest, LongTextIsCutToLimitMinusOneCharacters)
{
    VMShaderAssignment shader;
    shader.Parameters = {{"A", std::string(3990, 'x')}, {"B", "12345678"}};
    shader.FurtherEntries = {"never"};
    const std::string text = MakeParameterString(shader);
    ASSERT_EQ(text.size(), 3999u);
    EXPECT_EQ(text.substr(3990), "xx;B=1234");
}

TEST(TransparencyModesTest, NumbersAndNamesMapBothWaysWithoutRegardToCase)
{
    const char* names[16] = {"opaque", "modulate", "alpha", "additive", "colorkey", "addmodulate", nullptr, nullptr,
                             "modulate2x", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, "alphasmooth"};
    for (uint32_t mode = 0; mode < 16; ++mode) {
        const char* name = TransparencyModeName(mode);
        EXPECT_STREQ(name, names[mode]) << mode;
        uint32_t parsed = 99;
        if (name) {
            EXPECT_TRUE(ParseTransparencyMode(name, parsed) && parsed == mode) << name;
        }
    }
    EXPECT_EQ(TransparencyModeName(16), nullptr);
    uint32_t mode = 99;
    EXPECT_TRUE(ParseTransparencyMode("AlphaSmooth", mode));
    EXPECT_EQ(mode, 15u);
    EXPECT_FALSE(ParseTransparencyMode("glass", mode));
    EXPECT_EQ(mode, 15u);
}

} // namespace
