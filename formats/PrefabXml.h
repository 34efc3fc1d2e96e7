#pragma once
// The prefab shape file: an XML scene fragment of shape instances for the engine's editor.
//
// <root>
//     <header version="0" convertible="TRUE|FALSE" name=".." category=".." description=".."/>
//     <info generatedby="Gemvor Version 7, 6, 3, 0"/>
//     <shape class="StaticMeshShape">
//         <property name="ShapeName" value=".."/> ...
//         <shape class=".."> (children, written the same way) </shape>
//     </shape> ...
// </root>

#include <cstdint>
#include <string>
#include <string_view>

class VMWShapeInstance3DCollection;

inline constexpr int32_t PrefabSaveFailed = -200;
inline constexpr int32_t PrefabNoRoot = -1;
inline constexpr int32_t PrefabUnreadable = -201;
inline constexpr int32_t PrefabNotXml = -202;
inline constexpr int32_t PrefabNewerVersion = -212;

// Gives every shape a unique ID first when any has none (0) or two share one: all shapes are then
// numbered anew, depth first, from the collection's ID source. Then names unnamed shapes and
// prepares them, and writes the file whole (an interrupted save leaves the previous file).
// 0 on success, PrefabSaveFailed when the file cannot be written, PrefabNoRoot when the
// document cannot be built.
int32_t SavePrefabXML(VMWShapeInstance3DCollection& shapes, std::string_view path);

// Replaces the collection by the file's shapes (unknown classes and properties are skipped) and
// links portals to their targets. 0 on success; PrefabUnreadable, PrefabNotXml, or
// PrefabNewerVersion for a header version above 0; error then says why.
int32_t LoadPrefabXML(std::string_view path, VMWShapeInstance3DCollection& shapes, std::string& error);

// "kestrel info": the header and every shape with its class, name, ID, position and files.
std::string DescribePrefab(const VMWShapeInstance3DCollection& shapes);
