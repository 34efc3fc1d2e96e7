#pragma once
// The plug-in's MEL commands: stateless, not undoable, parsing their own arguments.

#include <maya/MArgList.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>

class KestrelCommand : public MPxCommand {
public:
    MStatus undoIt() override { return MS::kFailure; }
    MStatus redoIt() override { return MS::kFailure; }
    bool hasSyntax() const override { return false; }
};

// "ZephraNodeProperties": edits the geometry properties of the one selected mesh node.
class nodeProperties : public KestrelCommand {
public:
    MStatus doIt(const MArgList& args) override;
    static void* creator();
};

// "ZephraPrefab -edit | -setproj | -newproj": the export settings of a prefab node's mesh and
// the editor project they are kept in.
class PrefabShapeCommand : public KestrelCommand {
public:
    MStatus doIt(const MArgList& args) override;
    static void* creator();
};
