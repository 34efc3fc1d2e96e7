#pragma once
// Which of the formats read through Assimp a file is, by its extension and the first bytes of its contents.

#include <string_view>

enum class AssimpFormat { None, Fbx, Gltf, Collada, Obj };

bool CanReadFbx(std::string_view path, std::string_view head);
bool CanReadGltf(std::string_view path, std::string_view head);
bool CanReadCollada(std::string_view path, std::string_view head);
bool CanReadObj(std::string_view path);
AssimpFormat DetectAssimpFormat(std::string_view path, std::string_view head);
// A binary glTF whose header or first chunk claims more bytes than the file holds; Assimp would allocate the
// claimed size before noticing.
bool GlbLengthsExceed(std::string_view head, unsigned long long fileSize);
// The number of leading bytes DetectAssimpFormat needs to see.
constexpr size_t kAssimpSignatureBytes = 4096;
