#include "importers/assimp/AssimpFormats.h"

#include <gtest/gtest.h>

#include <string>

namespace {

const std::string kBinaryFbx = std::string("Kaydara FBX Binary  \0\x1a\0", 23);

TEST(AssimpFormats, BinaryFbxIsKnownByItsSignature)
{
    EXPECT_TRUE(CanReadFbx("scene.fbx", kBinaryFbx));
    EXPECT_TRUE(CanReadFbx("SCENE.FBX", kBinaryFbx));
    EXPECT_FALSE(CanReadFbx("scene.fbx", std::string("\x89PNG\r\n\x1a\n\0\0", 10)));
}

TEST(AssimpFormats, AsciiFbxIsKnownByItsHeader)
{
    EXPECT_TRUE(CanReadFbx("scene.fbx", "; FBX 7.5.0 project file\nFBXHeaderExtension:  {\n"));
    EXPECT_FALSE(CanReadFbx("scene.fbx", "hello"));
}

TEST(AssimpFormats, AnFbxSignatureUnderAnotherExtensionIsNotTaken)
{
    EXPECT_FALSE(CanReadFbx("scene.dae", kBinaryFbx));
    EXPECT_EQ(DetectAssimpFormat("scene.dae", kBinaryFbx), AssimpFormat::None);
}

TEST(AssimpFormats, GltfIsJsonAndGlbStartsWithItsMagic)
{
    EXPECT_TRUE(CanReadGltf("a.gltf", "\xEF\xBB\xBF  {\"asset\":{}}"));
    EXPECT_FALSE(CanReadGltf("a.gltf", "<xml/>"));
    EXPECT_TRUE(CanReadGltf("a.glb", std::string("glTF\x02\0\0\0", 8)));
    EXPECT_FALSE(CanReadGltf("a.glb", "{\"asset\":{}}"));
}

TEST(AssimpFormats, ColladaIsXmlWithACOLLADARoot)
{
    EXPECT_TRUE(CanReadCollada("a.dae", "<?xml version=\"1.0\"?>\n<COLLADA xmlns=\"x\" version=\"1.4.1\">"));
    EXPECT_FALSE(CanReadCollada("a.dae", "<?xml version=\"1.0\"?>\n<svg>"));
}

TEST(AssimpFormats, ObjIsAnyFileWithItsExtension)
{
    EXPECT_EQ(DetectAssimpFormat("a.OBJ", std::string("v 0\0\0", 5)), AssimpFormat::Obj);
    EXPECT_EQ(DetectAssimpFormat("a.txt", "v 0 0 0\n"), AssimpFormat::None);
}

TEST(AssimpFormats, OtherExtensionsAreNotTaken)
{
    EXPECT_EQ(DetectAssimpFormat("a.ma", "//Maya ASCII 2018 scene\n"), AssimpFormat::None);
    EXPECT_EQ(DetectAssimpFormat("noextension", "v 0 0 0\n"), AssimpFormat::None);
}

} // namespace
