#include "report/KestrelReportMessage.h"

#include <array>

#include "report/VIssueKind.h"

namespace {

enum class DetailForm {
    Header, // the list header, then the raised details
    Data,   // the raised details alone
    Fixed,  // a fixed text; the raised details are dropped
};

struct MessageRow {
    VIssueKind Kind;
    const char* Title;
    int32_t Severity;
    DetailForm Form;
    // The list header of a Header row (nullptr: the default header) or the text of a Fixed row.
    const char* DetailText;
    const char* Explanation;
};

constexpr const char* DefaultListHeader = "The affected nodes were:\r\n";

constexpr std::array<MessageRow, IssueKindCount> MessageTable { {
    { IssueCrash, "Crash", SeverityError, DetailForm::Header, "In:\r\n",
      "The export was not successful. Something caused it to crash. Please, report this to support. Tip: Turn on "
      "Debug printout in the Global Settings and export again. That way, you'll have a  fairly accurate idea of what "
      "went on before the crash.\r\n\r\nDon't forget to make a backup of your Maya scene now!" },
    { IssueMayaVersionTooOld, "Maya version too old for this plugin", SeverityError, DetailForm::Header,
      "Minimum required version:\r\n",
      "This version of Maya is older than the oldest version the plugin was made for, so the export can not run. "
      "Please, upgrade Maya to at least the version listed below." },
    { IssueTriangleEstimationFailed, "Triangle estimation failed", SeverityError, DetailForm::Fixed, "",
      "The triangle estimation part of the pre-calculation failed. This indicates that something in the global DAG "
      "iterator did not work, and the nodes could not be enumerated. Therefore, this Maya scene can't be exported." },
    { IssueTextureNotLoaded, "Could not load texture", SeverityWarning, DetailForm::Header,
      "The following files could not be loaded:\r\n",
      "Some textures could not be loaded. They may be missing, locked by another program or stored in a format "
      "that can not be read. The materials using them were exported without these textures. Please, check the "
      "files listed below." },
    { IssueFileNotSaved, "Could not save file", SeverityError, DetailForm::Header,
      "This file could not be written:\r\n",
      "Could not save the file. The reasons for this might be internal errors, saving to read-only media, "
      "insufficient file permissions, closed network connections or otherwise." },
    { IssueFileNotCopied, "Could not copy file", SeverityError, DetailForm::Header,
      "The following files could not be copied:\r\n",
      "Some files could not be copied into the project. The reasons for this might be missing source files, "
      "read-only target files, insufficient file permissions or a full disk. Please, check the files listed below "
      "and export again." },
    { IssueBumpOpacityOnUntextured, "Bumpmapping/opacity mapping ingnored", SeverityWarning, DetailForm::Header,
      "The following surface was untextured and can not be combined with bumpmapping or opacity mapping:\r\n", "" },
    { IssueTextureNotSaved, "Could not save texture", SeverityError, DetailForm::Header,
      "The following files could not be written:\r\n",
      "Some textures could not be written. The reasons for this might be saving to read-only media, insufficient "
      "file permissions, closed network connections or otherwise. Please, check the files listed below." },
    { IssueOutOfMemory, "Could not mallocate", SeverityError, DetailForm::Header, "Mallocation failed in:\r\n",
      "The exporter ran out of memory, so the export is most likely incomplete. Please, close other programs or "
      "split the scene into smaller parts and export again." },
    { IssueTooManyThings, "Internal error: Too many things", SeverityError, DetailForm::Header,
      "Found too many of:\r\n",
      "The scene held more items of one kind than the exporter can handle, and the surplus items were left out. "
      "Please, reduce the number of the items listed below, and report this to support together with the scene." },
    { IssueProjectNotFound, "Project not found", SeverityError, DetailForm::Fixed,
      "You can create a project file from the File->Export dialog",
      "You have tried to export a file of a type which needs project support (i.e. PREFAB) without exporting to a "
      "project directory. Make sure that you export to either a directory containing a project (PROJECT) file or a "
      "sub-directory of a directory that contains a project file." },
    { IssueSkeletonInconsistency, "Skeleton inconsistency", SeverityError, DetailForm::Header,
      "The following bones were affected:",
      "The skeleton of the model is inconsistent: some bones refer to parents that are not part of the exported "
      "skeleton, so the model can not be exported correctly. Please, check the hierarchy of the bones listed below." },
    { IssueDuplicateBoneNames, "Multiple bones with same name", SeverityError, DetailForm::Header,
      "The following conflicting bones names were found:\r\n",
      "Several bones with the same name were found. The engine tells bones apart by their names, so this is not "
      "allowed. Please, rename the bones listed below so that every name is unique." },
    { IssueEncodingConsistency, "Internal error: Encoding consistency failure", SeverityError, DetailForm::Fixed, "",
      "The encoded skin did not match the model it was built from. This is an internal error of the exporter. "
      "Please, report this to support together with your Maya scene." },
    { IssueSkinCountMismatch, "Different vertex/polygon count before and after skinning", SeverityError,
      DetailForm::Header, nullptr,
      "The mesh before skinning and the skinned mesh have different numbers of vertices or polygons, so the "
      "polygons of these nodes were not exported. This usually means that the mesh was edited after it was bound to "
      "its skin. Please, check the construction history of the nodes listed below." },
    { IssueEmptyScene, "Empty scene", SeverityWarning, DetailForm::Fixed, "",
      "Nothing was exported, because no exportable nodes were found. Please, check that the scene holds visible "
      "meshes that are not marked to be skipped, and that they are selected when you export the selection only." },
    { IssueTooManyPolygons, "Too many polygons in model", SeverityWarning, DetailForm::Header,
      "The model had the following data:\r\n",
      "The model has more polygons than the engine can draw well as one model. Please, consider reducing the "
      "polygon count or splitting the model into several models." },
    { IssueLowScaling, "Extremely low scaling detected", SeverityWarning, DetailForm::Header, "Scaling value:\r\n",
      "An extremely low scaling was found. This is often the result of a wrong unit setting, and it can make "
      "nearby vertices melt into one. Please, check the scaling and the working units of your Maya scene." },
    { IssueNodeWithoutMaterial, "Node without material", SeverityWarning, DetailForm::Header,
      "The following nodes did not have any material:\r\n",
      "Some nodes did not have any material and were exported with a default material. Please, assign materials "
      "to the nodes listed below." },
    { IssueTextureNotReplaced, "Could not replace texture", SeverityWarning, DetailForm::Header,
      "The following files could not be replaced:\r\n",
      "Some textures in the project could not be replaced by newer versions, so the older files were kept. They "
      "may be read-only or in use by another program. Please, check the files listed below." },
    { IssueTextureNotFound, "Texture not found", SeverityWarning, DetailForm::Header,
      "The following textures are missing:\r\n",
      "Some textures used by materials could not be found, and the materials were exported without them. Please, "
      "check the file names of the textures listed below." },
    { IssueBrokenTexture, "Broken texture file", SeverityWarning, DetailForm::Header,
      "The following files are broken:\r\n",
      "Some texture files could not be read, because they are damaged or not of the type their names say. Please, "
      "save the files listed below again from your paint program." },
    { IssueIllegalMaterialType, "Illegal material type", SeverityWarning, DetailForm::Header,
      "The following materials are affected:\r\n",
      "Some materials are of a type that the exporter does not support, and they were exported like lambert "
      "materials as far as possible. Please, use lambert, phong, phongE, blinn, anisotropic or layered shaders for "
      "the materials listed below." },
    { IssueColorMaterialWithBump, "Color material with bump map", SeverityWarning, DetailForm::Header,
      "The following materials are affected:\r\n",
      "Some materials had a bump map but only a color instead of a color texture. A bump map can only be combined "
      "with a texture, so it was ignored. Please, give the materials listed below a color texture." },
    { IssueDuplicateMaterialNames, "Multiple materials with the same name", SeverityWarning, DetailForm::Header,
      "The following materials had duplicate names:\r\n",
      "Multiple materials with the same name were fount. This is not allowed. Please, check your Maya scene for "
      "materials with the names listed below and eliminate all duplicates." },
    { IssueUnsupportedTextureType, "Texture file type not supported", SeverityWarning, DetailForm::Header,
      "The following textures had unsupported file types:\r\n",
      "Some textures are stored in file types that the engine can not read, so they were not exported. Please, "
      "convert the textures listed below to a supported file type." },
    { IssueOpacityMapMismatch, "Opacity map file should match color map file", SeverityWarning, DetailForm::Header,
      "The following materials had opacity maps that were not the same as the texture map:\r\n",
      "The engine takes the opacity of a material from the alpha channel of its color map, so the opacity map must "
      "be the same file as the color map. Please, put the opacity into the alpha channel of the color map of the "
      "materials listed below." },
    { IssueBumpMapIgnored, "Bumpmap ignored", SeverityError, DetailForm::Header, nullptr,
      "A bump map could not be used and was ignored. Please, check the bump maps of the nodes listed below." },
    { IssueOpacityMapIgnored, "Opacity map ignored", SeverityError, DetailForm::Header, nullptr,
      "An opacity map could not be used and was ignored. Please, check the opacity maps of the nodes listed "
      "below." },
    { IssueGettingMeshFailed, "Getting mesh failed", SeverityWarning, DetailForm::Header,
      "The following Maya nodes have this problem:\r\n",
      "The mesh data of some Maya nodes could not be read, so these nodes were not exported. Please, check the "
      "nodes listed below, for example by deleting their construction history." },
    { IssueVertexWithoutUV, "Vertex with no UV mapping", SeverityWarning, DetailForm::Header,
      "The following mesh nodes have vertices with no UV mapping:\r\n",
      "Some meshes have vertices without texture coordinates, which usually shows as smeared textures in the "
      "engine. Please, map the UVs of the meshes listed below completely." },
    { IssueNoSkin, "No skin was found", SeverityWarning, DetailForm::Header,
      "The following nodes were not skinned:\r\n",
      "Some nodes of the model are not bound to the skeleton. Their vertices were bound to the root bone, so they "
      "will not follow the other bones when the model is animated. Please, bind the nodes listed below to the "
      "skeleton." },
    { IssueNullBoneInfluence, "NULL bone found in skin influence list", SeverityWarning, DetailForm::Fixed, "",
      "A skin cluster listed an influence that is not a bone, and the influence was ignored. Please, check the "
      "influence lists of the skin clusters in your Maya scene." },
    { IssueMissingSkinMeshNode, "Nonexistent mesh node referenced in skin", SeverityWarning, DetailForm::Header,
      "The following mesh nodes were not found:\r\n",
      "A skin cluster refers to mesh nodes that are not part of the export, and their skinning was ignored. "
      "Please, check the skin clusters of the mesh nodes listed below." },
    { IssueRigidClusterWithoutJoint, "Rigid skinning cluster without joint", SeverityWarning, DetailForm::Header,
      "The following clusters did not have joints:\r\n",
      "Some rigid skinning clusters are not bound to any joint, so their vertices were not skinned. Please, check "
      "the clusters listed below." },
    { IssueUnknownAnimationType, "Unknown animation type", SeverityWarning, DetailForm::Header,
      "The following animations were of unknown type:\r\n",
      "Some animations in the animation list are of a type that the exporter does not know, and they were not "
      "exported. Please, check the types of the animations listed below." },
    { IssueAnimationNameEndsWithNumber, "A Bone&Muscle animation name ended with a number", SeverityWarning,
      DetailForm::Header, "The following animations had this problem:\r\n",
      "The names of bone and muscle animations must not end with a number, because the engine uses trailing "
      "numbers to tell the parts of an animation apart. Please, rename the animations listed below." },
    { IssueTooManyAnimationFrames, "Too many animation frames", SeverityWarning, DetailForm::Header,
      "The following animations had too many key frames:\r\n",
      "An animation with too many animation frames was found. The maximum number of frames that can read by "
      "Kestrel is 4096. Everything beyond that is truncated. Note that this problem is likely to have been the "
      "result of setting a very high accuracy of estimated key frames on a long animation together with exporting "
      "all actual key frames. Please, review your usage of key frames, since this animation would take a too high "
      "amount of memory in the engine anyway." },
    { IssueAnimationWithoutFrames, "Animation without frames", SeverityWarning, DetailForm::Header,
      "The following animations had no key frames:\r\n",
      "Some animations did not have any key frames, and they were not exported. Please, check the frame ranges of "
      "the animations listed below." },
    { IssueAllBonesEliminated, "Bone animation with all bones eliminated", SeverityWarning, DetailForm::Fixed, "",
      "After removing all the bones that weren't influencing any vertices, there were no bones left. It's likely "
      "that the skinning is broken in some way or that you're exporting a model without vertices or bones." },
    { IssueNoBonesInAnimation, "No bones found in animation", SeverityError, DetailForm::Fixed, "",
      "The animation did not contain any bones. It is possible that they are hidden, missing or were eliminated "
      "because they do not influence any vertices" },
    { IssueAnimatedBoneScaling, "Bone with animated scaling found", SeverityWarning, DetailForm::Header,
      "The following bones had animated scaling:\r\n",
      "Some bones have animated scaling. The engine does not scale bones in animations, so the scaling was "
      "ignored. Please, remove the scale animation from the bones listed below." },
    { IssueMuscleVertexCountMismatch, "The number of vertices is different in muscle animation", SeverityWarning,
      DetailForm::Header, "The following animations had the wrong number of vertices:\r\n",
      "The number of vertices changed during a muscle animation. A muscle animation needs the same vertices in "
      "every frame, so these animations were not exported. Please, check the animations listed below." },
    { IssueFileMissingFromTarget, "File missing from target directory", SeverityWarning, DetailForm::Data, "",
      "Files that the exported asset refers to are missing from the target directory, so the engine will not find "
      "them. Please, copy the files listed below into the target directory." },
    { IssueVertexWithoutSkin, "Vertex without skinning information", SeverityWarning, DetailForm::Data, "",
      "Some vertices are not influenced by any bone. They were bound to the root bone, so they will not follow the "
      "other bones when the model is animated. Please, check your Maya scene for vertices without skin weights." },
    { IssueBoneAnimationAdjustment, "Bone animation adjustment failed", SeverityWarning, DetailForm::Fixed, "",
      "The bone animation could not be adjusted to the skeleton of the model, so it may play incorrectly. Please, "
      "check that the animation was made for the same skeleton as the model." },
    { IssueIllegalName, "Illegal name detected", SeverityWarning, DetailForm::Header,
      "The following entries had this problem:\r\n",
      "Some names contain characters that the engine does not accept. Please, rename the entries listed below, "
      "using only letters, digits and underscores." },
    { IssueInvalidDagNode, "Invalid dag node requested", SeverityWarning, DetailForm::Header,
      "The following invalid DAG nodes were requested:\r\n",
      "Maya could not give the full path name of some DAG nodes that the exporter asked for, so they could not be "
      "exported correctly. Please, check your Maya scene for broken or deleted nodes in the parts listed below." },
    { IssueMoreThan64kVertices, "Model has more than 65536 vertices", SeverityWarning, DetailForm::Data, "",
      "The model to be exported has more than 65536 vertices, although\r\nthe \"Warn if model has > 65536 vertices "
      "(Wii hardware limit)\" flag\r\nhas been set." },
    { IssueDummyBoneAnimation, "Dummy bone animation created", SeverityInformation, DetailForm::Fixed, "",
      "The model had no bone animation, so a dummy bone animation was created to hold its pose." },
    { IssueStripStatistics, "Triangle stripping and listing statistics", SeverityInformation, DetailForm::Data, "",
      "These are the statistics of the triangle strips and triangle lists that were generated for the export." },
    { IssueMemoryEstimate, "Zephra memory estimate", SeverityInformation, DetailForm::Data, "",
      "The exported model will use approximately this amount of memory in Zephra" },
    { IssueColorMaterialsGenerated, "Color materials generated", SeverityInformation, DetailForm::Data, "",
      "After collating the materials, at least one color material was found. This material has been converted to "
      "textures,and will not slow down the engine noticeably. However, color materials are usually a matter of "
      "texture export failure, and can occur because of one of the following reasons:\r\n\r\n- Texture is broken "
      "or has unsupported format\r\n- Texture could not be read or written\r\n- Texture is not present (you might "
      "want this, though)\r\n- Material is not present. Color material generated\r\n\r\nYou can highlight the "
      "color materials in the structure preview. If you don't want this message to occur, you can turn it off in "
      "the Global Settings menu." },
    { IssueInvalidTextureUVs, "Node has invalid texture UVs", SeverityError, DetailForm::Data, "",
      "Some nodes have polygons that refer to texture coordinates that do not exist. Please, check the UV mapping "
      "of the nodes listed below, for example by cleaning up the meshes." },
    { IssueInvalidTangents, "Node has invalid Tangents", SeverityError, DetailForm::Data, "",
      "Maya could not give the tangents of some nodes, usually because of faces or UVs that have no area. Please, "
      "check the geometry and the UV mapping of the nodes listed below." },
    { IssueCollisionObjectWithoutVolume, "Collision object without volume", SeverityWarning, DetailForm::Header,
      "The following nodes kept their triangles in the collision mesh:\r\n",
      "The collision mesh was to hold the convex hull of every object, but the points of some objects lie in one "
      "plane or on one line, so they have no hull. Their triangles were written to the collision mesh instead. "
      "Please, check whether the nodes listed below should collide as solid bodies." },
} };

constexpr bool RowsFollowKinds()
{
    for (size_t kind = 0; kind < MessageTable.size(); ++kind)
        if (MessageTable[kind].Kind != kind)
            return false;
    return true;
}
static_assert(RowsFollowKinds(), "the message table must hold one row per kind, in kind order");

}

void KestrelReportMessage::FillInReportMessage(uint32_t kind, const std::string& data, std::string& title,
                                               std::string& detail, std::string& explanation, int32_t& severity)
{
    if (kind >= MessageTable.size()) {
        title = "Internal error: Unknown error";
        explanation = "It seems like an error message of an unknown type was issued. Please, report this error "
                      "through Helpvane.";
        detail = "The error data was:\r\n" + data;
        severity = SeverityError;
        return;
    }

    const MessageRow& row = MessageTable[kind];
    title = row.Title;
    explanation = row.Explanation;
    severity = row.Severity;
    switch (row.Form) {
    case DetailForm::Header:
        detail = row.DetailText ? row.DetailText : DefaultListHeader;
        detail += data;
        break;
    case DetailForm::Data:
        detail = data;
        break;
    case DetailForm::Fixed:
        detail = row.DetailText;
        break;
    }
}

VReport& ModuleReport()
{
    static KestrelReportMessage report;
    return report;
}
