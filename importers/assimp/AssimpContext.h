#pragma once
// State shared by the steps that turn one Assimp scene into a scene record.

#include "importers/ImportResult.h"
#include "importers/SceneRecord.h"
#include "importers/assimp/AssimpFormats.h"

#include <assimp/matrix4x4.h>
#include <assimp/scene.h>

#include <maya/MMatrix.h>

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

struct AssimpContext {
    AssimpContext(const aiScene& scene, AssimpFormat format, std::string scenePath, const ImportOptions& options,
                  SceneRecord& record, ImportResult& result)
        : Scene(scene), Format(format), ScenePath(std::move(scenePath)), Options(options), Record(record),
          Result(result)
    {
    }

    const aiScene& Scene;
    AssimpFormat Format;
    std::string ScenePath; // system path of the scene file; empty when read from memory
    const ImportOptions& Options;
    SceneRecord& Record;
    ImportResult& Result;

    // File coordinates to Maya's: axis change and unit scale, applied to every matrix by conjugation.
    aiMatrix4x4 Conversion;
    aiMatrix4x4 ConversionInverse;
    // Assimp's own top node (FBX "RootNode", the OBJ file, the COLLADA visual scene) is not a node of the file;
    // its matrix (COLLADA's up axis and unit) moves into its children.
    const aiNode* FoldedRoot = nullptr;
    double FramesPerSecond = 24.0;

    std::vector<const aiNode*> Nodes; // record node index to Assimp node
    std::unordered_map<const aiNode*, int> NodeIndex;
    std::unordered_map<std::string, int> NodeByName; // the first node of each name
    std::unordered_map<unsigned int, int> MaterialIndex; // Assimp material to record material
    // World matrices of joints at bind time, from the inverse bind matrices of the skins that use them.
    std::unordered_map<int, MMatrix> BindWorld;
    std::unordered_map<const aiTexture*, std::string> WrittenTextures;

    int FindNode(const std::string& name) const
    {
        const auto found = NodeByName.find(name);
        return found == NodeByName.end() ? -1 : found->second;
    }
    // A node's matrix relative to its parent in the record, in Maya's space and convention.
    MMatrix LocalToMaya(const aiNode& node, const aiMatrix4x4& local) const;
    // A world-space matrix of the file in Maya's space and convention.
    MMatrix WorldToMaya(const aiMatrix4x4& world) const;
    aiMatrix4x4 FileWorld(const aiNode& node) const;
};

MMatrix ToMayaMatrix(const aiMatrix4x4& columnVectorMatrix);
// Cleans a name from the file into one Maya accepts: letters, digits and underscores, not starting with a digit.
std::string MayaName(const std::string& name, const char* fallback);

// Custom properties of a node (FBX user properties, glTF extras) as the attributes Maya would add.
void ReadCustomProperties(const AssimpContext& context, const aiMetadata* metadata, RecordNode& node);
void ReadLights(AssimpContext& context);
void ReadCameras(AssimpContext& context);
void ReadAssimpMeshes(AssimpContext& context);
int RecordMaterialFor(AssimpContext& context, unsigned int materialIndex);
void ReadAssimpAnimations(AssimpContext& context);
