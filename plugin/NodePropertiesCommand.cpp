#include "base/Path.h"
#include "harvest/NodeAttributes.h"
#include "plugin/KestrelCommand.h"
#include "plugin/PluginModule.h"
#include "ui/CollisionBitNames.h"
#include "ui/NodePropertiesDialog.h"
#include "ui/VDialogView.h"
#include "ui/VMessageBox.h"

#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MPlug.h>
#include <maya/MSelectionList.h>

namespace {

// Maya lets commands run while a modal dialog is up; a second properties dialog would edit a
// node the first one may overwrite.
bool g_dialogOpen = false;

// The transform of the one selected mesh: a selected shape or any other node is none.
bool SelectedMeshTransform(MObject& transform)
{
    MSelectionList selection;
    MDagPath path;
    if (!MGlobal::getActiveSelectionList(selection) || selection.length() != 1 || !selection.getDagPath(0, path))
        return false;
    MStatus status;
    const MFnDagNode dagNode(path, &status);
    if (!status || !path.hasFn(MFn::kMesh) || !path.hasFn(MFn::kTransform))
        return false;
    transform = path.node();
    return !transform.isNull();
}

NodeProperties ReadProperties(const MFnDependencyNode& node)
{
    NodeProperties properties {node.name().asChar()};
    int value = 0;
    if (node.findPlug("Visible").getValue(value) && value == 0)
        properties.Visible = false;
    if (node.findPlug("CollisionFlags").getValue(value))
        properties.CollisionFlags = static_cast<uint32_t>(value);
    return properties;
}

// Sets the node's own attribute, adding it hidden when the node has none yet.
void WriteAttribute(const MObject& node, const MString& name, MFnNumericData::Type type, int value)
{
    MStatus status;
    MPlug plug = MFnDependencyNode(node).findPlug(name, &status);
    if (status && !plug.isNull() ? bool(plug.setValue(value)) : AddNumericAttribute(node, name, type, value))
        return;
    TheMessageBox().Show({"Error", std::string("Error! Could not make ") + name.asChar() + " attribute",
                          VMessageBoxOwner::Desktop});
}

} // namespace

void* nodeProperties::creator()
{
    return new nodeProperties;
}

MStatus nodeProperties::doIt(const MArgList& /*args*/)
{
    MObject transform;
    if (!SelectedMeshTransform(transform)) {
        displayError("Zephra Properties: No nodes or more than one node selected\r\n");
        return MS::kFailure;
    }
    if (g_dialogOpen)
        return MS::kSuccess;

    const MFnDependencyNode node(transform);
    NodeProperties properties = ReadProperties(node);
    const std::string bitNamesPath = JoinPath(TheInstallationFolder(), kCollisionBitNamesFile);
    VDialogView* view = TheServices().DialogView;
    NodePropertiesDialog dialog(properties, bitNamesPath, TheMessageBox(), view);
    g_dialogOpen = true;
    const int confirmed = RunDialog(dialog, view, UnseenDialog::Cancels);
    g_dialogOpen = false;
    if (confirmed) {
        WriteAttribute(transform, "Visible", MFnNumericData::kBoolean, properties.Visible ? 1 : 0);
        WriteAttribute(transform, "CollisionFlags", MFnNumericData::kInt, static_cast<int>(properties.CollisionFlags));
    }
    return MS::kSuccess;
}
