#include "importers/mayaascii/MayaAsciiAttributes.h"

#include "base/Number.h"

#include <maya/MFnAttribute.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MFnUnitAttribute.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <standin/SceneBuilder.h>

#include <algorithm>
#include <string_view>

namespace {

// Maya's attributes that hold one element per instance of a DAG node; written without index they mean the
// element of the instance that the node's path names.
bool IsPerInstance(const std::string& name)
{
    static const char* const kNames[] = {"instObjGroups", "iog", "compInstObjGroups", "ciog", "worldMatrix", "wm",
                                         "worldInverseMatrix", "wim", "parentMatrix", "pm", "parentInverseMatrix",
                                         "pim", "worldMesh", "w"};
    return std::find(std::begin(kNames), std::end(kNames), name) != std::end(kNames);
}

// The values of one setAttr, taken front to back; numbers and strings are separate streams as the parser keeps
// them.
struct Cursor {
    const MaSetAttr& Set;
    size_t Number = 0;
    size_t Text = 0;

    bool TakeNumber(double& value)
    {
        if (Number >= Set.Numbers.size())
            return false;
        value = Set.Numbers[Number++];
        return true;
    }
    bool TakeText(std::string& value)
    {
        if (Text >= Set.Strings.size())
            return false;
        value = Set.Strings[Text++];
        return true;
    }
    bool Exhausted() const { return Number == Set.Numbers.size() && Text == Set.Strings.size(); }
};

bool WriteComponentList(MPlug plug, Cursor& values, bool apply, std::string& why)
{
    double count = 0.0;
    if (!values.TakeNumber(count) || count < 0.0 || count > static_cast<double>(values.Set.Strings.size())) {
        why = "a component list gives no count or more items than it holds";
        return false;
    }
    std::vector<std::string> items(static_cast<size_t>(count));
    for (std::string& item : items)
        values.TakeText(item);
    if (apply && !standin::SetComponents(plug, items)) {
        why = "its components are not face, edge or vertex ranges of one kind";
        return false;
    }
    return true;
}

// A point array: a count, then x, y, z and w of each point.
bool WritePoints(MPlug plug, Cursor& values, bool apply, std::string& why)
{
    double count = 0.0;
    if (!values.TakeNumber(count) || count < 0.0 || count * 4 > static_cast<double>(values.Set.Numbers.size())) {
        why = "a point array gives no count or fewer values than four per point";
        return false;
    }
    std::vector<MPoint> points(static_cast<size_t>(count));
    for (MPoint& point : points)
        for (double* coordinate : {&point.x, &point.y, &point.z, &point.w})
            values.TakeNumber(*coordinate);
    return !apply || standin::SetPoints(plug, points);
}

bool WriteMatrix(MPlug plug, Cursor& values, bool apply, std::string& why)
{
    MMatrix matrix;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            if (!values.TakeNumber(matrix(r, c))) {
                why = "a matrix takes 16 values";
                return false;
            }
    if (!apply)
        return true;
    MFnMatrixData data;
    return static_cast<bool>(plug.setValue(data.create(matrix)));
}

bool WriteLeaf(MPlug plug, Cursor& values, const MaUnits& units, bool apply, std::string& why)
{
    const MObject attribute = plug.attribute();
    if (attribute.apiType() == MFn::kTypedAttribute) {
        switch (MFnTypedAttribute(attribute).attrType()) {
        case MFnData::kString: {
            std::string text;
            if (!values.TakeText(text)) {
                why = "a string attribute takes a string";
                return false;
            }
            return !apply || static_cast<bool>(plug.setValue(MString(text.c_str())));
        }
        case MFnData::kMatrix: return WriteMatrix(plug, values, apply, why);
        case MFnData::kComponentList: return WriteComponentList(plug, values, apply, why);
        case MFnData::kPointArray: return WritePoints(plug, values, apply, why);
        default: why = "its data type is not one the stand-in holds"; return false;
        }
    }
    if (attribute.apiType() == MFn::kMatrixAttribute)
        return WriteMatrix(plug, values, apply, why);
    if (attribute.apiType() == MFn::kMessageAttribute) {
        why = "a message attribute holds no value";
        return false;
    }
    double value = 0.0;
    if (!values.TakeNumber(value)) {
        why = "there are fewer values than the attribute takes";
        return false;
    }
    if (!apply)
        return true;
    if (attribute.apiType() == MFn::kUnitAttribute) {
        switch (MFnUnitAttribute(attribute).unitType()) {
        case MFnUnitAttribute::kDistance: value = units.Centimeters(value); break;
        case MFnUnitAttribute::kAngle: value = units.Radians(value); break;
        case MFnUnitAttribute::kTime: value = units.Seconds(value); break;
        default: break;
        }
    }
    return static_cast<bool>(plug.setValue(value));
}

bool WritePlug(const MPlug& plug, Cursor& values, const MaUnits& units, bool apply, std::string& why);

// An array inside a compound value is written sparsely: a count, then each element's logical index and value.
bool WriteSparseArray(const MPlug& array, Cursor& values, const MaUnits& units, bool apply, std::string& why)
{
    double count = 0.0;
    if (!values.TakeNumber(count) || count < 0.0) {
        why = "an array inside the value has no element count";
        return false;
    }
    for (double i = 0; i < count; ++i) {
        double index = 0.0;
        if (!values.TakeNumber(index) || index < 0.0 || index > 2147483647.0 || index != static_cast<int>(index)) {
            why = "an array inside the value has fewer elements than it announces";
            return false;
        }
        if (!WritePlug(array.elementByLogicalIndex(static_cast<unsigned int>(index)), values, units, apply, why))
            return false;
    }
    return true;
}

bool WritePlug(const MPlug& plug, Cursor& values, const MaUnits& units, bool apply, std::string& why)
{
    if (plug.isArray())
        return WriteSparseArray(plug, values, units, apply, why);
    if (!plug.isCompound())
        return WriteLeaf(plug, values, units, apply, why);
    for (unsigned int i = 0; i < plug.numChildren(); ++i)
        if (!WritePlug(plug.child(i), values, units, apply, why))
            return false;
    return true;
}

MPlug ChildNamed(const MPlug& plug, const std::string& name)
{
    for (unsigned int i = 0; plug.isCompound() && i < plug.numChildren(); ++i) {
        const MPlug child = plug.child(i);
        const MFnAttribute attribute(child.attribute());
        if (name == attribute.name().asChar() || name == attribute.shortName().asChar())
            return child;
    }
    return MPlug();
}

} // namespace

MaResolve ResolvePlugs(const MObject& node, unsigned int instance, const MaPlugPath& path, bool connection,
                       std::vector<MPlug>& plugs, std::string& missing)
{
    plugs.clear();
    const int range = path.RangeSegment();
    const unsigned int first = range < 0 ? 0 : *path.Segments[static_cast<size_t>(range)].First;
    const unsigned int last = range < 0 ? 0 : path.Segments[static_cast<size_t>(range)].Last;
    MFnDependencyNode fn(node);
    const bool dag = node.hasFn(MFn::kDagNode);
    for (unsigned int index = first;; ++index) {
        MPlug plug;
        for (size_t s = 0; s < path.Segments.size(); ++s) {
            const MaPlugSegment& segment = path.Segments[s];
            plug = s == 0 ? fn.findPlug(MString(segment.Name.c_str())) : ChildNamed(plug, segment.Name);
            if (plug.isNull()) {
                missing = segment.Name;
                return MaResolve::MissingAttribute;
            }
            const bool more = s + 1 < path.Segments.size();
            if (!plug.isArray()) {
                if (segment.First) {
                    missing = "'" + segment.Name + "' is not an array";
                    return MaResolve::Malformed;
                }
                continue;
            }
            const bool perInstance = dag && IsPerInstance(segment.Name);
            if (segment.First)
                plug = plug.elementByLogicalIndex(static_cast<int>(s) == range ? index : *segment.First);
            else if (more || (connection && perInstance))
                plug = plug.elementByLogicalIndex(perInstance ? instance : 0);
        }
        plugs.push_back(plug);
        if (index == last)
            return MaResolve::Resolved;
    }
}

bool WritePlugValues(const std::vector<MPlug>& plugs, const MaSetAttr& set, const MaUnits& units, std::string& why)
{
    // A setAttr without values changes only what the stand-in does not hold (locks, keyability, array sizes).
    if (set.Numbers.empty() && set.Strings.empty())
        return true;
    // Maya refuses a setAttr whose values do not fit, so the values are first only counted against the plugs.
    for (const bool apply : {false, true}) {
        Cursor values{set};
        for (const MPlug& plug : plugs) {
            if (!WritePlug(plug, values, units, apply, why))
                return false;
        }
        if (!values.Exhausted()) {
            why = "there are more values than the attribute takes";
            return false;
        }
    }
    return true;
}

bool AddDynamicAttribute(const MObject& node, const MaAddAttr& add, std::string& why)
{
    using standin::AttrType;
    standin::AttrSpec definition;
    definition.longName = add.LongName;
    definition.shortName = add.ShortName;
    definition.defaultValue = add.Default;
    definition.parent = add.Parent;
    definition.array = add.Multi;
    definition.hidden = add.Hidden;
    const std::string& type = add.AttributeType.empty() ? add.DataType : add.AttributeType;
    struct Kind {
        const char* Name;
        AttrType Type;
    };
    static const Kind kKinds[] = {
        {"bool", AttrType::Bool},         {"long", AttrType::Int},          {"short", AttrType::Short},
        {"byte", AttrType::Short},        {"char", AttrType::Short},        {"enum", AttrType::Enum},
        {"float", AttrType::Float},       {"double", AttrType::Double},     {"doubleLinear", AttrType::Distance},
        {"floatLinear", AttrType::Distance}, {"doubleAngle", AttrType::Angle}, {"floatAngle", AttrType::Angle},
        {"time", AttrType::Time},         {"message", AttrType::Message},   {"matrix", AttrType::Matrix},
        {"fltMatrix", AttrType::Matrix},  {"string", AttrType::String},     {"compound", AttrType::Compound},
        {"double2", AttrType::Compound},  {"double3", AttrType::Compound},  {"double4", AttrType::Compound},
        {"float2", AttrType::Compound},   {"float3", AttrType::Compound},   {"long2", AttrType::Compound},
        {"long3", AttrType::Compound},    {"short2", AttrType::Compound},   {"short3", AttrType::Compound},
        {"reflectance", AttrType::Compound}, {"spectrum", AttrType::Compound}, {"componentList", AttrType::ComponentList},
        {"mesh", AttrType::Mesh}, {"pointArray", AttrType::PointArray},
    };
    const Kind* kind = std::find_if(std::begin(kKinds), std::end(kKinds), [&](const Kind& k) { return type == k.Name; });
    if (kind == std::end(kKinds)) {
        why = "the attribute type '" + type + "' is not held by the stand-in";
        return false;
    }
    definition.type = kind->Type;
    // Enum fields "a:b=4:c" take the value after '=', else one more than the field before.
    short next = 0;
    for (size_t at = 0; !add.EnumNames.empty() && at <= add.EnumNames.size();) {
        const size_t end = std::min(add.EnumNames.find(':', at), add.EnumNames.size());
        std::string field = add.EnumNames.substr(at, end - at);
        const size_t equals = field.find('=');
        int value = next;
        if (equals != std::string::npos && ParseInt(field.substr(equals + 1), value))
            field.resize(equals);
        definition.enumFields.emplace_back(field, static_cast<short>(value));
        next = static_cast<short>(value + 1);
        at = end + 1;
    }
    if (!standin::AddAttr(node, definition)) {
        why = add.Parent.empty() ? "the node already has an attribute of that name"
                                 : "the node has no compound attribute '" + add.Parent + "' to hold it";
        return false;
    }
    return true;
}
