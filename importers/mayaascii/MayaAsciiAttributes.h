#pragma once
// Attributes of the stand-in's nodes as Maya ASCII commands address them: plug names resolved to plugs, setAttr
// values written in the file's units, addAttr's dynamic attributes.

#include "importers/mayaascii/MayaAsciiPlugPath.h"
#include "importers/mayaascii/MayaAsciiRecord.h"
#include "importers/mayaascii/MayaAsciiUnits.h"

#include <maya/MObject.h>
#include <maya/MPlug.h>

#include <string>
#include <vector>

enum class MaResolve { Resolved, MissingAttribute, Malformed };

// The plugs a plug path names on a node: one per index of its range, else one (an array plug when the last
// attribute is an array written without index). An array written without index before further attributes
// ("iog.og[0]") takes the element of the node's instance for Maya's per-instance attributes, else element 0; so
// does a per-instance array at the end of a connection's plug ("pCubeShape1.iog", "joint1.wm"). missing names the
// attribute that the node lacks, or why the path does not fit the attributes.
MaResolve ResolvePlugs(const MObject& node, unsigned int instance, const MaPlugPath& path, bool connection,
                       std::vector<MPlug>& plugs, std::string& missing);

// Writes a setAttr's values over the plugs in order, each plug taking what its attribute holds (a number, the
// children of a compound, the sparse elements of an array child, a matrix, a string, a component list). Nothing
// is written unless the values fit exactly; why then says how they do not.
bool WritePlugValues(const std::vector<MPlug>& plugs, const MaSetAttr& set, const MaUnits& units, std::string& why);

// addAttr; false with why for an attribute kind the stand-in cannot hold or a clash with an existing attribute.
bool AddDynamicAttribute(const MObject& node, const MaAddAttr& add, std::string& why);
