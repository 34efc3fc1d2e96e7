#include "importers/assimp/AssimpContext.h"

#include "base/Number.h"
#include "base/TextUtil.h"

#include <assimp/metadata.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

// FBX properties of every model node, and Maya's own attributes its FBX exporter writes as user properties;
// anything else in a node's metadata was added by the user.
constexpr std::string_view kFbxOwnProperties[] = {
    "UserProperties", "IsNull", "DefaultAttributeIndex", "InheritType", "RotationActive", "ScalingMax",
    "ScalingMin", "RotationMin", "RotationMax", "TranslationMin", "TranslationMax", "RotationOrder",
    "Show", "Visibility", "Visibility Inheritance", "Freeze", "LODBox", "Lcl Translation", "Lcl Rotation",
    "Lcl Scaling", "PreRotation", "PostRotation", "RotationOffset", "RotationPivot", "ScalingOffset",
    "ScalingPivot", "GeometricTranslation", "GeometricRotation", "GeometricScaling", "QuaternionInterpolate",
    "RotationSpaceForLimitOnly", "RotationStiffnessX", "RotationStiffnessY", "RotationStiffnessZ",
    "AxisLen", "PreferedAngleX", "PreferedAngleY", "PreferedAngleZ", "NegativePercentShapeSupport",
    "Primary Visibility", "Casts Shadows", "Receive Shadows", "Culling", "MinDampRangeX", "MinDampRangeY",
    "MinDampRangeZ", "MaxDampRangeX", "MaxDampRangeY", "MaxDampRangeZ", "MinDampStrengthX", "MinDampStrengthY",
    "MinDampStrengthZ", "MaxDampStrengthX", "MaxDampStrengthY", "MaxDampStrengthZ", "LookAtProperty",
    "UpVectorProperty", "TranslationActive", "ScalingActive", "currentUVSet",
};

void AddAttribute(RecordNode& node, RecordAttribute attribute, ImportResult& result)
{
    attribute.Name = MayaName(attribute.Name, "");
    if (attribute.Name.empty()) {
        result.Warn("Custom properties without a usable name are not imported");
        return;
    }
    for (const RecordAttribute& existing : node.Attributes)
        if (existing.Name == attribute.Name)
            return;
    node.Attributes.push_back(std::move(attribute));
}

// 3ds Max keeps its user-defined properties as "name = value" lines in one FBX string.
void ReadUserPropertyLines(std::string_view text, RecordNode& node, ImportResult& result)
{
    while (!text.empty()) {
        const size_t end = text.find_first_of("\r\n");
        const std::string_view line = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        const size_t equals = line.find('=');
        if (equals == std::string_view::npos)
            continue;
        RecordAttribute attribute;
        attribute.Name = std::string(TrimSpaces(line.substr(0, equals)));
        const std::string_view value = TrimSpaces(line.substr(equals + 1));
        int integer = 0;
        double number = 0.0;
        if (ParseInt(value, integer)) {
            attribute.Kind = RecordAttributeKind::Int;
            attribute.Number = integer;
        } else if (ParseFloat(value, number)) {
            attribute.Kind = RecordAttributeKind::Double;
            attribute.Number = number;
        } else {
            attribute.Kind = RecordAttributeKind::String;
            attribute.Text = std::string(value);
        }
        AddAttribute(node, std::move(attribute), result);
    }
}

} // namespace

void ReadCustomProperties(const AssimpContext& context, const aiMetadata* metadata, RecordNode& node)
{
    ImportResult& result = context.Result;
    if (!metadata)
        return;
    for (unsigned int i = 0; i < metadata->mNumProperties; ++i) {
        const std::string key = metadata->mKeys[i].C_Str();
        const aiMetadataEntry& entry = metadata->mValues[i];
        if (!entry.mData)
            continue;
        if (context.Format == AssimpFormat::Fbx) {
            if (key == "UserProperties" && entry.mType == AI_AISTRING) {
                ReadUserPropertyLines(static_cast<const aiString*>(entry.mData)->C_Str(), node, result);
                continue;
            }
            if (std::find(std::begin(kFbxOwnProperties), std::end(kFbxOwnProperties), key) !=
                std::end(kFbxOwnProperties))
                continue;
        }
        RecordAttribute attribute;
        attribute.Name = key;
        switch (entry.mType) {
        case AI_BOOL:
            attribute.Kind = RecordAttributeKind::Bool;
            attribute.Number = *static_cast<const bool*>(entry.mData) ? 1.0 : 0.0;
            break;
        case AI_INT32:
            attribute.Kind = RecordAttributeKind::Int;
            attribute.Number = *static_cast<const int32_t*>(entry.mData);
            break;
        case AI_UINT64: {
            // glTF extras arrive as unsigned 64-bit numbers; Maya's exporter attributes are ints.
            const uint64_t value = *static_cast<const uint64_t*>(entry.mData);
            attribute.Kind = value <= 0x7FFFFFFF ? RecordAttributeKind::Int : RecordAttributeKind::Double;
            attribute.Number = static_cast<double>(value);
            break;
        }
        case AI_FLOAT:
            attribute.Kind = RecordAttributeKind::Double;
            attribute.Number = *static_cast<const float*>(entry.mData);
            break;
        case AI_DOUBLE:
            attribute.Kind = RecordAttributeKind::Double;
            attribute.Number = *static_cast<const double*>(entry.mData);
            break;
        case AI_AISTRING:
            attribute.Kind = RecordAttributeKind::String;
            attribute.Text = static_cast<const aiString*>(entry.mData)->C_Str();
            break;
        default:
            result.Warn("Custom properties holding vectors or nested values are not imported");
            continue;
        }
        if (!std::isfinite(attribute.Number)) {
            result.Warn("Custom properties with values that are not numbers are not imported");
            continue;
        }
        AddAttribute(node, std::move(attribute), result);
    }
}

