#include "harvest/ParamEnumCB.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MFnEnumAttribute.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MPlug.h>
#include <maya/MString.h>

namespace {

void OfferNumeric(const char* name, const MPlug& plug, MFnNumericData::Type type, ParamEnumCB& callback)
{
    switch (type) {
    case MFnNumericData::kBoolean:
    case MFnNumericData::kByte:
    case MFnNumericData::kChar:
    case MFnNumericData::kShort:
    case MFnNumericData::kInt: {
        int value = 0;
        if (plug.getValue(value))
            callback.IntParam(name, value);
        return;
    }
    case MFnNumericData::kFloat:
    case MFnNumericData::kDouble: {
        double value = 0.0;
        if (plug.getValue(value))
            callback.FloatParam(name, static_cast<float>(value));
        return;
    }
    case MFnNumericData::k2Float:
    case MFnNumericData::k2Double:
    case MFnNumericData::k3Float:
    case MFnNumericData::k3Double: {
        const bool pair = type == MFnNumericData::k2Float || type == MFnNumericData::k2Double;
        float values[3] = {};
        for (unsigned int i = 0; i < (pair ? 2u : 3u); ++i)
            values[i] = plug.child(i).asFloat();
        if (pair)
            callback.Float2Param(name, values);
        else
            callback.Float3Param(name, values);
        return;
    }
    default: return;
    }
}

void OfferAttribute(const MFnDependencyNode& node, const MObject& attribute, ParamEnumCB& callback)
{
    const MPlug plug = node.findPlug(attribute);
    if (plug.isNull() || plug.isChild())
        return;
    const MString name = MFnAttribute(attribute).name();
    if (attribute.hasFn(MFn::kEnumAttribute)) {
        int value = 0;
        if (!plug.getValue(value))
            return;
        const MString field = MFnEnumAttribute(attribute).fieldName(static_cast<short>(value));
        callback.EnumParam(name.asChar(), value, field.asChar());
    } else if (attribute.hasFn(MFn::kNumericAttribute)) {
        OfferNumeric(name.asChar(), plug, MFnNumericAttribute(attribute).unitType(), callback);
    } else if (attribute.hasFn(MFn::kTypedAttribute)) {
        MString text;
        if (MFnTypedAttribute(attribute).attrType() == MFnData::kString && plug.getValue(text))
            callback.StringParam(name.asChar(), text.asChar());
    }
}

} // namespace

void EnumerateNodeParams(const MObject& node, ParamEnumCB& callback)
{
    MStatus status;
    const MFnDependencyNode fn(node, &status);
    if (!status)
        return;
    const unsigned int count = fn.attributeCount();
    for (unsigned int i = 0; i < count; ++i)
        OfferAttribute(fn, fn.attribute(i), callback);
}
