#pragma once
// materials.xml: the editable description of each material that the engine's editor reads. It
// belongs to the user as much as to the exporter, so an existing file is merged, never
// overwritten: elements of materials that are gone are removed, existing elements get the
// attribute groups the save flags ask for, new materials get every group, and everything else
// (other elements, attributes of groups not written, comments) stays as it was.
//
// <root><Materials><Material name="..." diffuse=".." normalmap=".." specularmap=".."
//   transparency=".." doublesided="TRUE" specmul="%f" specexp="%f" parallaxscale="%f"
//   parallaxbias="%f" lightmapsize="%i,%i" lightmapgran="%f" lightmapID="%d">
//   <Shader library=".." effect=".." paramstring=".."/></Material>...</Materials></root>

#include "model/VMMaterial.h"
#include "model/VMOwnedList.h"

#include <cstdint>
#include <string_view>

namespace tinyxml2 {
class XMLDocument;
}

// Merges the materials into the document as above; flags selects the attribute groups (the
// SaveFlag bits 0x07F) written for materials that already have an element.
void MergeMaterials(tinyxml2::XMLDocument& document, const VMOwnedList<VMMaterial>& materials, uint32_t flags);

// Loads the file at xmlPath when it exists, merges and writes it back whole (an interrupted save
// leaves the previous file). A file that does not parse, an empty one too, is left untouched. Answers false with
// the last-error text set.
bool SaveMaterialsXml(const VMOwnedList<VMMaterial>& materials, std::string_view xmlPath, uint32_t flags);
