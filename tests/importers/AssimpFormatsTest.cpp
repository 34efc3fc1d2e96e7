#include "importers/assimp/AssimpFormats.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// Each format is known by its extension (any case) and its first bytes: FBX by its binary signature or
// ASCII header, glTF as JSON (after a byte order mark) or a .glb by its magic, COLLADA as XML with a
// COLLADA root, OBJ by its extension alone.
TEST(AssimpFormats, AFileIsKnownByItsExtensionAndItsFirstBytes)
{
    const std::string binaryFbx("Kaydara FBX Binary  \0\x1a\0", 23);
    const struct {
        const char* Path;
        std::string Head;
        AssimpFormat Format;
    } files[] = {
        {"scene.fbx", binaryFbx, AssimpFormat::Fbx},
        {"SCENE.FBX", binaryFbx, AssimpFormat::Fbx},
        {"scene.fbx", std::string("\x89PNG\r\n\x1a\n\0\0", 10), AssimpFormat::None},
        {"scene.fbx", "; FBX 7.5.0 project file\nFBXHeaderExtension:  {\n", AssimpFormat::Fbx},
        {"scene.fbx", "hello", AssimpFormat::None},
        {"scene.dae", binaryFbx, AssimpFormat::None},
        {"a.gltf", "\xEF\xBB\xBF  {\"asset\":{}}", AssimpFormat::Gltf},
        {"a.gltf", "<xml/>", AssimpFormat::None},
        {"a.glb", std::string("glTF\x02\0\0\0", 8), AssimpFormat::Gltf},
        {"a.glb", "{\"asset\":{}}", AssimpFormat::None},
        {"a.dae", "<?xml version=\"1.0\"?>\n<COLLADA xmlns=\"x\" version=\"1.4.1\">", AssimpFormat::Collada},
        {"a.dae", "<?xml version=\"1.0\"?>\n<svg>", AssimpFormat::None},
        {"a.OBJ", std::string("v 0\0\0", 5), AssimpFormat::Obj},
        {"a.txt", "v 0 0 0\n", AssimpFormat::None},
        {"a.ma", "//Maya ASCII 2018 scene\n", AssimpFormat::None},
        {"noextension", "v 0 0 0\n", AssimpFormat::None}};
    for (const auto& file : files)
        EXPECT_EQ(DetectAssimpFormat(file.Path, file.Head), file.Format) << file.Path << ": " << file.Head;
}

} // namespace
