#include "harvest/NodeAttributes.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MStatus.h>

namespace {

bool FindOwnPlug(const MString& name, const MObject& node, MPlug& plug)
{
    MStatus status;
    MFnDependencyNode fn(node, &status);
    if (!status)
        return false;
    MPlug found = fn.findPlug(name, &status);
    if (!status || found.isNull())
        return false;
    plug = found;
    return true;
}

}

bool FindNodeAttribute(const MString& name, const MDagPath& path, MPlug& plug)
{
    if (!path.isValid())
        return false;
    if (FindOwnPlug(name, path.node(), plug))
        return true;
    MDagPath parent(path);
    if (!parent.pop() || !parent.isValid() || parent.length() == 0)
        return false;
    return FindOwnPlug(name, parent.node(), plug);
}

bool GetNodeIntAttribute(const MString& name, const MDagPath& path, int32_t& value)
{
    MPlug plug;
    int read = 0;
    if (!FindNodeAttribute(name, path, plug) || !plug.getValue(read))
        return false;
    value = read;
    return true;
}

bool GetNodeShortAttribute(const MString& name, const MDagPath& path, uint16_t& value)
{
    int32_t read = 0;
    if (!GetNodeIntAttribute(name, path, read))
        return false;
    value = static_cast<uint16_t>(read);
    return true;
}

bool GetNodeStringAttribute(const MString& name, const MDagPath& path, std::string& value)
{
    MPlug plug;
    MString read;
    if (!FindNodeAttribute(name, path, plug) || !plug.getValue(read))
        return false;
    value = read.asChar();
    return true;
}

bool GetOwnIntAttribute(const MString& name, const MDagPath& path, int32_t& value)
{
    MPlug plug;
    int read = 0;
    if (!path.isValid() || !FindOwnPlug(name, path.node(), plug) || !plug.getValue(read))
        return false;
    value = read;
    return true;
}

bool GetOwnStringAttribute(const MString& name, const MDagPath& path, std::string& value)
{
    MPlug plug;
    MString read;
    if (!path.isValid() || !FindOwnPlug(name, path.node(), plug) || !plug.getValue(read))
        return false;
    value = read.asChar();
    return true;
}

std::string GetNodeName(const MObject& node)
{
    if (node.isNull())
        return "(NULL)";
    MStatus status;
    MFnDependencyNode fn(node, &status);
    if (!status)
        return "(NotADepenencyNode)";
    const MString name = fn.name(&status);
    if (!status)
        return "(BadName)";
    return name.asChar();
}

std::string GetNodeTypeName(const MObject& node)
{
    if (node.isNull())
        return "(NULL)";
    MStatus status;
    MFnDependencyNode fn(node, &status);
    if (!status)
        return "Unknown type";
    const MString type = fn.typeName(&status);
    if (!status)
        return "Unknown type";
    return type.asChar();
}

bool AddNumericAttribute(const MObject& node, const MString& name, MFnNumericData::Type type, double defaultValue)
{
    MStatus status;
    MFnDependencyNode fn(node, &status);
    if (!status)
        return false;
    MFnNumericAttribute numeric;
    const MObject attribute = numeric.create(name, name, type, defaultValue, &status);
    if (!status || !numeric.setHidden(true))
        return false;
    return bool(fn.addAttribute(attribute));
}
