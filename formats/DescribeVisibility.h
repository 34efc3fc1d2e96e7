#pragma once
// "kestrel info" on a static mesh's visibility.xml: its zones, the submeshes each holds and
// where each zone's portals lead.

#include <string>

class VMWShapeInstance3DCollection;

// The collection as LoadPrefabXML reads visibility.xml, portals linked to their targets.
std::string DescribeVisibility(const VMWShapeInstance3DCollection& shapes);
