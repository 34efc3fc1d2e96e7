#include "harvest/AddNodeAttribute.h"

#include "base/TextUtil.h"
#include "harvest/NodeAttributes.h"
#include "ui/VMessageBox.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnStringData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MPlug.h>

namespace {

bool Refused(const MString& name, VMessageBox& messageBox)
{
    VMessageBoxRequest request;
    request.Caption = "Error";
    request.Text = Format("Error! Could not make %s attribute", name.asChar());
    request.Owner = VMessageBoxOwner::Desktop;
    messageBox.Show(request);
    return false;
}

bool AddHidden(MObject& node, MFnAttribute& attribute)
{
    MStatus status;
    MFnDependencyNode fn(node, &status);
    return status && attribute.setHidden(true) && fn.addAttribute(attribute.object());
}

} // namespace

bool AddStringAttribute(const MString& name, MObject& node, const MString& defaultText, VMessageBox& messageBox)
{
    MStatus status;
    MFnStringData data;
    const MObject defaultData = data.create(defaultText, &status);
    MFnTypedAttribute attribute;
    if (status)
        attribute.create(name, name, MFnData::kString, defaultData, &status);
    if (!status || !AddHidden(node, attribute))
        return Refused(name, messageBox);
    return true;
}

bool AddNumericAttribute(MObject& node, const MString& name, MFnNumericData::Type type, double defaultValue,
                         VMessageBox& messageBox)
{
    MStatus status;
    MFnNumericAttribute attribute;
    attribute.create(name, name, type, defaultValue, &status);
    if (!status || !AddHidden(node, attribute))
        return Refused(name, messageBox);
    return true;
}

bool SetNodeStringAttribute(const MString& name, const MDagPath& path, const MString& text, VMessageBox& messageBox)
{
    MPlug plug;
    if (!FindNodeAttribute(name, path, plug)) {
        MObject node = path.node();
        if (!AddStringAttribute(name, node, text, messageBox) || !FindNodeAttribute(name, path, plug))
            return false;
    }
    return static_cast<bool>(plug.setValue(text));
}
