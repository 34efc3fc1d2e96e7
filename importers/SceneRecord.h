#pragma once
// What an importer reads from a scene file, already in Maya's terms (centimetres, Y up, radians, row-vector
// matrices), kept apart from the stand-in so that parsing and building can be tested and fuzzed on their own.

#include <maya/MDistance.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MTime.h>
#include <maya/MVector.h>

#include <string>
#include <vector>

struct RecordTransform {
    MVector Translate;
    MVector Rotate; // Euler angles, rotate order xyz
    MVector Scale {1.0, 1.0, 1.0};
};

enum class RecordAttributeKind { Bool, Int, Double, String };

struct RecordAttribute {
    std::string Name;
    RecordAttributeKind Kind = RecordAttributeKind::Int;
    double Number = 0.0;
    std::string Text;
};

enum class RecordLightType { Ambient, Point, Spot, Directional, Area };

struct RecordLight {
    RecordLightType Type = RecordLightType::Point;
    MVector Color {1.0, 1.0, 1.0};
    double Intensity = 1.0;
    double ConeAngle = 0.0;     // full cone, radians
    double PenumbraAngle = 0.0; // radians
    int DecayRate = 0;          // Maya's enum: none, linear, quadratic
};

enum class RecordNodeKind { Transform, Joint, Camera };

struct RecordNode {
    std::string Name;
    int Parent = -1;
    RecordNodeKind Kind = RecordNodeKind::Transform;
    RecordTransform Rest;
    bool HasBindPose = false;
    RecordTransform Bind;
    int Mesh = -1;  // into SceneRecord::Meshes; several nodes naming one mesh are instances of it
    int Light = -1; // into SceneRecord::Lights
    std::vector<RecordAttribute> Attributes;
};

struct RecordUVSet {
    std::string Name;
    std::vector<float> U;
    std::vector<float> V;
    std::vector<int> Ids; // per face-vertex, -1 for a corner without UV
};

struct RecordSkin {
    std::vector<int> Influences;                // node indices of the joints
    std::vector<MMatrix> BindPreMatrices;       // one per influence, world space
    std::vector<std::vector<double>> Weights;   // per vertex, one column per influence
};

// A morph target: how far it moves each vertex of its mesh at full weight, in Maya's space.
struct RecordMorphTarget {
    std::vector<MVector> Offsets; // one per vertex of the mesh
    double Weight = 0.0;          // as the file leaves it outside its animations
};

struct RecordMesh {
    std::string Name;
    std::vector<MPoint> Points;
    std::vector<int> Counts;
    std::vector<int> Connects;
    std::vector<RecordUVSet> UVSets;
    std::vector<MVector> Normals;    // per face-vertex; empty when the file has none
    std::vector<int> FaceMaterials;  // per polygon, into SceneRecord::Materials
    RecordSkin Skin;                 // no influences: not skinned
    std::vector<RecordMorphTarget> MorphTargets;
};

enum class RecordShadingModel { Lambert, Phong, Blinn };

struct RecordTexture {
    std::string File; // system path (backslashes); empty: none
    double RepeatU = 1.0;
    double RepeatV = 1.0;
    double OffsetU = 0.0;
    double OffsetV = 0.0;
};

struct RecordMaterial {
    std::string Name;
    RecordShadingModel Model = RecordShadingModel::Lambert;
    MVector Color {0.5, 0.5, 0.5};
    double Diffuse = 0.8;
    MVector Ambient;
    MVector Specular {0.5, 0.5, 0.5};
    MVector Transparency;
    double CosinePower = 20.0;
    double Eccentricity = 0.3;
    RecordTexture ColorTexture;
    RecordTexture TransparencyTexture;
    RecordTexture BumpTexture;
    RecordTexture SpecularTexture;
};

struct RecordKey {
    double Seconds = 0.0; // on the scene's time line
    RecordTransform Value;
};

struct RecordChannel {
    int Node = -1;
    std::vector<RecordKey> Keys;
};

// The weight of one morph target of one mesh over time.
struct RecordWeightKey {
    double Seconds = 0.0; // on the scene's time line
    double Weight = 0.0;
};

struct RecordWeightChannel {
    int Mesh = -1;
    int Target = -1;
    std::vector<RecordWeightKey> Keys;
};

struct RecordClip {
    std::string Name;
    double StartSeconds = 0.0; // on the scene's time line
    double EndSeconds = 0.0;
    std::vector<RecordChannel> Channels;
    std::vector<RecordWeightChannel> WeightChannels;
};

struct SceneRecord {
    std::vector<RecordNode> Nodes; // parents before children
    std::vector<RecordMesh> Meshes;
    std::vector<RecordMaterial> Materials;
    std::vector<RecordLight> Lights;
    std::vector<RecordClip> Clips; // one after another on the time line
    MTime::Unit TimeUnit = MTime::kFilm;
    MDistance::Unit DistanceUnit = MDistance::kCentimeters;
};
