#include "harvest/AssignMaterialTextures.h"

#include "base/TextUtil.h"
#include "harvest/HarvestState.h"
#include "model/VMMaterial.h"
#include "report/VIssueKind.h"
#include "report/VReport.h"
#include "settings/ResolveTexture.h"

void AssignMaterialTextures(HarvestState& state, VMMaterial& material, std::string colourMap, std::string opacityMap,
                            std::string bumpMap)
{
    if (colourMap.empty()) {
        material.AtlasFlag = 1;
        material.FurtherValue = 0.0f;
        colourMap = kColorAtlasTexture;
        if (!opacityMap.empty() || !bumpMap.empty()) {
            state.Report.AddIssue(IssueBumpOpacityOnUntextured, material.Name);
            opacityMap.clear();
            bumpMap.clear();
        }
    }
    if (!opacityMap.empty() && !EqualsNoCase(opacityMap, colourMap))
        state.Report.AddIssue(IssueOpacityMapMismatch,
                              Format("Materials: %s\r\n  Colormap: %s\r\n  Opacitymap: %s", material.Name.c_str(),
                                     colourMap.c_str(), opacityMap.c_str()));

    const HarvestParameters& parameters = state.Parameters;
    if (auto name = ResolveTexture(colourMap, parameters.Textures, state.TextureNames, state.Report))
        material.DiffuseTexture = *name;
    if (!bumpMap.empty())
        if (auto name = ResolveTexture(bumpMap, parameters.Textures, state.TextureNames, state.Report))
            material.NormalMap = *name;
}
