#include "importers/assimp/AssimpContext.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "base/TextUtil.h"

#include <assimp/material.h>
#include <assimp/texture.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace {

bool ReadColor(const aiMaterial& material, const char* key, unsigned int type, unsigned int index, MVector& color)
{
    aiColor3D value;
    if (material.Get(key, type, index, value) != AI_SUCCESS || !std::isfinite(value.r) || !std::isfinite(value.g) ||
        !std::isfinite(value.b))
        return false;
    color = MVector(value.r, value.g, value.b);
    return true;
}

bool ReadFloat(const aiMaterial& material, const char* key, unsigned int type, unsigned int index, double& number)
{
    float value = 0.0f;
    if (material.Get(key, type, index, value) != AI_SUCCESS || !std::isfinite(value))
        return false;
    number = value;
    return true;
}

std::string WithBackslashes(std::string path)
{
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

// A 32-bit uncompressed TGA: Assimp keeps uncompressed embedded textures as BGRA texels, TGA's own order.
std::string TgaOf(const aiTexture& texture)
{
    std::string bytes(18, '\0');
    bytes[2] = 2;
    bytes[12] = static_cast<char>(texture.mWidth & 0xFF);
    bytes[13] = static_cast<char>((texture.mWidth >> 8) & 0xFF);
    bytes[14] = static_cast<char>(texture.mHeight & 0xFF);
    bytes[15] = static_cast<char>((texture.mHeight >> 8) & 0xFF);
    bytes[16] = 32;
    bytes[17] = 0x28; // top-left origin, 8 alpha bits
    const size_t texels = size_t(texture.mWidth) * texture.mHeight;
    for (size_t i = 0; i < texels; ++i) {
        const aiTexel& t = texture.pcData[i];
        bytes += static_cast<char>(t.b);
        bytes += static_cast<char>(t.g);
        bytes += static_cast<char>(t.r);
        bytes += static_cast<char>(t.a);
    }
    return bytes;
}

std::string EmbeddedTextureName(const AssimpContext& context, const aiTexture& texture, const std::string& reference)
{
    std::string name = FileNameOf(WithBackslashes(texture.mFilename.C_Str()));
    if (name.empty() || name.front() == '*') {
        const std::string stem = context.ScenePath.empty() ? "scene" : WithoutExtension(FileNameOf(context.ScenePath));
        std::string hint = texture.mHeight == 0 ? std::string(texture.achFormatHint) : std::string("tga");
        hint.erase(std::remove_if(hint.begin(), hint.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }),
                   hint.end());
        name = stem + "_texture" + MayaName(reference, "") + "." + (hint.empty() ? "bin" : hint);
    }
    if (texture.mHeight != 0 && !EndsWithNoCase(name, ".tga"))
        name = WithoutExtension(name) + ".tga";
    return name;
}

std::string EmbeddedTextureFolder(const AssimpContext& context)
{
    if (!context.Options.EmbeddedTextureFolder.empty())
        return context.Options.EmbeddedTextureFolder;
    return WithoutExtension(context.ScenePath) + "_textures";
}

// Maya's file texture nodes name files, so textures inside the scene file are written out beside it.
std::string WriteEmbeddedTexture(AssimpContext& context, const aiTexture& texture, const std::string& reference)
{
    const std::string path = JoinPath(EmbeddedTextureFolder(context), EmbeddedTextureName(context, texture, reference));
    if (!context.Options.WriteEmbeddedTextures || context.ScenePath.empty())
        return path;
    if (texture.mHeight == 0 && (!texture.pcData || texture.mWidth == 0)) {
        context.Result.Warn("Embedded textures without data are not written");
        return path;
    }
    const std::string bytes = texture.mHeight == 0
                                  ? std::string(reinterpret_cast<const char*>(texture.pcData), texture.mWidth)
                                  : TgaOf(texture);
    std::string error;
    if (!CreateDirectories(EmbeddedTextureFolder(context), &error) || !WriteFileAtomically(path, bytes, &error))
        context.Result.Warn("Embedded textures could not be written: " + error);
    return path;
}

std::string TexturePath(AssimpContext& context, const std::string& reference)
{
    if (reference.empty())
        return std::string();
    if (const aiTexture* embedded = context.Scene.GetEmbeddedTexture(reference.c_str())) {
        const auto written = context.WrittenTextures.find(embedded);
        if (written != context.WrittenTextures.end())
            return written->second;
        return context.WrittenTextures[embedded] = WriteEmbeddedTexture(context, *embedded, reference);
    }
    if (reference.front() == '*') {
        context.Result.Warn("Textures naming embedded images that do not exist are not imported");
        return std::string();
    }
    std::string path = WithBackslashes(reference);
    while (StartsWithNoCase(path, ".\\"))
        path.erase(0, 2);
    if (IsAbsolutePath(path) || context.ScenePath.empty())
        return path;
    return JoinPath(DirectoryOf(context.ScenePath), path);
}

RecordTexture ReadTexture(AssimpContext& context, const aiMaterial& material, aiTextureType type)
{
    RecordTexture texture;
    aiString file;
    if (material.GetTextureCount(type) == 0 || material.GetTexture(type, 0, &file) != AI_SUCCESS)
        return texture;
    texture.File = TexturePath(context, file.C_Str());
    aiUVTransform transform;
    if (material.Get(AI_MATKEY_UVTRANSFORM(type, 0), transform) == AI_SUCCESS && std::isfinite(transform.mScaling.x) &&
        std::isfinite(transform.mScaling.y) && std::isfinite(transform.mTranslation.x) &&
        std::isfinite(transform.mTranslation.y)) {
        texture.RepeatU = transform.mScaling.x;
        texture.RepeatV = transform.mScaling.y;
        texture.OffsetU = transform.mTranslation.x;
        texture.OffsetV = transform.mTranslation.y;
    }
    return texture;
}

// FBX maps that Assimp has no texture type for stay among its raw properties ("$raw.Bump|file").
RecordTexture ReadRawFbxTexture(AssimpContext& context, const aiMaterial& material, const char* property)
{
    RecordTexture texture;
    aiString file;
    const std::string key = std::string("$raw.") + property + "|file";
    if (material.Get(key.c_str(), aiTextureType_UNKNOWN, 0, file) == AI_SUCCESS)
        texture.File = TexturePath(context, file.C_Str());
    return texture;
}

RecordTexture FirstTexture(AssimpContext& context, const aiMaterial& material, std::initializer_list<aiTextureType> types)
{
    for (aiTextureType type : types) {
        RecordTexture texture = ReadTexture(context, material, type);
        if (!texture.File.empty())
            return texture;
    }
    return RecordTexture();
}

RecordShadingModel ShadingModelOf(const aiMaterial& material)
{
    int model = 0;
    material.Get(AI_MATKEY_SHADING_MODEL, model);
    switch (model) {
    case aiShadingMode_Phong: return RecordShadingModel::Phong;
    case aiShadingMode_Blinn: return RecordShadingModel::Blinn;
    default: return RecordShadingModel::Lambert;
    }
}

RecordMaterial ConvertMaterial(AssimpContext& context, const aiMaterial& material, unsigned int index)
{
    RecordMaterial record;
    aiString name;
    material.Get(AI_MATKEY_NAME, name);
    record.Name = MayaName(name.C_Str(), "");
    if (record.Name.empty())
        record.Name = Format("material%u", index + 1);
    record.Model = ShadingModelOf(material);
    ReadColor(material, AI_MATKEY_COLOR_DIFFUSE, record.Color);
    // The file's diffuse colour is the whole diffuse reflection unless it gives Maya's diffuse factor apart.
    record.Diffuse = 1.0;
    ReadFloat(material, "$raw.DiffuseFactor", 0, 0, record.Diffuse);
    ReadColor(material, AI_MATKEY_COLOR_AMBIENT, record.Ambient);
    ReadColor(material, AI_MATKEY_COLOR_SPECULAR, record.Specular);
    double opacity = 1.0;
    if (ReadFloat(material, AI_MATKEY_OPACITY, opacity) && opacity < 1.0) {
        const double transparency = std::clamp(1.0 - opacity, 0.0, 1.0);
        record.Transparency = MVector(transparency, transparency, transparency);
    }
    double shininess = 0.0;
    if (ReadFloat(material, AI_MATKEY_SHININESS, shininess) && shininess > 0.0) {
        record.CosinePower = std::clamp(shininess, 2.0, 100.0);
        // A Blinn lobe of eccentricity e is about as wide as a Phong lobe of exponent 2 / e² - 2.
        record.Eccentricity = std::clamp(std::sqrt(2.0 / (shininess + 2.0)), 0.0, 1.0);
    }
    record.ColorTexture = FirstTexture(context, material, {aiTextureType_DIFFUSE, aiTextureType_BASE_COLOR});
    record.TransparencyTexture = FirstTexture(context, material, {aiTextureType_OPACITY});
    record.BumpTexture = FirstTexture(context, material, {aiTextureType_NORMALS, aiTextureType_HEIGHT});
    record.SpecularTexture = FirstTexture(context, material, {aiTextureType_SPECULAR});
    if (context.Format == AssimpFormat::Fbx) {
        if (record.BumpTexture.File.empty())
            record.BumpTexture = ReadRawFbxTexture(context, material, "Bump");
        if (record.TransparencyTexture.File.empty())
            record.TransparencyTexture = ReadRawFbxTexture(context, material, "TransparentColor");
    }
    return record;
}

} // namespace

int RecordMaterialFor(AssimpContext& context, unsigned int materialIndex)
{
    const auto known = context.MaterialIndex.find(materialIndex);
    if (known != context.MaterialIndex.end())
        return known->second;
    RecordMaterial record;
    if (materialIndex < context.Scene.mNumMaterials && context.Scene.mMaterials[materialIndex]) {
        record = ConvertMaterial(context, *context.Scene.mMaterials[materialIndex], materialIndex);
    } else {
        context.Result.Warn("Meshes naming a material that does not exist get a default material");
        record.Name = Format("material%u", materialIndex + 1);
    }
    const int index = static_cast<int>(context.Record.Materials.size());
    context.Record.Materials.push_back(std::move(record));
    context.MaterialIndex.emplace(materialIndex, index);
    return index;
}
